#pragma once

#include <QString>

#include <tl/expected.hpp>

namespace Platform {

/// What went wrong behind a seam. The user's own sentence is chosen where it is shown; the message
/// here is for the log.
struct Error {
    enum class Kind {
        failed, ///< The operation was tried and did not succeed.
        unreadable, ///< What was to be read isn't there, can't be opened, or is of no known kind.
        cancelled, ///< The caller asked to stop.
        missingLanguageData, ///< No language data is installed; the message names the package.
        permissionDenied, ///< The system doesn't let this program do it.
        windowGone, ///< The window is closed, or not on screen any more.
    };

    Kind kind = Kind::failed;
    QString message;
    int code = 0; ///< The system's own number for it; zero where the seam names none.

    bool operator==(const Error&) const = default;
};

template <typename T>
using Result = tl::expected<T, Error>;

} // namespace Platform

#pragma once

#include <QString>

#include <optional>

namespace Platform {

/// What an installed program knows of itself.
struct Bundle {
    QString identifier; ///< Reverse-DNS name.
    QString shortVersion; ///< As people say it: "1.2".
    QString version; ///< The build.

    bool operator==(const Bundle&) const = default;
};

/// Reads the bundle file at @p path; nothing where there is none or a field is no text.
std::optional<Bundle> readBundle(const QString& path);

/// The bundle of the running program, which `make install` lays at `../share/lumenote/bundle.json`
/// from the executable's folder; nothing in a development build. Read anew at each call.
std::optional<Bundle> mainBundle();

} // namespace Platform

#pragma once

namespace Lumenote {

/// Why a capture failed. The details are in the log, and the user's sentence is chosen by the case.
enum class CaptureError {
    permissionDenied, ///< The system doesn't let this program record the screen.
    windowGone, ///< The picked window no longer exists.
    noDisplay, ///< No display can serve the selection.
    failed, ///< Anything else.
};

} // namespace Lumenote

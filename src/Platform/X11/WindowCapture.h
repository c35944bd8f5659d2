#pragma once

#include "Platform/X11/Server.h"

#include <QImage>

namespace Platform::X11 {

/// The content of a window by itself, whole, wherever it is and whatever covers it; with alpha
/// where something shows through it. Fails with windowGone where the window is closed or not shown.
Result<QImage> captureWindow(
    Server& server, xcb_window_t window, QSize imageSize, bool hasCompositor);

} // namespace Platform::X11

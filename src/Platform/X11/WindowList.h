#pragma once

#include "Platform/X11/Connection.h"
#include "Platform/X11/WindowTree.h"

#include <QRect>
#include <QString>

#include <vector>

namespace Platform::X11 {

/// A window as its program shows it, without what a window manager puts around it.
struct ClientWindow {
    xcb_window_t id = XCB_NONE;
    xcb_window_t frame = XCB_NONE; ///< The child of the root that it is, or is in.
    QRect content; ///< Pixels of the root, without a shadow that the window draws itself.
    QString title;
    QString instanceName; ///< Both as in WM_CLASS.
    QString className;
    std::uint32_t processID = 0;
    int layer = 0; ///< As in SharedWindow.
};

/// All on screen, frontmost first. Popups aren't windows of their own, and minimised ones aren't on
/// screen.
Result<std::vector<ClientWindow>> clientWindows(Connection& connection);

/// Where the content of @p client is, in pixels of the root; empty where it is gone.
QRect contentOf(Connection& connection, xcb_window_t client);

} // namespace Platform::X11

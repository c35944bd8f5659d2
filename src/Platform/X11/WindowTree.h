#pragma once

#include "Platform/X11/Connection.h"

#include <QRect>

#include <map>
#include <vector>

namespace Platform::X11 {

/// A child of the root: a window without a frame, or the frame of one.
struct TopLevel {
    xcb_window_t id = XCB_NONE;
    QRect rect; ///< Pixels of the root, border included.
    int borderWidth = 0;
    xcb_visualid_t visual = XCB_NONE;
    bool hasPixels = false; ///< Is viewable, and no mere catcher of input.
    bool isUnmanaged = false; ///< Has told the window manager to let it be, as menus do.
    bool isShaped = false;
};

/// The ids of all children of the root, the frontmost first.
std::vector<xcb_window_t> rootChildren(Connection& connection);

/// Those of @p ids that still exist, in that order.
std::vector<TopLevel> topLevels(Connection& connection, const std::vector<xcb_window_t>& ids);

/// The child of the root that each of @p windows is, or is in. Without those that are gone.
std::map<xcb_window_t, xcb_window_t> framesOf(
    Connection& connection, const std::vector<xcb_window_t>& windows);

/// The ids that the server lets one client give to what it makes. None at first.
struct ClientIDs {
    std::uint32_t base = 0;
    std::uint32_t mask = 0;

    bool hasMade(xcb_window_t window) const { return base != 0 && (window & ~mask) == base; }
};

} // namespace Platform::X11

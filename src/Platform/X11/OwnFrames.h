#pragma once

#include "Platform/X11/WindowTree.h"

#include <set>
#include <vector>

namespace Platform::X11 {

/// The frames that a window manager has put around windows of this program. They are learned while
/// the windows are there, since a frame stays on the screen a moment longer than the window in it.
class OwnFrames {
public:
    /// Looks for the frames of @p windows.
    void learn(Connection& connection, const std::vector<xcb_window_t>& windows);

    /// Forgets all but those among the children of the root.
    void keepOnly(const std::vector<xcb_window_t>& children);

    bool holds(xcb_window_t child) const { return m_frames.contains(child); }

private:
    std::set<xcb_window_t> m_frames;
};

} // namespace Platform::X11

#include "Platform/X11/OwnFrames.h"

#include <algorithm>

namespace Platform::X11 {

namespace {

/// Those windows that are really on the screen, and not inside a window of another program as the
/// icon in a panel is: a window manager marks the windows that it has put into a frame.
std::vector<xcb_window_t> managedOf(
    Connection& connection, const std::vector<xcb_window_t>& windows)
{
    std::vector<xcb_get_property_cookie_t> marks;
    marks.reserve(windows.size());
    for (const auto window : windows)
        marks.push_back(xcb_get_property(connection.xcb(), 0, window, connection.atoms().wmState,
            connection.atoms().wmState, 0, 0));
    std::vector<xcb_window_t> managed;
    for (std::size_t i = 0; i < windows.size(); ++i) {
        const auto mark = connection.reply<xcb_get_property_reply_t>(marks.at(i));
        if (mark && mark->type != XCB_NONE)
            managed.push_back(windows.at(i));
    }
    return managed;
}

} // namespace

void OwnFrames::learn(Connection& connection, const std::vector<xcb_window_t>& windows)
{
    if (windows.empty())
        return;
    for (const auto& [window, frame] : framesOf(connection, managedOf(connection, windows)))
        m_frames.insert(frame);
}

void OwnFrames::keepOnly(const std::vector<xcb_window_t>& children)
{
    std::erase_if(m_frames, [&children](xcb_window_t frame) {
        return std::ranges::find(children, frame) == children.end();
    });
}

} // namespace Platform::X11

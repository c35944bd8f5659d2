#pragma once

#include "Platform/X11/XcbTypes.h"

#include <QMargins>
#include <QRegion>

#include <memory>
#include <optional>
#include <vector>

namespace Platform::X11 {

/// What the X server and a window manager are asked for a floating window, on Qt's own connection:
/// so it is told before Qt maps the window. Regions and margins are in logical pixels; @p ratio
/// makes device pixels of them. Nothing waits for an answer but the constructor. Main thread.
class FloatingWindowRequests {
public:
    /// Null where Qt isn't connected to an X server.
    static std::unique_ptr<FloatingWindowRequests> ofQt();

    explicit FloatingWindowRequests(xcb_connection_t* xcb);

    /// For a window that isn't mapped: Qt adds its own states when it maps it.
    void writeSkipStates(xcb_window_t window) const;

    /// For a window that is mapped: its states are the window manager's.
    void requestSkipStates(xcb_window_t window) const;

    /// The shadow that the window draws itself. None takes the property away.
    void writeFrameExtents(xcb_window_t window, const QMargins& shadow, double ratio) const;

    /// @p region from the corner of the window, of which @p shadow is no part to those who blur.
    /// An empty one takes the property away: there it would mean everything.
    void writeBlurRegion(
        xcb_window_t window, const QRegion& region, const QMargins& shadow, double ratio) const;

    /// Device pixels of which @p region has only a part count in.
    void setInputShape(xcb_window_t window, const QRegion& region, double ratio) const;

    /// Whether somebody blurs behind windows. Asks the server.
    bool readsBlurBehind() const;

    /// Whether somebody does from now on, where @p event tells of that.
    std::optional<bool> toldBlurBehind(const xcb_generic_event_t& event) const;

    void flush() const { xcb_flush(m_xcb); }

private:
    struct Atoms {
        xcb_atom_t state = XCB_NONE;
        xcb_atom_t skipTaskbar = XCB_NONE;
        xcb_atom_t skipPager = XCB_NONE;
        xcb_atom_t frameExtents = XCB_NONE;
        xcb_atom_t blurRegion = XCB_NONE; ///< On the root: that there is somebody who blurs.
    };

    static Atoms internAtoms(xcb_connection_t* xcb);
    void writeCardinals(
        xcb_window_t window, xcb_atom_t property, const std::vector<int>& numbers) const;

    xcb_connection_t* m_xcb;
    Atoms m_atoms;
    xcb_window_t m_root;
    bool m_hasShapes;
};

} // namespace Platform::X11

#pragma once

#include <xcb/xproto.h>

#include <array>
#include <string_view>

namespace Platform::X11 {

/// The atoms that the program speaks of.
struct Atoms {
    xcb_atom_t compoundText = XCB_NONE;
    xcb_atom_t utf8String = XCB_NONE;
    xcb_atom_t iccProfile = XCB_NONE;
    xcb_atom_t clientList = XCB_NONE;
    xcb_atom_t rootPixmap = XCB_NONE;
    xcb_atom_t frameExtents = XCB_NONE; ///< The shadow that a window draws itself.
    xcb_atom_t processID = XCB_NONE;
    xcb_atom_t visibleName = XCB_NONE;
    xcb_atom_t wmState = XCB_NONE;
    xcb_atom_t state = XCB_NONE;
    xcb_atom_t stateAbove = XCB_NONE;
    xcb_atom_t stateHidden = XCB_NONE;
    xcb_atom_t type = XCB_NONE;
    xcb_atom_t typeDesktop = XCB_NONE;
    xcb_atom_t typeDialog = XCB_NONE;
    xcb_atom_t typeDock = XCB_NONE;
    xcb_atom_t typeNormal = XCB_NONE;
};

struct AtomName {
    std::string_view name;
    xcb_atom_t Atoms::*atom;
};

inline constexpr std::array atomNames{
    AtomName{"COMPOUND_TEXT", &Atoms::compoundText},
    AtomName{"UTF8_STRING", &Atoms::utf8String},
    AtomName{"_ICC_PROFILE", &Atoms::iccProfile},
    AtomName{"_NET_CLIENT_LIST", &Atoms::clientList},
    AtomName{"_XROOTPMAP_ID", &Atoms::rootPixmap},
    AtomName{"_GTK_FRAME_EXTENTS", &Atoms::frameExtents},
    AtomName{"_NET_WM_PID", &Atoms::processID},
    AtomName{"_NET_WM_NAME", &Atoms::visibleName},
    AtomName{"WM_STATE", &Atoms::wmState},
    AtomName{"_NET_WM_STATE", &Atoms::state},
    AtomName{"_NET_WM_STATE_ABOVE", &Atoms::stateAbove},
    AtomName{"_NET_WM_STATE_HIDDEN", &Atoms::stateHidden},
    AtomName{"_NET_WM_WINDOW_TYPE", &Atoms::type},
    AtomName{"_NET_WM_WINDOW_TYPE_DESKTOP", &Atoms::typeDesktop},
    AtomName{"_NET_WM_WINDOW_TYPE_DIALOG", &Atoms::typeDialog},
    AtomName{"_NET_WM_WINDOW_TYPE_DOCK", &Atoms::typeDock},
    AtomName{"_NET_WM_WINDOW_TYPE_NORMAL", &Atoms::typeNormal},
};

} // namespace Platform::X11

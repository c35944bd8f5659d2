#pragma once

#include <xcb/xcb.h>

#include <cstdlib>
#include <memory>

namespace Platform::X11 {

struct Free {
    void operator()(void* memory) const { std::free(memory); }
};
struct Disconnect {
    void operator()(xcb_connection_t* connection) const { xcb_disconnect(connection); }
};

/// A reply, an event or an error of the X server.
template <typename T>
using Owned = std::unique_ptr<T, Free>;

using OwnedConnection = std::unique_ptr<xcb_connection_t, Disconnect>;

/// One of the X screens of a server, most of which have one.
inline const xcb_screen_t* screenOf(xcb_connection_t* connection, int number)
{
    auto screens = xcb_setup_roots_iterator(xcb_get_setup(connection));
    for (; number > 0 && screens.rem > 1; --number)
        xcb_screen_next(&screens);
    return screens.data;
}

} // namespace Platform::X11

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

} // namespace Platform::X11

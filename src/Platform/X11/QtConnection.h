#pragma once

#include <xcb/xproto.h>

/// Requests about this program's own windows, on the connection on which Qt maps them: so the
/// server sees them in the order in which they were made. None of them waits for an answer, and an
/// error is told to Qt, which writes it down and goes on. Main thread.
namespace Platform::X11::QtConnection {

/// Null where Qt has no X server.
xcb_connection_t* get();
xcb_window_t root();

/// Asks the server once for each name.
xcb_atom_t atom(const char* name);

/// Sends what was queued.
void flush();

} // namespace Platform::X11::QtConnection

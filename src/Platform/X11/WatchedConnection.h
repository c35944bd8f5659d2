#pragma once

#include "Platform/Error.h"
#include "Platform/X11/XcbTypes.h"

#include <QSocketNotifier>

#include <functional>
#include <memory>
#include <vector>

namespace Platform::X11 {

using Events = std::vector<Owned<xcb_generic_event_t>>;

/// A connection to the X server by itself, whose events come through the event loop. What fails on
/// it ends neither the program nor Qt's own connection.
class WatchedConnection {
public:
    struct Handler {
        std::function<void(const Events&)> onEvents; ///< All that have arrived, in their order.
        std::function<void()> onLost; ///< The last thing that happens here. Comes once.
    };

    /// @p display is as in DISPLAY; empty means that very variable. Waits for the server. The
    /// handler is only called from the event loop.
    static Result<std::unique_ptr<WatchedConnection>> open(const QString& display, Handler handler);

    ~WatchedConnection();
    WatchedConnection(const WatchedConnection&) = delete;
    WatchedConnection& operator=(const WatchedConnection&) = delete;

    xcb_connection_t* get() const { return m_connection.get(); }
    const xcb_setup_t& setup() const { return *xcb_get_setup(get()); }
    xcb_window_t root() const { return m_root; }

    /// Waits until the server has done all that it was asked, so that no reply or check of an
    /// earlier request has to wait. Fails, with a code of HotKeyStatus, when the connection is lost
    /// or the server takes more than a second; requests then stay in its queue.
    Result<void> finishRequests();

private:
    WatchedConnection(OwnedConnection connection, xcb_window_t root, Handler handler);
    /// For events that were read along with an answer: no socket tells of them any more.
    void handleEventsSoon();
    void handleEvents();
    Events takeEvents() const;

    OwnedConnection m_connection;
    xcb_window_t m_root;
    Handler m_handler;
    QSocketNotifier m_notifier;
};

} // namespace Platform::X11

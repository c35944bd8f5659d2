#include "Platform/X11/X11ApplicationActivation.h"

#include "Platform/X11/Errand.h"
#include "Platform/X11/Properties.h"
#include "Platform/X11/QtConnection.h"

#include <QGuiApplication>
#include <QSet>
#include <QWindow>

#include <xcb/xcb.h>

#include <memory>

namespace Platform {

namespace {

using X11::Owned;
namespace QtConnection = X11::QtConnection;

xcb_window_t focusedWindow(X11::Connection& connection)
{
    const auto focus =
        connection.reply<xcb_get_input_focus_reply_t>(xcb_get_input_focus(connection.xcb()));
    return focus ? focus->focus : XCB_NONE;
}

xcb_window_t parentOf(X11::Connection& connection, xcb_window_t window)
{
    const auto tree =
        connection.reply<xcb_query_tree_reply_t>(xcb_query_tree(connection.xcb(), window));
    return tree ? tree->parent : XCB_NONE;
}

/// Whether @p window is @p ancestor or in it.
bool isWithin(X11::Connection& connection, xcb_window_t window, xcb_window_t ancestor)
{
    // The pointer's root is no window, and neither is one that nobody has.
    while (window > XCB_INPUT_FOCUS_POINTER_ROOT && window != ancestor)
        window = parentOf(connection, window);
    return window == ancestor;
}

/// A manager keeps a window of its own at the root, and names it there and on itself.
bool hasWindowManager(X11::Connection& connection, xcb_atom_t check)
{
    const auto named = [&](xcb_window_t window) {
        const X11::PropertyRequest request(connection, window, check);
        const auto answer = request.answer(connection);
        const auto windows = X11::items(answer.get());
        return windows.empty() ? XCB_NONE : windows.front();
    };
    const auto window = named(connection.root());
    return window != XCB_NONE && named(window) == window;
}

bool isViewable(X11::Connection& connection, xcb_window_t window)
{
    const auto attributes = connection.reply<xcb_get_window_attributes_reply_t>(
        xcb_get_window_attributes(connection.xcb(), window));
    return attributes && attributes->map_state == XCB_MAP_STATE_VIEWABLE;
}

QSet<xcb_window_t> ownWindows()
{
    QSet<xcb_window_t> ids;
    for (const auto* const window : QGuiApplication::allWindows())
        if (window->handle() != nullptr)
            ids.insert(static_cast<xcb_window_t>(window->winId()));
    return ids;
}

} // namespace

void X11ApplicationActivation::noteFrontmost()
{
    const auto focused = X11::errand<xcb_window_t>(focusedWindow);
    whenFinished(focused, this, [this, own = ownWindows()](const Result<xcb_window_t>& window) {
        if (window && *window > XCB_INPUT_FOCUS_POINTER_ROOT && !own.contains(*window))
            m_frontmost = *window;
    });
}

/// As a pager asks: managers that keep the keyboard from a program that nobody clicked on believe
/// those. What times would tell them isn't known here.
void X11ApplicationActivation::activate(QWindow& window)
{
    constexpr std::uint32_t pager = 2;
    xcb_client_message_event_t event{};
    event.response_type = XCB_CLIENT_MESSAGE;
    event.format = 32;
    event.window = static_cast<xcb_window_t>(window.winId());
    event.type = QtConnection::atom("_NET_ACTIVE_WINDOW");
    event.data.data32[0] = pager;
    event.data.data32[1] = XCB_CURRENT_TIME;
    xcb_send_event(QtConnection::get(), 0, QtConnection::root(),
        XCB_EVENT_MASK_SUBSTRUCTURE_NOTIFY | XCB_EVENT_MASK_SUBSTRUCTURE_REDIRECT,
        reinterpret_cast<const char*>(&event)); // NOLINT(*-reinterpret-cast): as xcb takes events.
    QtConnection::flush();
}

QFuture<bool> X11ApplicationActivation::isKey(const QWindow& window)
{
    const auto id = static_cast<xcb_window_t>(window.winId());
    const auto answer = std::make_shared<QPromise<bool>>();
    answer->start();
    const auto isFocused = X11::errand<bool>([id](X11::Connection& connection) {
        return isWithin(connection, focusedWindow(connection), id);
    });
    whenFinished(isFocused, this, [answer](const Result<bool>& result) {
        answer->addResult(result.value_or(false));
        answer->finish();
    });
    return answer->future();
}

void X11ApplicationActivation::giveBack()
{
    const auto window = std::exchange(m_frontmost, 0);
    if (window == 0)
        return;
    const auto check = QtConnection::atom("_NET_SUPPORTING_WM_CHECK");
    X11::errand<bool>([window, check](X11::Connection& connection) {
        const bool isOurs = !hasWindowManager(connection, check) && isViewable(connection, window);
        if (isOurs) {
            xcb_set_input_focus(connection.xcb(), XCB_INPUT_FOCUS_PARENT, window, XCB_CURRENT_TIME);
            connection.finish();
        }
        return isOurs;
    });
}

} // namespace Platform

#include "Platform/X11/WatchedConnection.h"

#include "Platform/HotKeyRegistrar.h"

#include <QDeadlineTimer>

#include <xcb/xcbext.h>

#include <poll.h>
#include <utility>

namespace Platform::X11 {

namespace {

/// Far more than a server takes that is merely busy.
constexpr std::chrono::milliseconds patience{1000};

tl::unexpected<Error> failure(int code, const QString& message)
{
    return tl::make_unexpected(Error{.message = message, .code = code});
}

tl::unexpected<Error> notConnected()
{
    return failure(HotKeyStatus::notConnected, QStringLiteral("no connection to an X server"));
}

/// Whether the answer to a request that was sent, or its error, has come.
bool hasAnswer(xcb_connection_t* connection, unsigned int sequence)
{
    void* reply = nullptr;
    xcb_generic_error_t* error = nullptr;
    const bool hasCome = xcb_poll_for_reply(connection, sequence, &reply, &error) != 0;
    std::free(reply);
    std::free(error);
    return hasCome;
}

} // namespace

Result<std::unique_ptr<WatchedConnection>> WatchedConnection::open(
    const QString& display, Handler handler)
{
    const auto name = display.toLocal8Bit();
    int screenNumber = 0;
    OwnedConnection connection(
        xcb_connect(display.isEmpty() ? nullptr : name.data(), &screenNumber));
    if (xcb_connection_has_error(connection.get()) != 0)
        return notConnected();
    const auto root = screenOf(connection.get(), screenNumber)->root;
    return std::unique_ptr<WatchedConnection>(
        new WatchedConnection(std::move(connection), root, std::move(handler)));
}

WatchedConnection::WatchedConnection(OwnedConnection connection, xcb_window_t root, Handler handler)
    : m_connection(std::move(connection))
    , m_root(root)
    , m_handler(std::move(handler))
    , m_notifier(xcb_get_file_descriptor(get()), QSocketNotifier::Read)
{
    QObject::connect(
        &m_notifier, &QSocketNotifier::activated, &m_notifier, [this] { handleEvents(); });
    handleEventsSoon();
}

WatchedConnection::~WatchedConnection() = default;

Result<void> WatchedConnection::finishRequests()
{
    // The server answers in the order in which it is asked.
    const auto last = xcb_get_input_focus(get());
    xcb_flush(get());
    const QDeadlineTimer deadline(patience);
    while (!hasAnswer(get(), last.sequence)) {
        if (deadline.hasExpired()) {
            xcb_discard_reply(get(), last.sequence);
            return failure(HotKeyStatus::noAnswer, QStringLiteral("the X server does not answer"));
        }
        pollfd socket{.fd = xcb_get_file_descriptor(get()), .events = POLLIN, .revents = 0};
        static_cast<void>(poll(&socket, 1, static_cast<int>(deadline.remainingTime())));
    }
    handleEventsSoon();
    if (xcb_connection_has_error(get()) != 0)
        return notConnected();
    return {};
}

void WatchedConnection::handleEventsSoon()
{
    QMetaObject::invokeMethod(
        &m_notifier, [this] { handleEvents(); }, Qt::QueuedConnection);
}

void WatchedConnection::handleEvents()
{
    if (!m_notifier.isEnabled())
        return;
    for (auto events = takeEvents(); !events.empty(); events = takeEvents())
        m_handler.onEvents(events);
    if (xcb_connection_has_error(get()) == 0)
        return;
    m_notifier.setEnabled(false);
    m_handler.onLost();
}

Events WatchedConnection::takeEvents() const
{
    Events events;
    while (auto* const event = xcb_poll_for_event(get()))
        events.emplace_back(event);
    return events;
}

} // namespace Platform::X11

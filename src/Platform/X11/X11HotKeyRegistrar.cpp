#include "Platform/X11/X11HotKeyRegistrar.h"

#include "Platform/VirtualKeys.h"
#include "Platform/X11/GrabMasks.h"
#include "Platform/X11/WatchedConnection.h"

#include <utility>

namespace Platform {

namespace {

tl::unexpected<Error> failure(int code, const QString& message)
{
    return tl::make_unexpected(Error{.message = message, .code = code});
}

} // namespace

X11HotKeyRegistrar::X11HotKeyRegistrar(QString display)
    : m_display(std::move(display))
{
}

X11HotKeyRegistrar::~X11HotKeyRegistrar() = default;

Result<void> X11HotKeyRegistrar::installHandler(Handler handler)
{
    removeHandler();
    const auto dispatch = [this](const X11::Events& events) {
        bool hasNewMapping = false;
        for (const auto& event : events) {
            // A press and a release look the same but for the type. What other programs send has a
            // further bit there, and is nobody's key.
            const auto* const key = reinterpret_cast<const xcb_key_press_event_t*>(event.get());
            if (event->response_type == XCB_KEY_PRESS)
                keyWentDown(key->detail, key->time);
            else if (event->response_type == XCB_KEY_RELEASE)
                keyWentUp(key->detail, key->time);
            else if (event->response_type == XCB_MAPPING_NOTIFY)
                hasNewMapping = true;
        }
        if (hasNewMapping)
            mappingChanged();
    };
    const auto loseAll = [this] {
        lose({.message = QStringLiteral("the connection to the X server is lost"),
            .code = HotKeyStatus::notConnected});
    };
    auto connection =
        X11::WatchedConnection::open(m_display, {.onEvents = dispatch, .onLost = loseAll});
    if (!connection)
        return tl::make_unexpected(connection.error());
    m_connection = std::move(*connection);
    m_handler = std::move(handler);
    return {};
}

void X11HotKeyRegistrar::removeHandler()
{
    m_connection.reset(); // Takes the grabs along.
    m_shortcut.reset();
    m_handler = {};
}

Result<void> X11HotKeyRegistrar::registerHotKey(quint32 virtualKeyCode, quint32 modifiers)
{
    release();
    if (!m_connection)
        return failure(HotKeyStatus::notConnected, QStringLiteral("there is no handler"));
    const Shortcut shortcut{.virtualKeyCode = virtualKeyCode, .modifiers = modifiers};
    auto grabs = grabsFor(shortcut);
    if (!grabs)
        return tl::make_unexpected(grabs.error());
    if (auto grabbed = grab(*grabs); !grabbed)
        return grabbed;
    m_grabs = *grabs;
    m_shortcut = shortcut;
    return {};
}

void X11HotKeyRegistrar::unregisterHotKey()
{
    if (!m_shortcut)
        return;
    release();
    // So that others can have the key at once. A server that doesn't answer does it later.
    static_cast<void>(m_connection->finishRequests());
}

void X11HotKeyRegistrar::release()
{
    if (m_shortcut)
        ungrab(m_grabs);
    m_shortcut.reset();
    m_releasedAt.reset();
}

Result<X11HotKeyRegistrar::Grabs> X11HotKeyRegistrar::grabsFor(const Shortcut& shortcut)
{
    const auto place = evdevKeyCode(shortcut.virtualKeyCode);
    const auto keyCode = place.value_or(0) + displayKeyCodeOffset;
    const auto& setup = m_connection->setup();
    if (!place || keyCode < setup.min_keycode || keyCode > setup.max_keycode)
        return failure(HotKeyStatus::noSuchKey, QStringLiteral("the keyboard lacks the key"));
    const auto modifiers = X11::lookUpModifiers(*m_connection);
    if (!modifiers)
        return tl::make_unexpected(modifiers.error());
    const auto masks = X11::grabMasks(*modifiers, shortcut.modifiers);
    if (masks.isEmpty())
        return failure(HotKeyStatus::noSuchKey, QStringLiteral("no key carries a modifier"));
    return Grabs{.keyCode = static_cast<quint8>(keyCode), .masks = masks};
}

Result<void> X11HotKeyRegistrar::grab(const Grabs& grabs)
{
    auto* const xcb = m_connection->get();
    QList<xcb_void_cookie_t> requests;
    for (const auto mask : grabs.masks)
        requests.append(xcb_grab_key_checked(xcb, 0, m_connection->root(), mask, grabs.keyCode,
            XCB_GRAB_MODE_ASYNC, XCB_GRAB_MODE_ASYNC));
    auto result = m_connection->finishRequests();
    for (const auto request : requests) {
        if (!result) {
            xcb_discard_reply(xcb, request.sequence);
            continue;
        }
        const X11::Owned<xcb_generic_error_t> error(xcb_request_check(xcb, request));
        if (error)
            result = failure(error->error_code,
                QStringLiteral("the X server refused with error %1").arg(error->error_code));
    }
    if (result)
        return result;
    ungrab(grabs);
    if (result.error().code != HotKeyStatus::noAnswer)
        static_cast<void>(m_connection->finishRequests());
    return result;
}

void X11HotKeyRegistrar::ungrab(const Grabs& grabs) const
{
    auto* const xcb = m_connection->get();
    for (const auto mask : grabs.masks)
        xcb_ungrab_key(xcb, grabs.keyCode, m_connection->root(), mask);
    // While the key is down the whole keyboard is grabbed.
    xcb_ungrab_keyboard(xcb, XCB_CURRENT_TIME);
    xcb_flush(xcb);
}

void X11HotKeyRegistrar::keyWentDown(quint8 keyCode, quint32 time)
{
    if (!m_shortcut || keyCode != m_grabs.keyCode)
        return;
    // A key that repeats comes up and goes down again at the same time. Unlike counting what is
    // down, this also holds when a release went to somebody else.
    if (m_releasedAt != time)
        m_handler.onPressed();
}

void X11HotKeyRegistrar::keyWentUp(quint8 keyCode, quint32 time)
{
    if (m_shortcut && keyCode == m_grabs.keyCode)
        m_releasedAt = time;
}

void X11HotKeyRegistrar::mappingChanged()
{
    if (!m_shortcut)
        return;
    const auto grabs = grabsFor(*m_shortcut);
    if (grabs && *grabs == m_grabs)
        return;
    ungrab(m_grabs);
    if (!grabs)
        return lose(grabs.error());
    if (const auto grabbed = grab(*grabs); !grabbed)
        return lose(grabbed.error());
    m_grabs = *grabs;
}

void X11HotKeyRegistrar::lose(const Error& error)
{
    m_shortcut.reset();
    m_handler.onLost(error);
}

} // namespace Platform

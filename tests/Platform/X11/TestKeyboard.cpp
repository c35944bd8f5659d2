#include "Platform/X11/TestKeyboard.h"

#include "Harness/Waiting.h"
#include "Platform/VirtualKeys.h"
#include "Platform/X11/XcbTypes.h"

#include <xcb/xcb.h>

#include <array>
#include <utility>
// A field of this C header. NOLINTNEXTLINE(readability-identifier-naming)
#define explicit isExplicit
#include <xcb/xkb.h>
#undef explicit
#include <xcb/xtest.h>

namespace Harness {

namespace {

template <typename T>
using Owned = Platform::X11::Owned<T>;

quint8 keyCode(quint8 key)
{
    return static_cast<quint8>(key + Platform::displayKeyCodeOffset);
}

} // namespace

TestKeyboard::TestKeyboard(const QString& display)
    : m_connection(xcb_connect(display.toLatin1().data(), nullptr))
{
    m_root = xcb_setup_roots_iterator(xcb_get_setup(m_connection)).data->root;
    m_window = xcb_generate_id(m_connection);
    const quint32 events = XCB_EVENT_MASK_PROPERTY_CHANGE;
    xcb_create_window(m_connection, 0, m_window, m_root, 0, 0, 1, 1, 0, XCB_WINDOW_CLASS_INPUT_ONLY,
        XCB_COPY_FROM_PARENT, XCB_CW_EVENT_MASK, &events);
    const Owned<xcb_xkb_use_extension_reply_t> extension(xcb_xkb_use_extension_reply(
        m_connection, xcb_xkb_use_extension(m_connection, 1, 0), nullptr));
    // A release between the presses of a repeating key would be none by a finger.
    const Owned<xcb_xkb_per_client_flags_reply_t> flags(xcb_xkb_per_client_flags_reply(m_connection,
        xcb_xkb_per_client_flags(m_connection, XCB_XKB_ID_USE_CORE_KBD,
            XCB_XKB_PER_CLIENT_FLAG_DETECTABLE_AUTO_REPEAT,
            XCB_XKB_PER_CLIENT_FLAG_DETECTABLE_AUTO_REPEAT, 0, 0, 0),
        nullptr));
}

TestKeyboard::~TestKeyboard()
{
    xcb_disconnect(m_connection);
}

void TestKeyboard::press(quint8 key)
{
    xcb_test_fake_input(
        m_connection, XCB_KEY_PRESS, keyCode(key), XCB_CURRENT_TIME, XCB_NONE, 0, 0, 0);
    finish();
}

void TestKeyboard::release(quint8 key)
{
    xcb_test_fake_input(
        m_connection, XCB_KEY_RELEASE, keyCode(key), XCB_CURRENT_TIME, XCB_NONE, 0, 0, 0);
    finish();
}

void TestKeyboard::type(std::initializer_list<quint8> keys)
{
    for (const auto key : keys)
        press(key);
    for (const auto* key = keys.end(); key != keys.begin();)
        release(*--key);
    letPass(2); // No finger is down again in the same millisecond.
}

void TestKeyboard::letPass(quint32 milliseconds)
{
    const auto start = serverTime();
    while (serverTime() - start < milliseconds) { }
}

void TestKeyboard::repeatFast()
{
    constexpr quint32 controls = XCB_XKB_BOOL_CTRL_REPEAT_KEYS;
    constexpr quint16 repeatDelay = 20; // Milliseconds, as below.
    constexpr quint16 repeatInterval = 5;
    const std::array<quint8, 32> keys{}; // Unused, since that isn't changed.
    xcb_xkb_set_controls(m_connection, XCB_XKB_ID_USE_CORE_KBD, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0,
        controls, controls, controls, repeatDelay, repeatInterval, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0,
        0, keys.data());
    finish();
}

void TestKeyboard::setLayout(quint8 layout)
{
    xcb_xkb_latch_lock_state(m_connection, XCB_XKB_ID_USE_CORE_KBD, 0, 0, 1, layout, 0, 0, 0);
    finish();
}

void TestKeyboard::lockModifiers(quint8 mask)
{
    xcb_xkb_latch_lock_state(m_connection, XCB_XKB_ID_USE_CORE_KBD, 0xff, mask, 0, 0, 0, 0, 0);
    finish();
}

quint16 TestKeyboard::modifiers() const
{
    const Owned<xcb_query_pointer_reply_t> reply(
        xcb_query_pointer_reply(m_connection, xcb_query_pointer(m_connection, m_root), nullptr));
    return reply->mask;
}

void TestKeyboard::setModifierKey(int modifier, quint8 key)
{
    const Owned<xcb_get_modifier_mapping_reply_t> before(xcb_get_modifier_mapping_reply(
        m_connection, xcb_get_modifier_mapping(m_connection), nullptr));
    const int perModifier = before->keycodes_per_modifier;
    auto* const all = xcb_get_modifier_mapping_keycodes(before.get());
    for (int i = 0; i < 8 * perModifier; ++i)
        if (all[i] == keyCode(key))
            all[i] = 0;
    for (int i = 0; i < perModifier; ++i)
        all[modifier * perModifier + i] = i == 0 ? keyCode(key) : 0;
    const Owned<xcb_set_modifier_mapping_reply_t> after(xcb_set_modifier_mapping_reply(m_connection,
        xcb_set_modifier_mapping(m_connection, static_cast<uint8_t>(perModifier), all), nullptr));
}

bool TestKeyboard::grab(quint8 key, quint16 modifiers)
{
    const Owned<xcb_generic_error_t> error(xcb_request_check(m_connection,
        xcb_grab_key_checked(m_connection, 0, m_root, modifiers, keyCode(key), XCB_GRAB_MODE_ASYNC,
            XCB_GRAB_MODE_ASYNC)));
    return !error;
}

void TestKeyboard::ungrab(quint8 key, quint16 modifiers)
{
    xcb_ungrab_key(m_connection, keyCode(key), m_root, modifiers);
    finish();
}

bool TestKeyboard::grabWholeKeyboard()
{
    const Owned<xcb_grab_keyboard_reply_t> reply(xcb_grab_keyboard_reply(m_connection,
        xcb_grab_keyboard(
            m_connection, 0, m_root, XCB_CURRENT_TIME, XCB_GRAB_MODE_ASYNC, XCB_GRAB_MODE_ASYNC),
        nullptr));
    return reply && reply->status == XCB_GRAB_STATUS_SUCCESS;
}

int TestKeyboard::takePresses()
{
    serverTime(); // Comes behind all presses so far.
    return std::exchange(m_presses, 0);
}

void TestKeyboard::stopServer()
{
    xcb_grab_server(m_connection);
    finish();
}

void TestKeyboard::letServerGoOn()
{
    xcb_ungrab_server(m_connection);
    finish();
}

void TestKeyboard::finish() const
{
    const Owned<xcb_get_input_focus_reply_t> reply(
        xcb_get_input_focus_reply(m_connection, xcb_get_input_focus(m_connection), nullptr));
}

quint32 TestKeyboard::serverTime()
{
    xcb_change_property(
        m_connection, XCB_PROP_MODE_APPEND, m_window, XCB_ATOM_WM_NAME, XCB_ATOM_STRING, 8, 0, "");
    xcb_flush(m_connection);
    while (const Owned<xcb_generic_event_t> event{xcb_wait_for_event(m_connection)}) {
        if (event->response_type == XCB_PROPERTY_NOTIFY)
            return reinterpret_cast<const xcb_property_notify_event_t*>(event.get())->time;
        m_presses += event->response_type == XCB_KEY_PRESS ? 1 : 0;
    }
    return 0;
}

bool setKeyboard(const XServer& server, const QStringList& arguments)
{
    QProcess setxkbmap;
    setxkbmap.setProcessEnvironment(server.environment());
    setxkbmap.start(QStringLiteral("setxkbmap"), arguments);
    return setxkbmap.waitForFinished(patience) && setxkbmap.exitCode() == 0;
}

} // namespace Harness

#include "Harness/XClient.h"

#include "Harness/Desktop.h"
#include "Platform/VirtualKeys.h"
#include "Platform/X11/XcbTypes.h"

#include <xcb/res.h>
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

using Platform::X11::Owned;

quint8 keyCode(quint8 key)
{
    return static_cast<quint8>(key + Platform::displayKeyCodeOffset);
}

} // namespace

XClient::XClient(const QString& display)
    : m_xcb(xcb_connect(display.toLatin1().constData(), nullptr))
    , m_screen(xcb_setup_roots_iterator(xcb_get_setup(m_xcb)).data)
    , m_window(xcb_generate_id(m_xcb))
{
    const quint32 events = XCB_EVENT_MASK_PROPERTY_CHANGE | XCB_EVENT_MASK_KEY_PRESS;
    xcb_create_window(m_xcb, 0, m_window, m_screen->root, 0, 0, 1, 1, 0,
        XCB_WINDOW_CLASS_INPUT_ONLY, XCB_COPY_FROM_PARENT, XCB_CW_EVENT_MASK, &events);
    const Owned<xcb_xkb_use_extension_reply_t> extension(
        xcb_xkb_use_extension_reply(m_xcb, xcb_xkb_use_extension(m_xcb, 1, 0), nullptr));
    // A release between the presses of a repeating key would be none by a finger.
    const Owned<xcb_xkb_per_client_flags_reply_t> flags(xcb_xkb_per_client_flags_reply(m_xcb,
        xcb_xkb_per_client_flags(m_xcb, XCB_XKB_ID_USE_CORE_KBD,
            XCB_XKB_PER_CLIENT_FLAG_DETECTABLE_AUTO_REPEAT,
            XCB_XKB_PER_CLIENT_FLAG_DETECTABLE_AUTO_REPEAT, 0, 0, 0),
        nullptr));
}

XClient::~XClient()
{
    xcb_disconnect(m_xcb);
}

QRect XClient::rect() const
{
    return {0, 0, m_screen->width_in_pixels, m_screen->height_in_pixels};
}

QImage XClient::picture() const
{
    const auto [width, height] = std::pair(m_screen->width_in_pixels, m_screen->height_in_pixels);
    const Owned<xcb_get_image_reply_t> reply(xcb_get_image_reply(m_xcb,
        xcb_get_image(m_xcb, XCB_IMAGE_FORMAT_Z_PIXMAP, m_screen->root, 0, 0, width, height, ~0U),
        nullptr));
    if (!reply)
        return {};
    return QImage(xcb_get_image_data(reply.get()), width, height, QImage::Format_RGB32).copy();
}

int XClient::windowCount() const
{
    const Owned<xcb_query_tree_reply_t> tree(
        xcb_query_tree_reply(m_xcb, xcb_query_tree(m_xcb, m_screen->root), nullptr));
    return tree ? xcb_query_tree_children_length(tree.get()) : -1;
}

std::uint32_t XClient::focus() const
{
    const Owned<xcb_get_input_focus_reply_t> reply(
        xcb_get_input_focus_reply(m_xcb, xcb_get_input_focus(m_xcb), nullptr));
    return reply ? reply->focus : XCB_NONE;
}

void XClient::setFocus(std::uint32_t window) const
{
    xcb_set_input_focus(m_xcb, XCB_INPUT_FOCUS_PARENT, window, XCB_CURRENT_TIME);
    finish();
}

void XClient::takeFocus() const
{
    xcb_map_window(m_xcb, m_window);
    setFocus(m_window);
}

void XClient::lower(std::uint32_t window) const
{
    const std::uint32_t below = XCB_STACK_MODE_BELOW;
    xcb_configure_window(m_xcb, window, XCB_CONFIG_WINDOW_STACK_MODE, &below);
    finish();
}

void XClient::fake(quint8 event, quint8 detail) const
{
    xcb_test_fake_input(m_xcb, event, detail, XCB_CURRENT_TIME, XCB_NONE, 0, 0, 0);
    finish();
}

void XClient::press(quint8 key) const
{
    fake(XCB_KEY_PRESS, keyCode(key));
}

void XClient::release(quint8 key) const
{
    fake(XCB_KEY_RELEASE, keyCode(key));
}

void XClient::type(std::initializer_list<quint8> keys)
{
    for (const auto key : keys)
        press(key);
    for (const auto* key = keys.end(); key != keys.begin();)
        release(*--key);
    letPass(2); // No finger is down again in the same millisecond.
}

void XClient::click() const
{
    fake(XCB_BUTTON_PRESS, 1);
    fake(XCB_BUTTON_RELEASE, 1);
}

void XClient::letPass(quint32 milliseconds)
{
    const auto start = serverTime();
    while (serverTime() - start < milliseconds) { }
}

int XClient::takePresses()
{
    serverTime(); // Comes behind all presses so far.
    return std::exchange(m_presses, 0);
}

void XClient::repeatFast() const
{
    constexpr quint32 controls = XCB_XKB_BOOL_CTRL_REPEAT_KEYS;
    constexpr quint16 repeatDelay = 20; // Milliseconds, as below.
    constexpr quint16 repeatInterval = 5;
    const std::array<quint8, 32> keys{}; // Unused, since that isn't changed.
    xcb_xkb_set_controls(m_xcb, XCB_XKB_ID_USE_CORE_KBD, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, controls,
        controls, controls, repeatDelay, repeatInterval, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0,
        keys.data());
    finish();
}

void XClient::setLayout(quint8 layout) const
{
    xcb_xkb_latch_lock_state(m_xcb, XCB_XKB_ID_USE_CORE_KBD, 0, 0, 1, layout, 0, 0, 0);
    finish();
}

void XClient::lockModifiers(quint8 mask) const
{
    xcb_xkb_latch_lock_state(m_xcb, XCB_XKB_ID_USE_CORE_KBD, 0xff, mask, 0, 0, 0, 0, 0);
    finish();
}

quint16 XClient::modifiers() const
{
    const Owned<xcb_query_pointer_reply_t> reply(
        xcb_query_pointer_reply(m_xcb, xcb_query_pointer(m_xcb, m_screen->root), nullptr));
    return reply->mask;
}

void XClient::setModifierKey(int modifier, quint8 key) const
{
    const Owned<xcb_get_modifier_mapping_reply_t> before(
        xcb_get_modifier_mapping_reply(m_xcb, xcb_get_modifier_mapping(m_xcb), nullptr));
    const int perModifier = before->keycodes_per_modifier;
    auto* const all = xcb_get_modifier_mapping_keycodes(before.get());
    for (int i = 0; i < 8 * perModifier; ++i)
        if (all[i] == keyCode(key))
            all[i] = 0;
    for (int i = 0; i < perModifier; ++i)
        all[modifier * perModifier + i] = i == 0 ? keyCode(key) : 0;
    const Owned<xcb_set_modifier_mapping_reply_t> after(xcb_set_modifier_mapping_reply(
        m_xcb, xcb_set_modifier_mapping(m_xcb, static_cast<uint8_t>(perModifier), all), nullptr));
}

bool XClient::grab(quint8 key, quint16 modifiers) const
{
    const Owned<xcb_generic_error_t> error(xcb_request_check(m_xcb,
        xcb_grab_key_checked(m_xcb, 0, m_screen->root, modifiers, keyCode(key), XCB_GRAB_MODE_ASYNC,
            XCB_GRAB_MODE_ASYNC)));
    return !error;
}

void XClient::ungrab(quint8 key, quint16 modifiers) const
{
    xcb_ungrab_key(m_xcb, keyCode(key), m_screen->root, modifiers);
    finish();
}

bool XClient::grabKeyboard() const
{
    const Owned<xcb_grab_keyboard_reply_t> reply(xcb_grab_keyboard_reply(m_xcb,
        xcb_grab_keyboard(
            m_xcb, 1, m_screen->root, XCB_CURRENT_TIME, XCB_GRAB_MODE_ASYNC, XCB_GRAB_MODE_ASYNC),
        nullptr));
    return reply && reply->status == XCB_GRAB_STATUS_SUCCESS;
}

void XClient::ungrabKeyboard() const
{
    xcb_ungrab_keyboard(m_xcb, XCB_CURRENT_TIME);
    finish();
}

bool XClient::canGrabKeyboard() const
{
    const bool canGrab = grabKeyboard();
    ungrabKeyboard();
    return canGrab;
}

void XClient::stopServer() const
{
    xcb_grab_server(m_xcb);
    finish();
}

void XClient::letServerGoOn() const
{
    xcb_ungrab_server(m_xcb);
    finish();
}

quint32 XClient::serverTime()
{
    xcb_change_property(
        m_xcb, XCB_PROP_MODE_APPEND, m_window, XCB_ATOM_WM_NAME, XCB_ATOM_STRING, 8, 0, "");
    xcb_flush(m_xcb);
    while (const Owned<xcb_generic_event_t> event{xcb_wait_for_event(m_xcb)}) {
        if (event->response_type == XCB_PROPERTY_NOTIFY)
            return reinterpret_cast<const xcb_property_notify_event_t*>(event.get())->time;
        m_presses += event->response_type == XCB_KEY_PRESS ? 1 : 0;
    }
    return 0;
}

int XClient::resources(std::uint32_t client) const
{
    constexpr std::string_view notItsOwn = "ShapeEvent";
    const Owned<xcb_intern_atom_reply_t> atom(xcb_intern_atom_reply(
        m_xcb, xcb_intern_atom(m_xcb, 0, notItsOwn.size(), notItsOwn.data()), nullptr));
    const Owned<xcb_res_query_client_resources_reply_t> reply(xcb_res_query_client_resources_reply(
        m_xcb, xcb_res_query_client_resources(m_xcb, client), nullptr));
    if (!reply || !atom)
        return 0;
    int sum = 0;
    for (auto type = xcb_res_query_client_resources_types_iterator(reply.get()); type.rem > 0;
         xcb_res_type_next(&type))
        sum += type.data->resource_type == atom->atom ? 0 : static_cast<int>(type.data->count);
    return sum;
}

int XClient::resourcesOf(qint64 processID) const
{
    xcb_res_client_id_spec_t all{.client = 0, .mask = XCB_RES_CLIENT_ID_MASK_LOCAL_CLIENT_PID};
    const Owned<xcb_res_query_client_ids_reply_t> reply(
        xcb_res_query_client_ids_reply(m_xcb, xcb_res_query_client_ids(m_xcb, 1, &all), nullptr));
    if (!reply)
        return -1;
    int sum = 0;
    for (auto ids = xcb_res_query_client_ids_ids_iterator(reply.get()); ids.rem > 0;
         xcb_res_client_id_value_next(&ids))
        if (xcb_res_client_id_value_value_length(ids.data) > 0
            && *xcb_res_client_id_value_value(ids.data) == processID)
            sum += resources(ids.data->spec.client);
    return sum;
}

bool setKeyboard(const XServer& server, const QByteArrayList& arguments)
{
    return Desktop(server.environment()).run("setxkbmap", arguments);
}

} // namespace Harness

#include "Platform/X11/X11OverlayKeyboard.h"

#include "Platform/X11/WatchedConnection.h"

#include <QSet>

#include <xcb/xinput.h>

#include <array>
#include <optional>
#include <utility>

namespace Platform {

namespace {

constexpr xcb_keysym_t escapeSymbol = 0xff1b;
constexpr xcb_keysym_t spaceSymbol = 0x20;

using X11::Owned;

/// Which keys carry which symbol, in the layouts of now.
struct KeySymbols {
    QSet<xcb_keycode_t> escape;
    QSet<xcb_keycode_t> space;
};

/// Looks at the first level alone of the two groups that the core protocol knows: what one gets
/// without any modifier.
KeySymbols keySymbols(const xcb_get_keyboard_mapping_reply_t* mapping, xcb_keycode_t firstKey)
{
    constexpr std::array firstLevels{0, 2};
    KeySymbols keys;
    const int width = mapping->keysyms_per_keycode;
    const auto* const symbols = xcb_get_keyboard_mapping_keysyms(mapping);
    const int count = xcb_get_keyboard_mapping_keysyms_length(mapping) / std::max(width, 1);
    for (int key = 0; key < count; ++key)
        for (const int level : firstLevels) {
            if (level >= width)
                continue;
            const auto code = static_cast<xcb_keycode_t>(firstKey + key);
            const auto symbol = symbols[key * width + level];
            if (symbol == escapeSymbol)
                keys.escape.insert(code);
            else if (symbol == spaceSymbol)
                keys.space.insert(code);
        }
    return keys;
}

} // namespace

class X11OverlayKeyboard::Connection {
public:
    /// Null without a server, and without raw events of one.
    static std::unique_ptr<Connection> open(X11OverlayKeyboard& owner);

    void take();
    void giveBack();

    bool isTaken() const { return m_grabWindow != XCB_NONE; }

private:
    explicit Connection(X11OverlayKeyboard& owner)
        : m_owner(owner)
    {
    }

    bool connect();
    xcb_connection_t* xcb() const { return m_connection->get(); }
    void handle(const X11::Events& events);
    void tell(xcb_keycode_t key);
    void readMapping();
    void selectRawEvents(quint32 mask);
    void grab();

    X11OverlayKeyboard& m_owner;
    std::unique_ptr<X11::WatchedConnection> m_connection;
    quint8 m_inputOpcode = 0;
    xcb_window_t m_grabWindow = XCB_NONE;
    std::optional<xcb_get_keyboard_mapping_cookie_t> m_mapping; ///< Asked and not yet read.
    KeySymbols m_symbols;
};

std::unique_ptr<X11OverlayKeyboard::Connection> X11OverlayKeyboard::Connection::open(
    X11OverlayKeyboard& owner)
{
    std::unique_ptr<Connection> connection(new Connection(owner));
    return connection->connect() ? std::move(connection) : nullptr;
}

bool X11OverlayKeyboard::Connection::connect()
{
    auto connection = X11::WatchedConnection::open(
        {}, {.onEvents = [this](const X11::Events& events) { handle(events); }, .onLost = [] {}});
    if (!connection)
        return false;
    m_connection = *std::move(connection);

    const auto* const extension = xcb_get_extension_data(xcb(), &xcb_input_id);
    // Since 2.1 raw events are told during grabs, but only to those who say that they know it.
    const Owned<xcb_input_xi_query_version_reply_t> version(
        xcb_input_xi_query_version_reply(xcb(), xcb_input_xi_query_version(xcb(), 2, 2), nullptr));
    if (extension == nullptr || extension->present == 0 || !version)
        return false;
    m_inputOpcode = extension->major_opcode;
    return true;
}

void X11OverlayKeyboard::Connection::take()
{
    // A window of our own out of sight: of the root, the server would tell the keys of a grab of
    // ours in another way than those without.
    m_grabWindow = xcb_generate_id(xcb());
    const quint32 overrideRedirect = 1;
    xcb_create_window(xcb(), XCB_COPY_FROM_PARENT, m_grabWindow, m_connection->root(), -1, -1, 1, 1,
        0, XCB_WINDOW_CLASS_INPUT_ONLY, XCB_COPY_FROM_PARENT, XCB_CW_OVERRIDE_REDIRECT,
        &overrideRedirect);
    xcb_map_window(xcb(), m_grabWindow);
    selectRawEvents(XCB_INPUT_XI_EVENT_MASK_RAW_KEY_PRESS | XCB_INPUT_XI_EVENT_MASK_RAW_KEY_RELEASE
        | XCB_INPUT_XI_EVENT_MASK_RAW_BUTTON_RELEASE);
    const auto& setup = m_connection->setup();
    m_mapping = xcb_get_keyboard_mapping(
        xcb(), setup.min_keycode, static_cast<quint8>(setup.max_keycode - setup.min_keycode + 1));
    grab();
}

void X11OverlayKeyboard::Connection::giveBack()
{
    selectRawEvents(0);
    if (m_mapping) // Without a key nobody has read it, and it would be kept for ever.
        xcb_discard_reply(xcb(), std::exchange(m_mapping, {})->sequence);
    xcb_ungrab_keyboard(xcb(), XCB_CURRENT_TIME);
    xcb_destroy_window(xcb(), std::exchange(m_grabWindow, XCB_NONE));
    xcb_flush(xcb());
}

void X11OverlayKeyboard::Connection::selectRawEvents(quint32 mask)
{
    struct {
        xcb_input_event_mask_t head;
        quint32 mask;
    } request{{.deviceid = XCB_INPUT_DEVICE_ALL_MASTER, .mask_len = 1}, mask};
    xcb_input_xi_select_events(xcb(), m_connection->root(), 1, &request.head);
}

/// Fails while another client has a grab, that of the key which has called the overlays included.
/// Grabbing again what we have already changes nothing.
void X11OverlayKeyboard::Connection::grab()
{
    const auto cookie = xcb_grab_keyboard(
        xcb(), 0, m_grabWindow, XCB_CURRENT_TIME, XCB_GRAB_MODE_ASYNC, XCB_GRAB_MODE_ASYNC);
    xcb_discard_reply(xcb(), cookie.sequence);
    xcb_flush(xcb());
}

/// Notices as well when the keyboard may have come free.
void X11OverlayKeyboard::Connection::handle(const X11::Events& events)
{
    for (const auto& event : events) {
        const auto* const generic = reinterpret_cast<const xcb_ge_generic_event_t*>(event.get());
        if (!isTaken() || generic->response_type != XCB_GE_GENERIC
            || generic->extension != m_inputOpcode)
            continue;
        if (generic->event_type == XCB_INPUT_RAW_KEY_PRESS)
            tell(static_cast<xcb_keycode_t>(
                reinterpret_cast<const xcb_input_raw_key_press_event_t*>(generic)->detail));
        else
            grab();
    }
}

void X11OverlayKeyboard::Connection::tell(xcb_keycode_t key)
{
    readMapping();
    if (m_symbols.escape.contains(key))
        emit m_owner.escapePressed();
    else if (m_symbols.space.contains(key))
        emit m_owner.spacePressed();
}

void X11OverlayKeyboard::Connection::readMapping()
{
    if (!m_mapping)
        return;
    // Asked before the first event was, so the answer is here already.
    const Owned<xcb_get_keyboard_mapping_reply_t> mapping(
        xcb_get_keyboard_mapping_reply(xcb(), *std::exchange(m_mapping, {}), nullptr));
    m_symbols =
        mapping ? keySymbols(mapping.get(), m_connection->setup().min_keycode) : KeySymbols();
}

X11OverlayKeyboard::X11OverlayKeyboard()
    : m_connection(Connection::open(*this))
{
}

X11OverlayKeyboard::~X11OverlayKeyboard() = default;

void X11OverlayKeyboard::take()
{
    if (m_connection && !m_connection->isTaken())
        m_connection->take();
}

void X11OverlayKeyboard::giveBack()
{
    if (m_connection && m_connection->isTaken())
        m_connection->giveBack();
}

} // namespace Platform

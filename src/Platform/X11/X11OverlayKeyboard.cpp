#include "Platform/X11/X11OverlayKeyboard.h"

#include <QSet>
#include <QSocketNotifier>

#include <xcb/xcb.h>
#include <xcb/xinput.h>

#include <array>
#include <cstdlib>
#include <optional>

namespace Platform {

namespace {

constexpr xcb_keysym_t escapeSymbol = 0xff1b;
constexpr xcb_keysym_t spaceSymbol = 0x20;

struct Free {
    void operator()(void* memory) const { std::free(memory); }
};
struct Disconnect {
    void operator()(xcb_connection_t* connection) const { xcb_disconnect(connection); }
};

template <typename T>
using Owned = std::unique_ptr<T, Free>;

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
    static std::unique_ptr<Connection> open();

    void take();
    void giveBack();

    int socket() const { return xcb_get_file_descriptor(m_xcb.get()); }
    bool isBroken() const { return xcb_connection_has_error(m_xcb.get()) != 0; }
    bool isTaken() const { return m_grabWindow != XCB_NONE; }

    /// The next key that was pressed, if any; notices meanwhile when the keyboard may have come
    /// free.
    std::optional<xcb_keycode_t> nextPress();
    const KeySymbols& symbols();

    std::unique_ptr<QSocketNotifier> notifier;

private:
    Connection(xcb_connection_t* xcb, int screen);

    void selectRawEvents(quint32 mask);
    void grab();

    std::unique_ptr<xcb_connection_t, Disconnect> m_xcb;
    const xcb_setup_t* m_setup;
    xcb_window_t m_root = XCB_NONE;
    quint8 m_inputOpcode = 0;
    xcb_window_t m_grabWindow = XCB_NONE;
    std::optional<xcb_get_keyboard_mapping_cookie_t> m_mapping; ///< Asked and not yet read.
    KeySymbols m_symbols;
};

std::unique_ptr<X11OverlayKeyboard::Connection> X11OverlayKeyboard::Connection::open()
{
    int screen = 0;
    auto* const xcb = xcb_connect(nullptr, &screen);
    std::unique_ptr<Connection> connection(new Connection(xcb, screen));
    if (connection->isBroken() || connection->m_inputOpcode == 0)
        return nullptr;
    return connection;
}

X11OverlayKeyboard::Connection::Connection(xcb_connection_t* xcb, int screen)
    : m_xcb(xcb)
    , m_setup(xcb_get_setup(xcb))
{
    if (isBroken())
        return;
    auto screens = xcb_setup_roots_iterator(m_setup);
    for (; screen > 0 && screens.rem > 1; --screen)
        xcb_screen_next(&screens);
    m_root = screens.data->root;

    const auto* const extension = xcb_get_extension_data(xcb, &xcb_input_id);
    // Since 2.1 raw events are told during grabs, but only to those who say that they know it.
    const Owned<xcb_input_xi_query_version_reply_t> version(
        xcb_input_xi_query_version_reply(xcb, xcb_input_xi_query_version(xcb, 2, 2), nullptr));
    if (extension != nullptr && extension->present != 0 && version)
        m_inputOpcode = extension->major_opcode;
}

void X11OverlayKeyboard::Connection::take()
{
    // A window of our own out of sight: of the root, the server would tell the keys of a grab of
    // ours in another way than those without.
    m_grabWindow = xcb_generate_id(m_xcb.get());
    const quint32 overrideRedirect = 1;
    xcb_create_window(m_xcb.get(), XCB_COPY_FROM_PARENT, m_grabWindow, m_root, -1, -1, 1, 1, 0,
        XCB_WINDOW_CLASS_INPUT_ONLY, XCB_COPY_FROM_PARENT, XCB_CW_OVERRIDE_REDIRECT,
        &overrideRedirect);
    xcb_map_window(m_xcb.get(), m_grabWindow);
    selectRawEvents(XCB_INPUT_XI_EVENT_MASK_RAW_KEY_PRESS | XCB_INPUT_XI_EVENT_MASK_RAW_KEY_RELEASE
        | XCB_INPUT_XI_EVENT_MASK_RAW_BUTTON_RELEASE);
    m_mapping = xcb_get_keyboard_mapping(m_xcb.get(), m_setup->min_keycode,
        static_cast<quint8>(m_setup->max_keycode - m_setup->min_keycode + 1));
    grab();
}

void X11OverlayKeyboard::Connection::giveBack()
{
    selectRawEvents(0);
    if (m_mapping) // Without a key nobody has read it, and it would be kept for ever.
        xcb_discard_reply(m_xcb.get(), std::exchange(m_mapping, {})->sequence);
    xcb_ungrab_keyboard(m_xcb.get(), XCB_CURRENT_TIME);
    xcb_destroy_window(m_xcb.get(), std::exchange(m_grabWindow, XCB_NONE));
    xcb_flush(m_xcb.get());
}

void X11OverlayKeyboard::Connection::selectRawEvents(quint32 mask)
{
    struct {
        xcb_input_event_mask_t head;
        quint32 mask;
    } request{{.deviceid = XCB_INPUT_DEVICE_ALL_MASTER, .mask_len = 1}, mask};
    xcb_input_xi_select_events(m_xcb.get(), m_root, 1, &request.head);
}

/// Fails while another client has a grab, that of the key which has called the overlays included.
/// Grabbing again what we have already changes nothing.
void X11OverlayKeyboard::Connection::grab()
{
    const auto cookie = xcb_grab_keyboard(
        m_xcb.get(), 0, m_grabWindow, XCB_CURRENT_TIME, XCB_GRAB_MODE_ASYNC, XCB_GRAB_MODE_ASYNC);
    xcb_discard_reply(m_xcb.get(), cookie.sequence);
    xcb_flush(m_xcb.get());
}

std::optional<xcb_keycode_t> X11OverlayKeyboard::Connection::nextPress()
{
    while (const Owned<xcb_generic_event_t> event{xcb_poll_for_event(m_xcb.get())}) {
        const auto* const generic = reinterpret_cast<const xcb_ge_generic_event_t*>(event.get());
        if (!isTaken() || generic->response_type != XCB_GE_GENERIC
            || generic->extension != m_inputOpcode)
            continue;
        if (generic->event_type != XCB_INPUT_RAW_KEY_PRESS) {
            grab();
            continue;
        }
        const auto* const press = reinterpret_cast<const xcb_input_raw_key_press_event_t*>(generic);
        return static_cast<xcb_keycode_t>(press->detail);
    }
    return std::nullopt;
}

const KeySymbols& X11OverlayKeyboard::Connection::symbols()
{
    if (m_mapping) {
        // Asked before the first event was, so the answer is here already.
        const Owned<xcb_get_keyboard_mapping_reply_t> mapping(
            xcb_get_keyboard_mapping_reply(m_xcb.get(), *std::exchange(m_mapping, {}), nullptr));
        m_symbols = mapping ? keySymbols(mapping.get(), m_setup->min_keycode) : KeySymbols();
    }
    return m_symbols;
}

X11OverlayKeyboard::X11OverlayKeyboard()
    : m_connection(Connection::open())
{
    if (!m_connection)
        return;
    m_connection->notifier =
        std::make_unique<QSocketNotifier>(m_connection->socket(), QSocketNotifier::Read);
    connect(m_connection->notifier.get(), &QSocketNotifier::activated, this,
        &X11OverlayKeyboard::readEvents);
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

void X11OverlayKeyboard::readEvents()
{
    while (const auto key = m_connection->nextPress()) {
        const auto& symbols = m_connection->symbols();
        if (symbols.escape.contains(*key))
            emit escapePressed();
        else if (symbols.space.contains(*key))
            emit spacePressed();
    }
    if (m_connection->isBroken())
        m_connection->notifier->setEnabled(false);
}

} // namespace Platform

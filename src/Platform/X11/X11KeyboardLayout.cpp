#include "Platform/X11/X11KeyboardLayout.h"

#include "Platform/VirtualKeys.h"
#include "Platform/X11/Keymap.h"
#include "Platform/X11/WatchedConnection.h"

// A field of this C header. NOLINTNEXTLINE(readability-identifier-naming)
#define explicit isExplicit
#include <xcb/xkb.h>
#undef explicit
#include <xkbcommon/xkbcommon-x11.h>

namespace Platform {

class X11KeyboardLayout::Follower {
public:
    explicit Follower(const QString& display);

    std::optional<QString> character(quint32 virtualKeyCode) const;

private:
    bool setUp();
    void askForChanges() const;
    void readKeymap();
    void setLayout(quint32 layout);
    void handle(const X11::Events& events);

    std::unique_ptr<X11::WatchedConnection> m_connection;
    quint8 m_firstEvent = 0;
    int m_device = -1;
    std::optional<X11::Keymap> m_keymap;
    quint32 m_layout = 0;
    std::optional<quint32> m_latinLayout; ///< The one last used that is, or could be.
};

X11KeyboardLayout::Follower::Follower(const QString& display)
{
    auto connection = X11::WatchedConnection::open(display,
        {.onEvents = [this](const X11::Events& events) { handle(events); }, .onLost = [] {}});
    if (!connection)
        return;
    m_connection = std::move(*connection);
    if (!setUp())
        return;
    askForChanges(); // First, so that none is missed.
    readKeymap();
}

bool X11KeyboardLayout::Follower::setUp()
{
    auto* const xcb = m_connection->get();
    if (xkb_x11_setup_xkb_extension(xcb, XKB_X11_MIN_MAJOR_XKB_VERSION,
            XKB_X11_MIN_MINOR_XKB_VERSION, XKB_X11_SETUP_XKB_EXTENSION_NO_FLAGS, nullptr, nullptr,
            &m_firstEvent, nullptr)
        == 0)
        return false;
    m_device = xkb_x11_get_core_keyboard_device_id(xcb);
    return m_device >= 0;
}

void X11KeyboardLayout::Follower::askForChanges() const
{
    constexpr uint16_t events = XCB_XKB_EVENT_TYPE_NEW_KEYBOARD_NOTIFY
        | XCB_XKB_EVENT_TYPE_MAP_NOTIFY | XCB_XKB_EVENT_TYPE_STATE_NOTIFY;
    constexpr uint16_t parts = XCB_XKB_MAP_PART_KEY_TYPES | XCB_XKB_MAP_PART_KEY_SYMS;
    // All of the keyboard's and the map's changes, but only those of the state that are a switch:
    // nothing wakes the program when a key goes down.
    xcb_xkb_select_events_details_t details{};
    details.affectNewKeyboard = XCB_XKB_NKN_DETAIL_KEYCODES | XCB_XKB_NKN_DETAIL_DEVICE_ID;
    details.newKeyboardDetails = details.affectNewKeyboard;
    details.affectState = XCB_XKB_STATE_PART_GROUP_STATE;
    details.stateDetails = details.affectState;
    xcb_xkb_select_events_aux(
        m_connection->get(), static_cast<uint16_t>(m_device), events, 0, 0, parts, parts, &details);
    xcb_flush(m_connection->get());
}

void X11KeyboardLayout::Follower::readKeymap()
{
    auto keymap = X11::Keymap::read(m_connection->get(), m_device);
    if (!keymap)
        return;
    m_keymap = std::move(keymap);
    m_latinLayout = m_keymap->firstLatinLayout();
    setLayout(m_keymap->initialLayout());
}

void X11KeyboardLayout::Follower::setLayout(quint32 layout)
{
    m_layout = layout;
    if (m_keymap && m_keymap->isLatin(layout))
        m_latinLayout = layout;
}

void X11KeyboardLayout::Follower::handle(const X11::Events& events)
{
    bool hasNewKeymap = false;
    for (const auto& event : events) {
        if (event->response_type != m_firstEvent)
            continue;
        // Every event of the extension begins as this one does.
        const auto* const state =
            reinterpret_cast<const xcb_xkb_state_notify_event_t*>(event.get());
        if (state->xkbType == XCB_XKB_STATE_NOTIFY)
            setLayout(state->group);
        else
            hasNewKeymap = true;
    }
    if (hasNewKeymap)
        readKeymap();
}

std::optional<QString> X11KeyboardLayout::Follower::character(quint32 virtualKeyCode) const
{
    const auto place = evdevKeyCode(virtualKeyCode);
    if (!m_keymap || !place)
        return std::nullopt;
    return m_keymap->character(*place + displayKeyCodeOffset, m_latinLayout.value_or(m_layout));
}

X11KeyboardLayout::X11KeyboardLayout(const QString& display)
    : m_follower(std::make_unique<Follower>(display))
{
}

X11KeyboardLayout::~X11KeyboardLayout() = default;

std::optional<QString> X11KeyboardLayout::character(quint32 virtualKeyCode) const
{
    return m_follower->character(virtualKeyCode);
}

} // namespace Platform

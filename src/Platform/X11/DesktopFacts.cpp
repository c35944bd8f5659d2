#include "Platform/X11/DesktopFacts.h"

#include "Platform/X11/Properties.h"

#include <xcb/randr.h>
#include <xcb/xfixes.h>

#include <algorithm>

namespace Platform::X11 {

namespace {

std::optional<std::uint8_t> firstEventOf(const Connection& connection, xcb_extension_t* extension)
{
    const auto* const data = xcb_get_extension_data(connection.xcb(), extension);
    if (data == nullptr || data->present == 0)
        return std::nullopt;
    return data->first_event;
}

xcb_atom_t intern(Connection& connection, const QByteArray& name)
{
    const auto answer = connection.reply<xcb_intern_atom_reply_t>(xcb_intern_atom(
        connection.xcb(), 0, static_cast<std::uint16_t>(name.size()), name.constData()));
    return answer ? answer->atom : XCB_NONE;
}

} // namespace

QList<Monitor> readMonitors(Connection& connection)
{
    auto* const xcb = connection.xcb();
    if (!firstEventOf(connection, &xcb_randr_id))
        return {};
    const auto answer = connection.reply<xcb_randr_get_monitors_reply_t>(
        xcb_randr_get_monitors(xcb, connection.root(), 1));
    if (!answer) // Before RandR 1.5.
        return {};
    QList<Monitor> monitors;
    for (auto it = xcb_randr_get_monitors_monitors_iterator(answer.get()); it.rem > 0;
         xcb_randr_monitor_info_next(&it))
        monitors.append({.name = connection.atomName(it.data->name),
            .pixels = {it.data->x, it.data->y, it.data->width, it.data->height},
            .colorSpace = {}});
    return monitors;
}

DesktopWatch::DesktopWatch(Connection& connection)
    : m_connection(connection)
    , m_compositor(
          intern(connection, "_NET_WM_CM_S" + QByteArray::number(connection.screenNumber())))
    , m_randrEvents(firstEventOf(connection, &xcb_randr_id))
    , m_fixesEvents(firstEventOf(connection, &xcb_xfixes_id))
{
    auto* const xcb = connection.xcb();
    const auto root = connection.root();
    const std::uint32_t properties = XCB_EVENT_MASK_PROPERTY_CHANGE;
    xcb_change_window_attributes(xcb, root, XCB_CW_EVENT_MASK, &properties);
    if (m_fixesEvents)
        xcb_xfixes_select_selection_input(xcb, root, m_compositor,
            XCB_XFIXES_SELECTION_EVENT_MASK_SET_SELECTION_OWNER
                | XCB_XFIXES_SELECTION_EVENT_MASK_SELECTION_WINDOW_DESTROY
                | XCB_XFIXES_SELECTION_EVENT_MASK_SELECTION_CLIENT_CLOSE);
    if (m_randrEvents)
        xcb_randr_select_input(xcb, root,
            XCB_RANDR_NOTIFY_MASK_SCREEN_CHANGE | XCB_RANDR_NOTIFY_MASK_CRTC_CHANGE
                | XCB_RANDR_NOTIFY_MASK_OUTPUT_CHANGE);
}

DesktopFacts DesktopWatch::read()
{
    const auto owner = m_connection.reply<xcb_get_selection_owner_reply_t>(
        xcb_get_selection_owner(m_connection.xcb(), m_compositor));
    return {.hasCompositor = owner && owner->owner != XCB_NONE, .monitors = monitors()};
}

QList<Monitor> DesktopWatch::monitors()
{
    auto monitors = readMonitors(m_connection);
    for (qsizetype i = 0; i < monitors.size(); ++i)
        monitors[i].colorSpace = colorSpace(static_cast<int>(i));
    return monitors;
}

QColorSpace DesktopWatch::colorSpace(int monitorIndex)
{
    const auto index = static_cast<std::size_t>(monitorIndex);
    for (auto next = m_profiles.size(); next <= index; ++next)
        m_profiles.push_back(next == 0
                ? m_connection.atoms().iccProfile
                : intern(m_connection, "_ICC_PROFILE_" + QByteArray::number(qulonglong(next))));
    const PropertyRequest property(m_connection, m_connection.root(), m_profiles.at(index));
    const auto profile = bytes(property.answer(m_connection).get());
    return profile.isEmpty() ? QColorSpace() : QColorSpace::fromIccProfile(profile);
}

bool DesktopWatch::isChange(const xcb_generic_event_t& event) const
{
    constexpr int sentFlag = 0x80;
    const int type = event.response_type & ~sentFlag;
    if (type == XCB_PROPERTY_NOTIFY) {
        const auto& change = reinterpret_cast<const xcb_property_notify_event_t&>(event);
        return std::ranges::find(m_profiles, change.atom) != m_profiles.end();
    }
    return (m_fixesEvents && type == *m_fixesEvents + XCB_XFIXES_SELECTION_NOTIFY)
        || (m_randrEvents
            && (type == *m_randrEvents + XCB_RANDR_SCREEN_CHANGE_NOTIFY
                || type == *m_randrEvents + XCB_RANDR_NOTIFY));
}

} // namespace Platform::X11

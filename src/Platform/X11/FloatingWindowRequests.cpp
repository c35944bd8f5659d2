#include "Platform/X11/FloatingWindowRequests.h"

#include <QGuiApplication>
#include <QtGui/qguiapplication_platform.h>

#include <xcb/shape.h>

#include <array>
#include <string_view>

namespace Platform::X11 {

namespace {

xcb_window_t rootOf(xcb_connection_t* xcb)
{
    char* host = nullptr;
    int display = 0;
    int screen = 0;
    if (xcb_parse_display(nullptr, &host, &display, &screen) != 0)
        std::free(host);
    return screenOf(xcb, screen)->root;
}

bool hasShapes(xcb_connection_t* xcb)
{
    const auto* const shape = xcb_get_extension_data(xcb, &xcb_shape_id);
    return shape != nullptr && shape->present != 0;
}

/// Of whole rows or columns, so that what is drawn there has the same measure.
QMargins scaled(const QMargins& margins, double ratio)
{
    return (QMarginsF(margins) * ratio).toMargins();
}

QRect scaledOutward(const QRect& rect, double ratio)
{
    return QRectF(QPointF(rect.topLeft()) * ratio, QSizeF(rect.size()) * ratio).toAlignedRect();
}

/// Rectangles side by side stay so.
QRect scaledToEdges(const QRect& rect, double ratio)
{
    const auto edge = [ratio](int logical) { return qRound(logical * ratio); };
    return {QPoint(edge(rect.left()), edge(rect.top())),
        QPoint(edge(rect.left() + rect.width()) - 1, edge(rect.top() + rect.height()) - 1)};
}

} // namespace

std::unique_ptr<FloatingWindowRequests> FloatingWindowRequests::ofQt()
{
    auto* const x11 = qGuiApp->nativeInterface<QNativeInterface::QX11Application>();
    if (x11 == nullptr || x11->connection() == nullptr)
        return nullptr;
    return std::make_unique<FloatingWindowRequests>(x11->connection());
}

FloatingWindowRequests::FloatingWindowRequests(xcb_connection_t* xcb)
    : m_xcb(xcb)
    , m_atoms(internAtoms(xcb))
    , m_root(rootOf(xcb))
    , m_hasShapes(hasShapes(xcb))
{
}

FloatingWindowRequests::Atoms FloatingWindowRequests::internAtoms(xcb_connection_t* xcb)
{
    struct Name {
        std::string_view text;
        xcb_atom_t Atoms::*atom;
    };
    constexpr std::array names{
        Name{"_NET_WM_STATE", &Atoms::state},
        Name{"_NET_WM_STATE_SKIP_TASKBAR", &Atoms::skipTaskbar},
        Name{"_NET_WM_STATE_SKIP_PAGER", &Atoms::skipPager},
        Name{"_GTK_FRAME_EXTENTS", &Atoms::frameExtents},
        Name{"_KDE_NET_WM_BLUR_BEHIND_REGION", &Atoms::blurRegion},
    };
    std::array<xcb_intern_atom_cookie_t, names.size()> cookies{};
    for (std::size_t i = 0; i < names.size(); ++i) {
        const auto text = names.at(i).text;
        cookies.at(i) =
            xcb_intern_atom(xcb, 0, static_cast<std::uint16_t>(text.size()), text.data());
    }
    Atoms atoms;
    for (std::size_t i = 0; i < names.size(); ++i)
        if (const Owned<xcb_intern_atom_reply_t> answer{
                xcb_intern_atom_reply(xcb, cookies.at(i), nullptr)})
            atoms.*names.at(i).atom = answer->atom;
    return atoms;
}

void FloatingWindowRequests::writeSkipStates(xcb_window_t window) const
{
    const std::array states{m_atoms.skipTaskbar, m_atoms.skipPager};
    xcb_change_property(m_xcb, XCB_PROP_MODE_REPLACE, window, m_atoms.state, XCB_ATOM_ATOM, 32,
        states.size(), states.data());
}

void FloatingWindowRequests::requestSkipStates(xcb_window_t window) const
{
    constexpr std::uint32_t add = 1;
    constexpr std::uint32_t fromApplication = 1;
    xcb_client_message_event_t message{};
    message.response_type = XCB_CLIENT_MESSAGE;
    message.format = 32;
    message.window = window;
    message.type = m_atoms.state;
    message.data.data32[0] = add;
    message.data.data32[1] = m_atoms.skipTaskbar;
    message.data.data32[2] = m_atoms.skipPager;
    message.data.data32[3] = fromApplication;
    xcb_send_event(m_xcb, 0, m_root,
        XCB_EVENT_MASK_SUBSTRUCTURE_REDIRECT | XCB_EVENT_MASK_SUBSTRUCTURE_NOTIFY,
        reinterpret_cast<const char*>(&message));
}

void FloatingWindowRequests::writeFrameExtents(
    xcb_window_t window, const QMargins& shadow, double ratio) const
{
    std::vector<int> sides;
    if (const auto pixels = scaled(shadow, ratio); !pixels.isNull())
        sides = {pixels.left(), pixels.right(), pixels.top(), pixels.bottom()};
    writeCardinals(window, m_atoms.frameExtents, sides);
}

void FloatingWindowRequests::writeBlurRegion(
    xcb_window_t window, const QRegion& region, const QMargins& shadow, double ratio) const
{
    const auto margins = scaled(shadow, ratio);
    std::vector<int> numbers;
    for (const auto& rect : region) {
        const auto pixels = scaledToEdges(rect, ratio).translated(-margins.left(), -margins.top());
        numbers.insert(numbers.end(), {pixels.x(), pixels.y(), pixels.width(), pixels.height()});
    }
    writeCardinals(window, m_atoms.blurRegion, numbers);
}

void FloatingWindowRequests::writeCardinals(
    xcb_window_t window, xcb_atom_t property, const std::vector<int>& numbers) const
{
    if (numbers.empty())
        xcb_delete_property(m_xcb, window, property);
    else
        xcb_change_property(m_xcb, XCB_PROP_MODE_REPLACE, window, property, XCB_ATOM_CARDINAL, 32,
            static_cast<std::uint32_t>(numbers.size()), numbers.data());
}

void FloatingWindowRequests::setInputShape(
    xcb_window_t window, const QRegion& region, double ratio) const
{
    if (!m_hasShapes)
        return;
    std::vector<xcb_rectangle_t> rectangles;
    for (const auto& rect : region) {
        const auto pixels = scaledOutward(rect, ratio);
        rectangles.push_back({.x = static_cast<std::int16_t>(pixels.x()),
            .y = static_cast<std::int16_t>(pixels.y()),
            .width = static_cast<std::uint16_t>(pixels.width()),
            .height = static_cast<std::uint16_t>(pixels.height())});
    }
    xcb_shape_rectangles(m_xcb, XCB_SHAPE_SO_SET, XCB_SHAPE_SK_INPUT, XCB_CLIP_ORDERING_UNSORTED,
        window, 0, 0, static_cast<std::uint32_t>(rectangles.size()), rectangles.data());
}

bool FloatingWindowRequests::readsBlurBehind() const
{
    const Owned<xcb_get_property_reply_t> answer{xcb_get_property_reply(m_xcb,
        xcb_get_property(m_xcb, 0, m_root, m_atoms.blurRegion, XCB_ATOM_ANY, 0, 0), nullptr)};
    return answer && answer->type != XCB_NONE;
}

std::optional<bool> FloatingWindowRequests::toldBlurBehind(const xcb_generic_event_t& event) const
{
    constexpr int sentFlag = 0x80;
    const auto& change = reinterpret_cast<const xcb_property_notify_event_t&>(event);
    if ((event.response_type & ~sentFlag) != XCB_PROPERTY_NOTIFY || change.window != m_root
        || change.atom != m_atoms.blurRegion)
        return std::nullopt;
    return change.state == XCB_PROPERTY_NEW_VALUE;
}

} // namespace Platform::X11

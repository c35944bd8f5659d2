#include "Platform/X11/X11FloatingWindows.h"

#include "Platform/Tasks.h"
#include "Platform/X11/Errand.h"
#include "Platform/X11/Properties.h"
#include "Platform/X11/QtConnection.h"

#include <QEvent>
#include <QWindow>

#include <xcb/shape.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <vector>

namespace Platform {

namespace {

namespace QtConnection = X11::QtConnection;

constexpr const char* blurProperty = "_KDE_NET_WM_BLUR_BEHIND_REGION";

std::uint32_t pixels(int points, double ratio)
{
    return static_cast<std::uint32_t>(std::lround(points * ratio));
}

std::vector<QRect> pixelRects(const QRegion& region, double ratio)
{
    std::vector<QRect> rects;
    for (const auto& rect : region)
        rects.push_back(QtConnection::toPixels(rect, ratio));
    return rects;
}

} // namespace

X11FloatingWindows::X11FloatingWindows()
{
    askForBlur();
}

X11FloatingWindows::Wishes& X11FloatingWindows::wishesFor(QWindow& window)
{
    if (!m_wishes.contains(&window)) {
        window.installEventFilter(this);
        connect(
            &window, &QObject::destroyed, this, [this, gone = &window] { m_wishes.remove(gone); });
    }
    return m_wishes[&window];
}

void X11FloatingWindows::prepare(QWindow& window, const QMargins& shadow)
{
    auto& wishes = wishesFor(window);
    wishes.shadow = shadow;
    wishes.ratio = window.devicePixelRatio();
    // Qt adds its own states to these when it shows the window, and managers take all of them away
    // when it is hidden.
    const std::array states{QtConnection::atom("_NET_WM_STATE_SKIP_TASKBAR"),
        QtConnection::atom("_NET_WM_STATE_SKIP_PAGER")};
    QtConnection::setProperty(window, "_NET_WM_STATE", XCB_ATOM_ATOM, states);
    applyShadow(window, wishes);
    QtConnection::flush();
    askForBlur();
}

void X11FloatingWindows::setInputShape(QWindow& window, const QRegion& region)
{
    auto& wishes = wishesFor(window);
    if (wishes.inputShape == region)
        return;
    wishes.inputShape = region;
    applyInputShape(window, wishes);
    QtConnection::flush();
}

void X11FloatingWindows::setBlurRegion(QWindow& window, const QRegion& region)
{
    auto& wishes = wishesFor(window);
    if (wishes.blurRegion == region)
        return;
    wishes.blurRegion = region;
    applyBlurRegion(window, wishes);
    QtConnection::flush();
}

/// Some managers forget the shape with each mapping, and all of it is in pixels.
bool X11FloatingWindows::eventFilter(QObject* watched, QEvent* event)
{
    auto* const window = qobject_cast<QWindow*>(watched);
    if (event->type() != QEvent::Expose || window == nullptr || !window->isExposed())
        return QObject::eventFilter(watched, event);
    auto& wishes = wishesFor(*window);
    applyInputShape(*window, wishes);
    if (wishes.ratio != window->devicePixelRatio()) {
        wishes.ratio = window->devicePixelRatio();
        applyShadow(*window, wishes);
        applyBlurRegion(*window, wishes);
    }
    QtConnection::flush();
    return QObject::eventFilter(watched, event);
}

void X11FloatingWindows::applyShadow(const QWindow& window, const Wishes& wishes)
{
    const auto ratio = window.devicePixelRatio();
    const auto& shadow = wishes.shadow;
    const std::array extents{pixels(shadow.left(), ratio), pixels(shadow.right(), ratio),
        pixels(shadow.top(), ratio), pixels(shadow.bottom(), ratio)};
    QtConnection::setProperty(window, "_GTK_FRAME_EXTENTS", XCB_ATOM_CARDINAL, extents);
}

void X11FloatingWindows::applyInputShape(const QWindow& window, const Wishes& wishes)
{
    if (wishes.inputShape.isEmpty())
        return;
    std::vector<xcb_rectangle_t> rects;
    for (const auto& rect : pixelRects(wishes.inputShape, window.devicePixelRatio()))
        rects.push_back({.x = static_cast<std::int16_t>(rect.x()),
            .y = static_cast<std::int16_t>(rect.y()),
            .width = static_cast<std::uint16_t>(rect.width()),
            .height = static_cast<std::uint16_t>(rect.height())});
    xcb_shape_rectangles(QtConnection::get(), XCB_SHAPE_SO_SET, XCB_SHAPE_SK_INPUT,
        XCB_CLIP_ORDERING_UNSORTED, static_cast<xcb_window_t>(window.winId()), 0, 0,
        static_cast<std::uint32_t>(rects.size()), rects.data());
}

/// The origin of this one is the corner of the window without its shadow.
void X11FloatingWindows::applyBlurRegion(const QWindow& window, const Wishes& wishes)
{
    if (wishes.blurRegion.isEmpty())
        return;
    const auto ratio = window.devicePixelRatio();
    const auto left = static_cast<int>(pixels(wishes.shadow.left(), ratio));
    const auto top = static_cast<int>(pixels(wishes.shadow.top(), ratio));
    std::vector<std::uint32_t> numbers;
    for (const auto& rect : pixelRects(wishes.blurRegion, ratio))
        for (const auto number : {rect.x() - left, rect.y() - top, rect.width(), rect.height()})
            numbers.push_back(static_cast<std::uint32_t>(number));
    QtConnection::setProperty(window, blurProperty, XCB_ATOM_CARDINAL, numbers);
}

/// A compositor that blurs says so at the root.
void X11FloatingWindows::askForBlur()
{
    const auto property = QtConnection::atom(blurProperty);
    const auto answer = X11::errand<bool>([property](X11::Connection& connection) {
        const X11::PropertyRequest request(connection, connection.root(), property);
        const auto reply = request.answer(connection);
        return reply && reply->type != XCB_NONE;
    });
    whenFinished(answer, this, [this](const Result<bool>& isAnnounced) {
        const bool blurs = isAnnounced.value_or(false);
        if (blurs == m_blursBehind)
            return;
        m_blursBehind = blurs;
        emit blursBehindChanged();
    });
}

} // namespace Platform

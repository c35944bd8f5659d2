#include "Platform/X11/X11FloatingWindows.h"

#include "Platform/X11/FloatingWindowRequests.h"

#include <QEvent>
#include <QGuiApplication>
#include <QWindow>

#include <utility>

namespace Platform {

namespace {

xcb_window_t idOf(const QWindow& window)
{
    return static_cast<xcb_window_t>(window.winId());
}

bool isThere(const QWindow& window)
{
    return window.handle() != nullptr;
}

} // namespace

X11FloatingWindows::X11FloatingWindows()
    : m_requests(X11::FloatingWindowRequests::ofQt())
{
    if (!m_requests)
        return;
    qGuiApp->installNativeEventFilter(this);
    m_blursBehind = m_requests->readsBlurBehind();
}

X11FloatingWindows::~X11FloatingWindows() = default; // The application forgets the filter itself.

void X11FloatingWindows::prepare(QWindow& window, const QMargins& shadow)
{
    if (!m_requests)
        return;
    window.create();
    auto& wishes = wishesOf(window);
    if (!window.isVisible()) {
        m_requests->writeSkipStates(idOf(window));
        wishes.isSettled = false;
    } else if (wishes.shadow == shadow) {
        return;
    }
    wishes.shadow = shadow;
    wishes.ratio = window.devicePixelRatio();
    applyShadow(window, wishes);
    applyInputShape(window, wishes);
    applyBlurRegion(window, wishes);
}

void X11FloatingWindows::setInputShape(QWindow& window, const QRegion& region)
{
    if (!m_requests)
        return;
    auto& wishes = wishesOf(window);
    if (std::exchange(wishes.inputShape, region) != region)
        applyInputShape(window, wishes);
}

void X11FloatingWindows::setBlurRegion(QWindow& window, const QRegion& region)
{
    if (!m_requests)
        return;
    auto& wishes = wishesOf(window);
    if (std::exchange(wishes.blurRegion, region) != region)
        applyBlurRegion(window, wishes);
}

X11FloatingWindows::Wishes& X11FloatingWindows::wishesOf(QWindow& window)
{
    if (!m_wishes.contains(&window)) {
        window.installEventFilter(this);
        connect(&window, &QObject::destroyed, this,
            [this](const QObject* destroyed) { m_wishes.remove(destroyed); });
    }
    return m_wishes[&window];
}

void X11FloatingWindows::applyShadow(const QWindow& window, const Wishes& wishes) const
{
    m_requests->writeFrameExtents(idOf(window), wishes.shadow, window.devicePixelRatio());
    m_requests->flush();
}

void X11FloatingWindows::applyInputShape(const QWindow& window, const Wishes& wishes) const
{
    if (!isThere(window) || !wishes.inputShape)
        return;
    m_requests->setInputShape(idOf(window), *wishes.inputShape, window.devicePixelRatio());
    m_requests->flush();
}

void X11FloatingWindows::applyBlurRegion(const QWindow& window, const Wishes& wishes) const
{
    if (!isThere(window))
        return;
    m_requests->writeBlurRegion(
        idOf(window), wishes.blurRegion, wishes.shadow, window.devicePixelRatio());
    m_requests->flush();
}

void X11FloatingWindows::followRatio(const QWindow& window, Wishes& wishes) const
{
    const double ratio = window.devicePixelRatio();
    if (std::exchange(wishes.ratio, ratio) == ratio)
        return;
    applyShadow(window, wishes);
    applyInputShape(window, wishes);
    applyBlurRegion(window, wishes);
}

/// Some window managers look at an input shape only when it changes while they have the window. And
/// they take the states off a window that was hidden, which may come after it was prepared anew.
void X11FloatingWindows::settle(const QWindow& window, Wishes& wishes) const
{
    if (std::exchange(wishes.isSettled, true))
        return;
    m_requests->requestSkipStates(idOf(window));
    applyInputShape(window, wishes);
}

bool X11FloatingWindows::eventFilter(QObject* watched, QEvent* event)
{
    const auto wishes = m_wishes.find(watched);
    const auto* const window = qobject_cast<QWindow*>(watched);
    if (wishes == m_wishes.end() || window == nullptr)
        return FloatingWindows::eventFilter(watched, event);
    if (event->type() == QEvent::Hide) {
        wishes->isSettled = false;
    } else if (window->isExposed()
        && (event->type() == QEvent::Expose || event->type() == QEvent::Resize)) {
        followRatio(*window, *wishes);
        settle(*window, *wishes);
    }
    return FloatingWindows::eventFilter(watched, event);
}

bool X11FloatingWindows::nativeEventFilter(
    const QByteArray& type, void* message, qintptr* /*result*/)
{
    if (type != "xcb_generic_event_t")
        return false;
    const auto told = m_requests->toldBlurBehind(*static_cast<const xcb_generic_event_t*>(message));
    if (told && std::exchange(m_blursBehind, *told) != *told)
        emit blursBehindChanged();
    return false;
}

} // namespace Platform

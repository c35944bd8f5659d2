#include "UI/Shared/FocusRing.h"

#include "UI/Shared/Theme.h"

#include <QKeyEvent>
#include <QPainter>

namespace Lumenote::FocusRing {

namespace {

namespace Metrics {
constexpr double width = 2;
constexpr double contrastWidth = 1; ///< On an accent-coloured surface the ring alone is invisible.
} // namespace Metrics

void stroke(QPainter& painter, const QRectF& rect, double radius, double inset, const QPen& pen)
{
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setBrush(Qt::NoBrush);
    painter.setPen(pen);
    painter.drawRoundedRect(
        rect.adjusted(inset, inset, -inset, -inset), radius - inset, radius - inset);
    painter.restore();
}

} // namespace

void paint(QPainter& painter, const QRectF& rect, double radius)
{
    paintOnDark(painter, rect, radius);
    stroke(painter, rect, radius, Metrics::width + Metrics::contrastWidth / 2,
        QPen(Theme::white(0.9), Metrics::contrastWidth));
}

void paintOnDark(QPainter& painter, const QRectF& rect, double radius)
{
    stroke(painter, rect, radius, Metrics::width / 2, QPen(Theme::accent(), Metrics::width));
}

bool takesSpace(QEvent* event)
{
    if (event->type() != QEvent::ShortcutOverride)
        return false;
    const auto* const keyEvent = static_cast<QKeyEvent*>(event);
    const bool isSpace =
        keyEvent->key() == Qt::Key_Space && keyEvent->modifiers() == Qt::NoModifier;
    event->setAccepted(isSpace);
    return isSpace;
}

} // namespace Lumenote::FocusRing

#pragma once

#include <QColor>
#include <QMargins>
#include <QPointF>

class QPainter;
class QRectF;

namespace Lumenote {

/// The shadow of a rounded rectangle, in points.
struct Shadow {
    QColor color;
    double radius = 0; ///< Of the blur, twice the deviation of its Gaussian.
    QPointF offset;

    /// How far it reaches beyond the rectangle.
    QMargins margins() const;

    /// Below @p rect, whose corners have @p cornerRadius. Nine patches of a picture that is drawn
    /// once.
    void paint(QPainter& painter, const QRectF& rect, double cornerRadius) const;
};

} // namespace Lumenote

#pragma once

#include <QPointF>
#include <QRectF>
#include <QSizeF>

namespace Lumenote::CaptureGeometry {

/// Where an image goes that is shown whole in the middle of a container, at @p maxScale at most.
/// An empty rectangle where either has no size.
QRectF fittedRect(const QSizeF& image, const QSizeF& container, double maxScale);

/// How a capture lies in a view.
struct Fit {
    QRectF rect; ///< Of the whole image, in the view.
    double scale = 1; ///< Points of the view in a pixel of the image.

    QPointF toView(QPointF imagePoint) const;
    QRectF toView(const QRectF& imageRect) const;
    QPointF toImage(QPointF viewPoint) const;

    bool isEmpty() const { return rect.isEmpty(); }
    bool operator==(const Fit&) const = default;
};

/// The one rule for a capture of @p pixelSize: never larger than its @p pointSize. The image begins
/// on a whole pixel of a device with @p devicePixelRatio, lest one that isn't scaled be blurred.
Fit fit(const QSizeF& pixelSize, const QSizeF& pointSize, const QSizeF& container,
    double devicePixelRatio);

} // namespace Lumenote::CaptureGeometry

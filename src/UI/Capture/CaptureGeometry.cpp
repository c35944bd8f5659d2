#include "UI/Capture/CaptureGeometry.h"

#include <algorithm>
#include <cmath>

namespace Lumenote::CaptureGeometry {

QRectF fittedRect(const QSizeF& image, const QSizeF& container, double maxScale)
{
    if (image.isEmpty() || container.isEmpty())
        return {};
    const auto scale = std::min(
        {container.width() / image.width(), container.height() / image.height(), maxScale});
    const auto size = image * scale;
    return {QPointF((container.width() - size.width()) * 0.5,
                (container.height() - size.height()) * 0.5),
        size};
}

Fit fit(const QSizeF& pixelSize, const QSizeF& pointSize, const QSizeF& container,
    double devicePixelRatio)
{
    if (pixelSize.isEmpty())
        return {};
    auto rect = fittedRect(pixelSize, container, pointSize.width() / pixelSize.width());
    const auto onPixel = [devicePixelRatio](double value) {
        return std::floor(value * devicePixelRatio) / devicePixelRatio;
    };
    rect.moveTopLeft({onPixel(rect.x()), onPixel(rect.y())});
    return {.rect = rect, .scale = rect.width() / pixelSize.width()};
}

QPointF Fit::toView(QPointF imagePoint) const
{
    return rect.topLeft() + imagePoint * scale;
}

QRectF Fit::toView(const QRectF& imageRect) const
{
    return {toView(imageRect.topLeft()), imageRect.size() * scale};
}

QPointF Fit::toImage(QPointF viewPoint) const
{
    return (viewPoint - rect.topLeft()) / std::max(scale, 0.0001);
}

} // namespace Lumenote::CaptureGeometry

#include "Model/DisplayImage.h"

#include <QColorSpace>

#include <algorithm>
#include <cmath>

namespace Lumenote::DisplayImage {

namespace {

bool isSRgb(const QColorSpace& space)
{
    return !space.isValid() || space == QColorSpace(QColorSpace::SRgb);
}

bool isOpaque(const QImage& image)
{
    for (int y = 0; y < image.height(); ++y) {
        const auto* const line = reinterpret_cast<const QRgb*>(image.constScanLine(y));
        if (std::any_of(
                line, line + image.width(), [](QRgb pixel) { return qAlpha(pixel) != 255; }))
            return false;
    }
    return true;
}

} // namespace

bool isPaintable(const QImage& image)
{
    const auto format = image.format();
    return (format == QImage::Format_RGB32 || format == QImage::Format_ARGB32_Premultiplied)
        && isSRgb(image.colorSpace()) && image.devicePixelRatio() == 1;
}

QImage from(const QImage& image)
{
    if (image.isNull() || isPaintable(image))
        return image;
    auto result = image.convertToFormat(
        image.hasAlphaChannel() ? QImage::Format_ARGB32_Premultiplied : QImage::Format_RGB32);
    if (!isSRgb(result.colorSpace()))
        result.convertToColorSpace(QColorSpace::SRgb);
    if (result.hasAlphaChannel() && isOpaque(result))
        result.reinterpretAsFormat(QImage::Format_RGB32);
    result.setDevicePixelRatio(1);
    return result;
}

QSize reducedSize(const QSize& size, int longEdge)
{
    const auto scale =
        std::min(static_cast<double>(longEdge) / std::max(size.width(), size.height()), 1.0);
    const auto reduced = [scale](int side) {
        return std::max(static_cast<int>(std::lround(side * scale)), 1);
    };
    return {reduced(size.width()), reduced(size.height())};
}

} // namespace Lumenote::DisplayImage

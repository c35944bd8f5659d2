#include "Platform/TextLayout/Backdrop.h"

#include <QPainter>

namespace Platform {

namespace {

/// Whether the visible part of @p image is light in the mean. A sample of its pixels is enough.
bool isLight(const QImage& image)
{
    constexpr int samples = 512;
    const int stepX = std::max(1, image.width() / samples);
    const int stepY = std::max(1, image.height() / samples);
    double light = 0;
    double weight = 0;
    for (int y = 0; y < image.height(); y += stepY) {
        const auto* row = reinterpret_cast<const QRgb*>(image.constScanLine(y));
        for (int x = 0; x < image.width(); x += stepX) {
            light += qGray(row[x]);
            weight += qAlpha(row[x]);
        }
    }
    return light > 0.5 * weight;
}

} // namespace

QImage opaqueImageOf(const QImage& image)
{
    if (!image.hasAlphaChannel())
        return image.convertToFormat(QImage::Format_RGB32);
    const QImage source = image.convertToFormat(QImage::Format_ARGB32_Premultiplied);
    QImage opaque(source.size(), QImage::Format_RGB32);
    opaque.fill(isLight(source) ? Qt::black : Qt::white);
    QPainter painter(&opaque);
    painter.drawImage(0, 0, source);
    return opaque;
}

} // namespace Platform

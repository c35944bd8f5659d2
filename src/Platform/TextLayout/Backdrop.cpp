#include "Platform/TextLayout/Backdrop.h"

#include <QPainter>

#include <algorithm>
#include <map>

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

QImage framedImageOf(const QImage& image, int margin)
{
    std::map<QRgb, int> counts;
    const auto count = [&](int x, int y) { ++counts[image.pixel(x, y)]; };
    for (int x = 0; x < image.width(); ++x) {
        count(x, 0);
        count(x, image.height() - 1);
    }
    for (int y = 0; y < image.height(); ++y) {
        count(0, y);
        count(image.width() - 1, y);
    }
    const auto most = std::max_element(counts.begin(), counts.end(),
        [](const auto& a, const auto& b) { return a.second < b.second; });
    QImage framed(image.width() + 2 * margin, image.height() + 2 * margin, QImage::Format_RGB32);
    framed.fill(QColor::fromRgb(most->first));
    QPainter painter(&framed);
    painter.drawImage(margin, margin, image);
    return framed;
}

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

#include "Rendering/PixelReference.h"

#include <algorithm>
#include <cmath>
#include <numbers>

using namespace Lumenote;

namespace PixelReference {

namespace {

/// How much of a pixel is covered, and whether that is certain: near an edge it is not.
struct Share {
    double covered = 0;
    bool isExact = true;
};

void compose(Pixel& pixel, const QColor& color, Share share)
{
    if (share.covered <= 0 && share.isExact)
        return;
    const auto alpha = share.covered * color.alphaF();
    const std::array<double, 4> channels{
        double(color.red()), double(color.green()), double(color.blue()), 255};
    for (std::size_t i = 0; i < 4; ++i)
        pixel.channels[i] = alpha * channels[i] + (1 - alpha) * pixel.channels[i];
    const auto rounding = alpha < 1 ? 1.5 : 0.0;
    const auto edge = share.isExact ? 0.0 : 0.2 * 255;
    pixel.tolerance = (1 - alpha) * pixel.tolerance + rounding + edge;
}

/// By 10 by 10 points of the pixel; a ring of further ones just around it tells whether an edge is
/// near.
template <typename IsInside>
Share sampled(int x, int y, const IsInside& isInside)
{
    int inner = 0;
    int all = 0;
    for (int i = 0; i < 12; ++i)
        for (int j = 0; j < 12; ++j) {
            const int hit = isInside(QPointF(x + (i - 0.5) / 10, y + (j - 0.5) / 10)) ? 1 : 0;
            all += hit;
            inner += i % 11 != 0 && j % 11 != 0 ? hit : 0;
        }
    return {inner / 100.0, all == 0 || all == 144};
}

double overlap(double low, double high, int pixel)
{
    return std::clamp(std::min(high, pixel + 1.0) - std::max(low, double(pixel)), 0.0, 1.0);
}

/// Signed distance to the edge of a rounded rectangle, negative inside.
double distanceToRounded(QPointF point, const QRectF& rect)
{
    const auto radius = std::min({2.0, rect.width() / 2, rect.height() / 2});
    const auto fromCentre = point - rect.center();
    const auto dx = std::abs(fromCentre.x()) - rect.width() / 2 + radius;
    const auto dy = std::abs(fromCentre.y()) - rect.height() / 2 + radius;
    return std::hypot(std::max(dx, 0.0), std::max(dy, 0.0)) + std::min(std::max(dx, dy), 0.0)
        - radius;
}

void composeOutline(
    Pixel& pixel, const QRectF& rect, double lineWidth, const QColor& color, int x, int y)
{
    const auto isInside = [&](QPointF point) {
        return std::abs(distanceToRounded(point, rect)) <= lineWidth / 2;
    };
    if (std::abs(distanceToRounded(QPointF(x, y), rect)) < lineWidth / 2 + 2)
        compose(pixel, color, sampled(x, y, isInside));
}

/// In coordinates along the arrow from its tail, and across it.
void composeArrow(
    Pixel& pixel, const Annotation& arrow, double lineWidth, const QColor& color, int x, int y)
{
    const auto width = lineWidth * 1.75;
    const auto drag = arrow.end - arrow.start;
    const auto length = std::hypot(drag.x(), drag.y());
    if (length <= 0)
        return;
    const auto turned = [&](QPointF point) {
        const auto from = point - arrow.start;
        return QPointF((drag.x() * from.x() + drag.y() * from.y()) / length,
            (drag.x() * from.y() - drag.y() * from.x()) / length);
    };
    const auto [low, high] = std::minmax({0.0, length - width * 4 * 0.6});
    const auto isInShaft = [&, low = low, high = high](QPointF point) {
        const auto place = turned(point);
        return place.x() >= low && place.x() <= high && std::abs(place.y()) <= width / 2;
    };
    const auto isInHead = [&](QPointF point) {
        const auto place = turned(point);
        const auto beforeTip = length - place.x();
        return beforeTip >= 0 && beforeTip <= width * 4 * std::cos(std::numbers::pi / 7)
            && std::abs(place.y()) <= beforeTip * std::tan(std::numbers::pi / 7);
    };
    if (std::abs(turned(QPointF(x, y)).y()) > 4 * width)
        return; // Neither is as wide.
    compose(pixel, color, sampled(x, y, isInShaft));
    compose(pixel, color, sampled(x, y, isInHead));
}

} // namespace

QRgb bitsAt(const QImage& image, int x, int y)
{
    return reinterpret_cast<const QRgb*>(image.constScanLine(y))[x];
}

Pixel expected(const QImage& image, std::span<const Annotation> annotations, const Colors& colors,
    int x, int y)
{
    const auto lineWidth = std::max(image.width() / 350.0, 2.0);
    const auto base = bitsAt(image, x, y);
    Pixel pixel{.channels = {double(qRed(base)), double(qGreen(base)), double(qBlue(base)),
                    double(qAlpha(base))}};
    for (const auto& annotation : annotations) {
        const auto [left, right] = std::minmax({annotation.start.x(), annotation.end.x()});
        const auto [top, bottom] = std::minmax({annotation.start.y(), annotation.end.y()});
        switch (annotation.tool) {
        case AnnotationTool::blackout:
        case AnnotationTool::whiteout:
            if (x >= std::floor(left - 2) && x < std::ceil(right + 2) && y >= std::floor(top - 2)
                && y < std::ceil(bottom + 2))
                compose(pixel, annotation.tool == AnnotationTool::blackout ? Qt::black : Qt::white,
                    {1});
            break;
        case AnnotationTool::highlight:
            compose(pixel, colors.highlight, {overlap(left, right, x) * overlap(top, bottom, y)});
            break;
        case AnnotationTool::rectangle:
            composeOutline(pixel, QRectF(QPointF(left, top), QPointF(right, bottom)), lineWidth,
                colors.shape, x, y);
            break;
        case AnnotationTool::arrow:
            composeArrow(pixel, annotation, lineWidth, colors.shape, x, y);
            break;
        }
    }
    return pixel;
}

} // namespace PixelReference

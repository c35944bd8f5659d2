#include "Rendering/LumenoteRenderer.h"

#include "Platform/RgbColorSpace.h"

#include <QColorTransform>
#include <QPainter>
#include <QPainterPath>

#include <algorithm>
#include <cmath>
#include <numbers>
#include <optional>

namespace Lumenote::LumenoteRenderer {

namespace {

constexpr double cornerRadius = 2;
/// QPainter leaves out what lies further to the right or further down.
constexpr int longestSide = (1 << 23) - 1;

bool isDrawable(QSizeF size)
{
    const auto isWithin = [](double side) { return side >= 1 && side <= longestSide; };
    return isWithin(size.width()) && isWithin(size.height());
}

QColor toColorSpace(const QColorSpace& space, const QColor& color)
{
    return QColorSpace(QColorSpace::SRgb).transformationToColorSpace(space).map(color);
}

/// @p annotation with its points drawn in to at most @p margin outside of @p bounds. On edges that
/// lie between, nothing of that shows inside; and QPainter is spared numbers it can't hold.
Annotation drawnIn(Annotation annotation, const QRectF& bounds, double margin)
{
    const auto clamped = [&](QPointF point) {
        return QPointF(std::clamp(point.x(), bounds.left() - margin, bounds.right() + margin),
            std::clamp(point.y(), bounds.top() - margin, bounds.bottom() + margin));
    };
    annotation.start = clamped(annotation.start);
    annotation.end = clamped(annotation.end);
    return annotation;
}

/// The piece of @p line that can show in @p bounds when drawn @p lineWidth wide.
std::optional<QLineF> visiblePiece(const QLineF& line, double lineWidth, const QRectF& bounds)
{
    const auto length = std::hypot(line.dx(), line.dy());
    const QPointF direction(line.dx() / length, line.dy() / length);
    const auto reach = std::hypot(bounds.width(), bounds.height()) / 2 + lineWidth;
    const auto along = QPointF::dotProduct(bounds.center() - line.p1(), direction);
    const auto aside = bounds.center() - (line.p1() + along * direction);
    const auto from = std::max(along - reach, 0.0);
    const auto to = std::min(along + reach, length);
    if (!(from < to && std::hypot(aside.x(), aside.y()) < reach)) // Also where one is not a number.
        return std::nullopt;
    return QLineF(line.p1() + from * direction, line.p1() + to * direction);
}

/// The outline of a rounded rectangle as the area between two others. QPainter's own stroke has
/// holes where the line is wider than the curve.
QPainterPath roundedOutline(const QRectF& rect, double lineWidth)
{
    const auto half = lineWidth / 2;
    const auto radius = std::min({cornerRadius, rect.width() / 2, rect.height() / 2});
    QPainterPath path;
    path.addRoundedRect(rect.adjusted(-half, -half, half, half), radius + half, radius + half);
    const auto inside = rect.adjusted(half, half, -half, -half);
    const auto insideRadius = std::max(radius - half, 0.0);
    if (inside.isValid())
        path.addRoundedRect(inside, insideRadius, insideRadius);
    return path;
}

void drawCensor(QPainter& painter, const QRect& pixels, const QColor& color)
{
    // Antialiasing lets one part in 256 shine through at some edges, also at those of whole pixels.
    painter.setRenderHint(QPainter::Antialiasing, false);
    painter.fillRect(pixels, color);
    painter.setRenderHint(QPainter::Antialiasing, true);
}

void drawArrow(QPainter& painter, const Arrow& arrow, const QColor& color, const QRectF& bounds)
{
    if (const auto piece = visiblePiece(arrow.shaft, arrow.lineWidth, bounds)) {
        painter.setPen({color, arrow.lineWidth, Qt::SolidLine, Qt::FlatCap, Qt::MiterJoin});
        painter.drawLine(*piece);
    }
    if (!arrow.head.boundingRect().intersects(bounds))
        return;
    painter.setPen(Qt::NoPen);
    painter.setBrush(color);
    painter.drawPolygon(arrow.head);
}

/// A bitmap to draw on that shows @p image.
QImage makeContext(const QImage& image, QSize size, const QColorSpace& space)
{
    auto context = image.convertToFormat(
        image.hasAlphaChannel() ? QImage::Format_ARGB32_Premultiplied : QImage::Format_RGB32);
    if (context.size() != size)
        context = context.scaled(size, Qt::IgnoreAspectRatio, Qt::SmoothTransformation);
    if (context.colorSpace().isValid())
        context.convertToColorSpace(space);
    else
        context.setColorSpace(space);
    context.setDevicePixelRatio(1);
    return context;
}

bool hasRgbColorSpace(const QImage& image)
{
    const auto model = image.pixelFormat().colorModel();
    return (model == QPixelFormat::RGB || model == QPixelFormat::BGR)
        && Platform::isRgb(image.colorSpace());
}

} // namespace

QColor color(AnnotationTool tool)
{
    switch (tool) {
    case AnnotationTool::rectangle:
    case AnnotationTool::arrow:
        return QColor::fromRgbF(1.0F, 0.231F, 0.188F);
    case AnnotationTool::highlight:
        return QColor::fromRgbF(1.0F, 0.8F, 0.0F, 0.4F);
    case AnnotationTool::blackout:
        return Qt::black;
    case AnnotationTool::whiteout:
        return Qt::white;
    }
    return {};
}

double baseLineWidth(double imageWidth)
{
    return std::max(imageWidth / 350, 2.0);
}

Arrow arrow(QPointF tail, QPointF tip, double baseLineWidth)
{
    const auto lineWidth = baseLineWidth * 1.75;
    const auto headLength = lineWidth * 4;
    const auto angle = std::atan2(tip.y() - tail.y(), tip.x() - tail.x());
    const auto behindTip = [&](double distance, double turn) {
        return tip - QPointF(std::cos(angle + turn), std::sin(angle + turn)) * distance;
    };
    constexpr auto spread = std::numbers::pi / 7;
    return {.lineWidth = lineWidth,
        .shaft = {tail, behindTip(headLength * 0.6, 0)},
        .head = {{tip, behindTip(headLength, -spread), behindTip(headLength, spread)}}};
}

void draw(QPainter& painter, const Annotation& annotation, const QColor& color,
    double baseLineWidth, const QRectF& bounds)
{
    const auto near = drawnIn(annotation, bounds, baseLineWidth + 2 * cornerRadius);
    switch (annotation.tool) {
    case AnnotationTool::blackout:
    case AnnotationTool::whiteout:
        drawCensor(painter, near.hitRect().toRect(), color);
        break;
    case AnnotationTool::highlight:
        painter.fillRect(near.rect(), color);
        break;
    case AnnotationTool::rectangle:
        painter.fillPath(roundedOutline(near.rect(), baseLineWidth), color);
        break;
    case AnnotationTool::arrow:
        if (!(annotation.end - annotation.start).isNull())
            drawArrow(
                painter, arrow(annotation.start, annotation.end, baseLineWidth), color, bounds);
        break;
    }
}

QList<QColorSpace> exportColorSpaces(const QImage& image)
{
    QList<QColorSpace> spaces{QColorSpace::SRgb, QColorSpace()};
    if (hasRgbColorSpace(image))
        spaces = {image.colorSpace(), QColorSpace::DisplayP3, QColorSpace::SRgb, QColorSpace()};
    return spaces;
}

QImage render(const QImage& image, QSizeF pixelSize, std::span<const Annotation> annotations)
{
    if (image.isNull() || !isDrawable(pixelSize))
        return {};
    const QSize size(static_cast<int>(pixelSize.width()), static_cast<int>(pixelSize.height()));
    const auto space = exportColorSpaces(image).constFirst();
    auto result = makeContext(image, size, space);
    if (result.isNull() || annotations.empty())
        return result;
    QPainter painter(&result);
    painter.setRenderHint(QPainter::Antialiasing);
    for (const auto& annotation : annotations)
        draw(painter, annotation, toColorSpace(space, color(annotation.tool)),
            baseLineWidth(pixelSize.width()), QRectF({}, size));
    painter.end();
    return result;
}

} // namespace Lumenote::LumenoteRenderer

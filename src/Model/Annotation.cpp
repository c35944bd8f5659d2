#include "Model/Annotation.h"

#include "Platform/Geometry.h"

#include <algorithm>
#include <cmath>

namespace Lumenote {

namespace {

/// How far a censor fill reaches beyond what was dragged, so that no blurred edge shows.
constexpr double censorMargin = 2;
constexpr double minimumDrawingSize = 3;

double distance(QPointF a, QPointF b)
{
    return std::hypot(a.x() - b.x(), a.y() - b.y());
}

QPointF nearestOnSegment(QPointF point, QPointF start, QPointF end)
{
    const QPointF direction = end - start;
    const auto squaredLength = QPointF::dotProduct(direction, direction);
    if (squaredLength <= 0)
        return start;
    const auto along = QPointF::dotProduct(point - start, direction) / squaredLength;
    return start + std::clamp(along, 0.0, 1.0) * direction;
}

QRectF grown(const QRectF& rect, double margin)
{
    return Platform::inset(rect, -margin, -margin).value_or(rect);
}

bool areSame(QPointF a, QPointF b)
{
    return a.x() == b.x() && a.y() == b.y();
}

} // namespace

QRectF Annotation::rect() const
{
    return {std::min(start.x(), end.x()), std::min(start.y(), end.y()),
        std::abs(end.x() - start.x()), std::abs(end.y() - start.y())};
}

QRectF Annotation::hitRect() const
{
    if (!AnnotationTools::isCensor(tool))
        return rect();
    return Platform::integral(grown(rect(), censorMargin));
}

bool Annotation::exceedsMinimumSize() const
{
    const auto minimum = AnnotationTools::isCensor(tool) ? 0 : minimumDrawingSize;
    return rect().width() > minimum && rect().height() > minimum;
}

bool Annotation::isHit(QPointF point, double tolerance) const
{
    if (tool == AnnotationTool::arrow)
        return distance(point, nearestOnSegment(point, start, end)) <= tolerance;
    return Platform::contains(grown(hitRect(), tolerance), point);
}

std::span<const AnnotationHandle> Annotation::handles() const
{
    const std::span all(allAnnotationHandles);
    return tool == AnnotationTool::arrow ? all.first(2) : all;
}

QPointF Annotation::point(AnnotationHandle handle) const
{
    switch (handle) {
    case AnnotationHandle::start:
        return start;
    case AnnotationHandle::end:
        return end;
    case AnnotationHandle::startXEndY:
        return {start.x(), end.y()};
    case AnnotationHandle::endXStartY:
        return {end.x(), start.y()};
    }
    return {};
}

std::optional<AnnotationHandle> Annotation::handleAt(QPointF point, double tolerance) const
{
    for (const auto handle : handles())
        if (distance(this->point(handle), point) <= tolerance)
            return handle;
    return std::nullopt;
}

Annotation Annotation::reshaped(AnnotationHandle handle, QPointF point) const
{
    auto result = *this;
    switch (handle) {
    case AnnotationHandle::start:
        result.start = point;
        break;
    case AnnotationHandle::end:
        result.end = point;
        break;
    case AnnotationHandle::startXEndY:
        result.start.setX(point.x());
        result.end.setY(point.y());
        break;
    case AnnotationHandle::endXStartY:
        result.end.setX(point.x());
        result.start.setY(point.y());
        break;
    }
    return result;
}

Annotation Annotation::moved(QPointF offset) const
{
    auto result = *this;
    result.start += offset;
    result.end += offset;
    return result;
}

bool Annotation::operator==(const Annotation& other) const
{
    return id == other.id && tool == other.tool && areSame(start, other.start)
        && areSame(end, other.end);
}

std::optional<Annotation> topmostHit(
    std::span<const Annotation> annotations, QPointF point, double tolerance)
{
    const auto hit = std::find_if(annotations.rbegin(), annotations.rend(),
        [&](const Annotation& annotation) { return annotation.isHit(point, tolerance); });
    return hit == annotations.rend() ? std::nullopt : std::optional(*hit);
}

} // namespace Lumenote

#include "Platform/Geometry.h"

#include <algorithm>
#include <cmath>

namespace Platform {

namespace {

std::optional<QRectF> unlessNegative(const QRectF& rect)
{
    if (rect.width() < 0 || rect.height() < 0)
        return std::nullopt;
    return rect;
}

} // namespace

bool contains(const QRectF& rect, QPointF point)
{
    return point.x() >= rect.left() && point.x() < rect.right() && point.y() >= rect.top()
        && point.y() < rect.bottom();
}

bool isSame(const QRectF& a, const QRectF& b)
{
    return a.x() == b.x() && a.y() == b.y() && a.width() == b.width() && a.height() == b.height();
}

std::optional<QRectF> intersection(const QRectF& a, const QRectF& b)
{
    const QPointF minimum(std::max(a.left(), b.left()), std::max(a.top(), b.top()));
    const QPointF maximum(std::min(a.right(), b.right()), std::min(a.bottom(), b.bottom()));
    return unlessNegative({minimum, maximum});
}

std::optional<QRectF> inset(const QRectF& rect, double dx, double dy)
{
    return unlessNegative(
        {rect.x() + dx, rect.y() + dy, rect.width() - 2 * dx, rect.height() - 2 * dy});
}

QRectF integral(const QRectF& rect)
{
    const QPointF minimum(std::floor(rect.left()), std::floor(rect.top()));
    const QPointF maximum(std::ceil(rect.right()), std::ceil(rect.bottom()));
    return {minimum, maximum};
}

QPointF centre(const QRectF& rect)
{
    return rect.center();
}

} // namespace Platform

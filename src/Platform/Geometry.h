#pragma once

#include <QPointF>
#include <QRectF>

#include <optional>

/// Rectangles as areas with half-open edges. QRectF's own operations count both edges in, and can't
/// tell rectangles that merely touch from those that lie apart. Sizes are expected not to be
/// negative; the coordinate space is the caller's.
namespace Platform {

/// The minimum edges belong to the rectangle, the maximum edges don't; so an empty one holds
/// nothing.
bool contains(const QRectF& rect, QPointF point);

/// Whether all four numbers are equal, where QRectF's own operator takes near ones for equal.
bool isSame(const QRectF& a, const QRectF& b);

/// What two rectangles share: empty where they merely touch, nothing where they lie apart.
std::optional<QRectF> intersection(const QRectF& a, const QRectF& b);

/// @p rect with its sides moved inwards by @p dx and @p dy, outwards where these are negative;
/// nothing where that would leave a negative size.
std::optional<QRectF> inset(const QRectF& rect, double dx, double dy);

/// The smallest rectangle of whole numbers around @p rect.
QRectF integral(const QRectF& rect);

QPointF centre(const QRectF& rect);

} // namespace Platform

#include "Capture/OverlayPlacement.h"

#include <algorithm>

namespace Lumenote::OverlayPlacement {

namespace {

namespace Metrics {

constexpr double hintAboveLowerEdge = 40;
constexpr double gapToRectangle = 6; ///< Above its upper edge as well as inside.
constexpr double gapToSide = 4; ///< Between a pill and the left or right edge of the overlay.

} // namespace Metrics

QSizeF pillSize(QSizeF textSize, const QMarginsF& margins)
{
    return textSize.grownBy(margins);
}

/// The top of a pill that names @p rect.
double topBeside(const QRectF& bounds, const QRectF& rect, double height)
{
    const double above = rect.top() - Metrics::gapToRectangle - height;
    return above < bounds.top() ? rect.top() + Metrics::gapToRectangle : above;
}

double leftmost(const QRectF& bounds)
{
    return bounds.left() + Metrics::gapToSide;
}

double rightmost(const QRectF& bounds, double width)
{
    return bounds.right() - width - Metrics::gapToSide;
}

} // namespace

QRectF hintPill(const QRectF& bounds, QSizeF textSize)
{
    const auto size = pillSize(textSize, hintMargins);
    const double x = bounds.center().x() - size.width() / 2;
    const double y = bounds.bottom() - Metrics::hintAboveLowerEdge - size.height();
    return {{x, y}, size};
}

QRectF readoutPill(const QRectF& bounds, const QRectF& selection, QSizeF textSize)
{
    const auto size = pillSize(textSize, readoutMargins);
    const double x =
        std::min(std::max(selection.left(), leftmost(bounds)), rightmost(bounds, size.width()));
    return {{x, topBeside(bounds, selection, size.height())}, size};
}

QRectF labelPill(const QRectF& bounds, const QRectF& window, QSizeF textSize)
{
    const auto size = pillSize(textSize, labelMargins);
    const double minimum = leftmost(bounds);
    const double maximum = std::max(minimum, rightmost(bounds, size.width()));
    const double x = std::clamp(window.left(), minimum, maximum);
    return {{x, topBeside(bounds, window, size.height())}, size};
}

QPointF textOrigin(const QRectF& pill, const QMarginsF& margins)
{
    return pill.topLeft() + QPointF(margins.left(), margins.top());
}

} // namespace Lumenote::OverlayPlacement

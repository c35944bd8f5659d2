#pragma once

#include <QMarginsF>
#include <QPointF>
#include <QRectF>
#include <QSizeF>

/// Where the texts of an overlay stand: pure functions from rectangles to rectangles. Everything is
/// in points of one overlay, from its upper left corner, y down.
namespace Lumenote::OverlayPlacement {

/// How far a pill reaches beyond its text.
inline constexpr QMarginsF hintMargins{10, 6, 10, 6};
inline constexpr QMarginsF readoutMargins{6, 3, 6, 3};
inline constexpr QMarginsF labelMargins{8, 4, 8, 4};

/// The key hints: centred, near the lower edge of @p bounds.
QRectF hintPill(const QRectF& bounds, QSizeF textSize);

/// The size readout of @p selection: above its left corner, inside its upper edge where there is no
/// room above. A readout wider than the overlay ends at the right edge.
QRectF readoutPill(const QRectF& bounds, const QRectF& selection, QSizeF textSize);

/// The name of @p window, placed like the readout; but one wider than the overlay begins at the
/// left edge.
QRectF labelPill(const QRectF& bounds, const QRectF& window, QSizeF textSize);

/// Where the upper left corner of a pill's text stands.
QPointF textOrigin(const QRectF& pill, const QMarginsF& margins);

} // namespace Lumenote::OverlayPlacement

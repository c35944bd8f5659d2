#pragma once

#include <QRect>
#include <QSizeF>

#include <optional>

/// How large a workbench is and where it goes. All in points, y down; a visible frame is a display
/// without its panels. What floats is meant, without the margin for its shadow.
namespace Lumenote::WindowPlacement {

inline constexpr QSize leastSize(680, 472);

/// For a capture of the size @p capture: never enlarged, and at most a large part of the display.
QSize popupSize(const QSizeF& capture, const std::optional<QRectF>& visibleFrame);

/// In the middle, a little above.
QPoint position(const QSize& size, const QRectF& visibleFrame);

/// Whether enough of a window at @p frame can be seen to take hold of it.
bool isReachable(const QRect& frame, const QList<QRectF>& visibleFrames);

} // namespace Lumenote::WindowPlacement

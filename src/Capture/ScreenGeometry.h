#pragma once

#include "Platform/DisplayServer.h"

#include <optional>

/// The way between the two spaces in which points of the screen are told. Both have their x at the
/// left of the first display, and one unit: a point.
///
/// - The screen space: y up from the bottom of the first display. Screen::frame, the pointer.
/// - The global space: y down from the top of the first display. Targets, frames of windows.
namespace Lumenote::ScreenGeometry {

/// The height at which the two spaces meet: the top of the first screen, 0 without any. Read afresh
/// at each use, since displays come and go.
double flipReference(const QList<Platform::Screen>& screens);

/// Between the spaces, in either direction.
QPointF flipped(QPointF point, double reference);
QRectF flipped(const QRectF& rect, double reference);

/// The frames of @p screens in the global space.
QList<QRectF> globalFrames(const QList<Platform::Screen>& screens);

/// @p globalRect as seen from the upper left corner of the display with @p globalDisplayFrame.
QRectF displayLocal(const QRectF& globalRect, const QRectF& globalDisplayFrame);

/// Where the global space begins in Qt's coordinates.
QPointF globalOriginInQt();

/// @p rect of the screen space in Qt's global coordinates.
QRectF inQt(const QRectF& rect, const QList<Platform::Screen>& screens);

/// The first screen that holds @p pointer, a point of the screen space.
std::optional<Platform::Screen> screenUnderPointer(
    const QList<Platform::Screen>& screens, QPointF pointer);

} // namespace Lumenote::ScreenGeometry

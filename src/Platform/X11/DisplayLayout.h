#pragma once

#include "Platform/X11/DesktopFacts.h"

#include <QList>
#include <QRect>
#include <QRectF>
#include <QString>

namespace Platform::X11 {

/// Where a display is: in points, with the origin at the upper left corner of the first display and
/// y down, and in pixels of the root.
struct DisplayPlace {
    quint32 number = 0;
    QString name; ///< Of the monitor.
    QRectF points;
    QRect pixels;
    double scale = 1; ///< Pixels in a point.
};

/// Those of @p displays that are there according to @p monitors, with the pixels that these have
/// now. All of them where the server tells no monitors.
QList<DisplayPlace> presentDisplays(
    const QList<DisplayPlace>& displays, const QList<Monitor>& monitors);

/// The place whose scale holds for a rectangle in pixels: that under its centre, else the first
/// that meets it, else the first. There must be one.
const DisplayPlace& placeOf(const QRect& pixels, const QList<DisplayPlace>& displays);

/// In the space of DisplayPlace::points, extended beyond the display where @p pixels are.
QRectF toPoints(const QRect& pixels, const DisplayPlace& display);

/// The pixels of the root that begin at a point of the display: as many as @p size has, moved and,
/// if need be, cut to be within the display.
QRect toPixels(QPointF displayLocal, QSize size, const DisplayPlace& display);

} // namespace Platform::X11

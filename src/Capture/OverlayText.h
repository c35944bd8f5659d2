#pragma once

#include <QColor>
#include <QPointF>
#include <QSizeF>
#include <QString>

class QPainter;

/// The two hands in which overlays write, in the desktop's own font. Main thread; sizes in points.
namespace Lumenote::OverlayText {

enum class Style {
    plain, ///< Of size 12.
    readout, ///< Of size 11, all digits equally wide, so that a readout doesn't tremble in a drag.
};

/// What @p text covers: the advance of its letters and the height of its line.
QSizeF size(Style style, const QString& text);

/// Writes @p text into the rectangle of its size at @p topLeft.
void draw(QPainter& painter, Style style, const QString& text, QPointF topLeft, const QColor& ink);

} // namespace Lumenote::OverlayText

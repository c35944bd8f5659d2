#pragma once

#include <QStringList>

class QColor;
class QPainter;
class QRectF;

/// The workbench's own drawings, in one weight. Main thread.
namespace Lumenote::Glyphs {

QStringList names();

/// Draws the glyph @p name in @p color, its square box on @p rect, on whole pixels of the device.
/// Drawn once for each size and colour.
void paint(QPainter& painter, const QString& name, const QRectF& rect, const QColor& color);

} // namespace Lumenote::Glyphs

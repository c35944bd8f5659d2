#pragma once

#include "Model/Annotation.h"

#include <QColor>
#include <QColorSpace>
#include <QImage>
#include <QLineF>
#include <QList>
#include <QPolygonF>
#include <QSizeF>

#include <span>

class QPainter;

/// Burns annotations into a capture. Any thread.
namespace Lumenote::LumenoteRenderer {

/// What a tool draws with, in sRGB; the highlight is translucent.
QColor color(AnnotationTool tool);

/// The width of a rectangle's outline on an image this wide, both in pixels of the image.
double baseLineWidth(double imageWidth);

/// What an arrow is made of: a line with flat ends, and a filled triangle before it.
struct Arrow {
    double lineWidth;
    QLineF shaft;
    QPolygonF head;
};

/// The arrow from @p tail to @p tip beside outlines of @p baseLineWidth, in whatever space these
/// are. Where it is shorter than its head, the shaft ends behind the tail.
Arrow arrow(QPointF tail, QPointF tip, double baseLineWidth);

/// Draws @p annotation in @p color, in whatever space it, @p baseLineWidth and @p bounds, which is
/// all that can show, are; corners are round by two units there. What a censor fills are the whole
/// units of that space. The painter has antialiasing turned on.
void draw(QPainter& painter, const Annotation& annotation, const QColor& color,
    double baseLineWidth, const QRectF& bounds);

/// The colour spaces that a rendered @p image may be in, most wanted first: its own where that is
/// one of red, green and blue, so that wide gamuts are kept. The last one, which is not valid,
/// stands for the device's own.
QList<QColorSpace> exportColorSpaces(const QImage& image);

/// @p image at @p pixelSize with @p annotations on it, later ones on top: 8 bits a channel in the
/// first of its `exportColorSpaces`, RGB32 where the image has no alpha channel and premultiplied
/// where it has one. What a censor covers is replaced, whatever lay below.
///
/// Shares its pixels with @p image where nothing has to be changed. Null where there is no image,
/// no size of at least a pixel, or no memory.
QImage render(const QImage& image, QSizeF pixelSize, std::span<const Annotation> annotations);

} // namespace Lumenote::LumenoteRenderer

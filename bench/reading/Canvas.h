#pragma once

#include "Look.h"
#include "Picture.h"

#include <QImage>
#include <QPainter>

#include <memory>

namespace Lumenote::Bench {

/// A part of a line in a colour of its own.
struct Run {
    QString text;
    QColor colour;
};

/// A picture in the making: what is written on it is noted as a piece. Text that leaves the
/// picture, that overlaps other text, or that its font cannot show is a fault of the scene.
/// Coordinates are logical pixels, `scale` of them to one of the picture.
class Canvas {
public:
    Canvas(double scale, Rendering rendering);

    /// Makes the picture; nothing can be drawn before.
    void begin(QSizeF size, const QColor& background);

    QPainter& painter() { return *m_painter; }
    QRectF area() const { return {{}, m_size}; }

    /// Writes one piece from @p baseline on and answers its width.
    double write(QPointF baseline, const QString& text, const QFont& font, const QColor& colour);

    /// Writes one piece of several colours.
    double writeRuns(QPointF baseline, const QList<Run>& runs, const QFont& font);

    /// Writes one piece in the middle of @p box's height, aligned as told in its width.
    void writeIn(const QRectF& box, Qt::Alignment alignment, const QString& text, const QFont& font,
        const QColor& colour);

    /// Paints text that is no piece, such as the shadow of one.
    void shade(QPointF baseline, const QString& text, const QFont& font, const QColor& colour);

    /// Ends the drawing and hands over the picture.
    QImage takeImage();

    const QList<Piece>& pieces() const { return m_pieces; }

    /// What is wrong with the picture, in words for the developer.
    const QStringList& faults() const { return m_faults; }

    static double width(const QString& text, const QFont& font);

    /// The baseline at which text looks centred in @p box.
    static double centredBaseline(const QRectF& box, const QFont& font);

private:
    void note(QPointF baseline, const QString& text, const QFont& font);
    void paint(QPointF baseline, const QString& text, const QFont& font, const QColor& colour);
    void paintSubpixel(
        QPointF baseline, const QString& text, const QFont& font, const QColor& colour);

    double m_scale;
    Rendering m_rendering;
    QSizeF m_size;
    QImage m_image;
    std::unique_ptr<QPainter> m_painter;
    QList<Piece> m_pieces;
    QStringList m_faults;
};

/// The lines of @p text at most @p width wide.
QStringList wrapped(const QString& text, const QFont& font, double width);

} // namespace Lumenote::Bench

#pragma once

#include <QImage>
#include <QPainter>
#include <QString>

#include <vector>

namespace Drawing {

inline const QString mono = u"DejaVu Sans Mono"_qs;

struct Face {
    int size = 14; ///< Pixels.
    QColor colour = Qt::black;
    QString family = u"DejaVu Sans"_qs;
    bool isBold = false;
};

/// What was written, and the pixels that it covers.
struct Piece {
    QString text;
    QRect box;
};

/// A picture in the making that remembers what was written on it, and where.
class Canvas {
public:
    explicit Canvas(const QSize& size, const QColor& colour = Qt::white)
        : image(size, QImage::Format_RGB32)
    {
        image.fill(colour);
    }

    /// Writes @p text from @p start, a place on its baseline.
    Canvas& write(const QPoint& start, const QString& text, const Face& face = {})
    {
        QFont font(face.family);
        font.setPixelSize(face.size);
        font.setBold(face.isBold);
        QPainter painter(&image);
        painter.setFont(font);
        painter.setPen(face.colour);
        painter.drawText(start, text);
        pieces.push_back({text, QFontMetrics(font).tightBoundingRect(text).translated(start)});
        return *this;
    }

    Canvas& fill(const QRect& box, const QColor& colour, int radius = 0)
    {
        return shape(box, colour, radius, Qt::NoPen);
    }

    Canvas& frame(const QRect& box, const QColor& colour, int radius = 0)
    {
        return shape(box, Qt::NoBrush, radius, colour);
    }

    QImage image;
    std::vector<Piece> pieces;

private:
    Canvas& shape(const QRect& box, const QBrush& brush, int radius, const QPen& pen)
    {
        QPainter painter(&image);
        painter.setRenderHint(QPainter::Antialiasing, radius > 0);
        painter.setBrush(brush);
        painter.setPen(pen);
        const double edge = pen.style() == Qt::NoPen ? 0 : 0.5;
        if (radius > 0)
            painter.drawRoundedRect(QRectF(box).adjusted(edge, edge, -edge, -edge), radius, radius);
        else
            painter.drawRect(pen.style() == Qt::NoPen ? box : box.adjusted(0, 0, -1, -1));
        return *this;
    }
};

inline QImage inverted(QImage image)
{
    image.invertPixels();
    return image;
}

} // namespace Drawing

#pragma once

#include <QImage>

class QPainter;

namespace Lumenote {

/// What lies behind a capture that doesn't fill its card: the capture itself, blurred and darkened.
class Backdrop {
public:
    /// @p blurRadius in points, and @p darkness from 0 to 1, of the black over it.
    Backdrop(double blurRadius, double darkness);

    /// A small copy of the capture; all is black without one.
    void setImage(const QImage& image);

    /// Fills @p size from the painter's origin. Costs what its clip covers.
    void paint(QPainter& painter, const QSize& size);

private:
    void prepare(const QSize& size);

    double m_blurRadius;
    double m_darkness;
    QImage m_image;
    QImage m_blurred; ///< A few pixels of it, for m_size.
    QSize m_size;
};

} // namespace Lumenote

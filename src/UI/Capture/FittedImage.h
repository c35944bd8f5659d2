#pragma once

#include <QImage>
#include <QObject>
#include <QRectF>

class QPainter;

namespace Lumenote {

/// A picture at the size it is shown at. It is scaled off the main thread; meanwhile what there is
/// stands in for it. Main thread.
class FittedImage : public QObject {
    Q_OBJECT

public:
    explicit FittedImage(QObject* parent);

    void setImage(const QImage& image); ///< In a format that paints fast. Null for none.

    /// Begins to scale for @p size, in pixels of the device, where that is needed.
    void prepare(const QSize& size);

    /// Fills @p rect, in points, of which the painter's clip tells how much is needed.
    void paint(QPainter& painter, const QRectF& rect);

    /// The same for a painter that draws smaller, without scaling for it.
    void paintCoarsely(QPainter& painter, const QRectF& rect) const;

signals:
    void sharpened(); ///< What was prepared for is there.

private:
    const QImage& best() const { return m_scaled.isNull() ? m_image : m_scaled; }
    bool isReady(const QSize& size) const;
    void scale();
    void take(const QImage& source, const QImage& scaled);

    QImage m_image;
    QImage m_scaled; ///< Perhaps for an earlier size.
    QSize m_wanted;
    bool m_isScaling = false;
};

} // namespace Lumenote

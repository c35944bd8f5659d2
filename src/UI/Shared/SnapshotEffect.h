#pragma once

#include <QGraphicsEffect>
#include <QPixmap>

namespace Lumenote {

/// Paints a widget faded and scaled about its centre. Takes its picture once, which Qt's own
/// effects do for every frame.
class SnapshotEffect : public QGraphicsEffect {
    Q_OBJECT

public:
    void show(double opacity, double scale);
    void forget(); ///< Takes the picture anew for the next frame.

    static void paint(QPainter& painter, const QPixmap& picture, const QRectF& rect, double opacity,
        double scale);

protected:
    void draw(QPainter* painter) override;

private:
    QPixmap m_picture;
    double m_opacity = 1;
    double m_scale = 1;
};

} // namespace Lumenote

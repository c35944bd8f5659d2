#include "UI/Shared/SnapshotEffect.h"

#include <QPainter>

#include <algorithm>

namespace Lumenote {

void SnapshotEffect::show(double opacity, double scale)
{
    m_opacity = std::clamp(opacity, 0.0, 1.0);
    m_scale = scale;
    update();
}

void SnapshotEffect::forget()
{
    m_picture = {};
    update();
}

void SnapshotEffect::paint(
    QPainter& painter, const QPixmap& picture, const QRectF& rect, double opacity, double scale)
{
    painter.save();
    painter.setOpacity(painter.opacity() * opacity);
    painter.translate(rect.center());
    painter.scale(scale, scale);
    painter.translate(-rect.center());
    painter.setRenderHint(QPainter::SmoothPixmapTransform, scale != 1);
    painter.drawPixmap(rect.topLeft(), picture);
    painter.restore();
}

void SnapshotEffect::draw(QPainter* painter)
{
    if (m_picture.isNull())
        m_picture = sourcePixmap(Qt::LogicalCoordinates, nullptr, NoPad);
    paint(*painter, m_picture, sourceBoundingRect(), m_opacity, m_scale);
}

} // namespace Lumenote

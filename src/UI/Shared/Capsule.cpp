#include "UI/Shared/Capsule.h"

#include "UI/Shared/Glass.h"

#include <QPainter>

namespace Lumenote {

Capsule::Capsule(QWidget* parent)
    : QWidget(parent)
{
}

void Capsule::setTint(const std::optional<QColor>& tint)
{
    m_tint = tint;
    update();
}

void Capsule::setSurface(const QRect& rect)
{
    setGeometry(rect.marginsAdded(Glass::shadow().margins()));
}

QRect Capsule::surface() const
{
    return geometry().marginsRemoved(Glass::shadow().margins());
}

QRect Capsule::innerRect() const
{
    return rect().marginsRemoved(Glass::shadow().margins());
}

void Capsule::paintEvent(QPaintEvent* /*event*/)
{
    QPainter painter(this);
    const QRectF surface = innerRect();
    Glass::shadow().paint(painter, surface, surface.height() / 2);
    Glass::paintCapsule(painter, surface, m_tint);
}

void Capsule::resizeEvent(QResizeEvent* event)
{
    QWidget::resizeEvent(event);
    placeContents();
}

} // namespace Lumenote

#include "UI/Workbench/CornerCutter.h"

#include <QPainter>
#include <QPainterPath>

#include <cmath>

namespace Lumenote {

namespace {

/// The squares in the corners of @p rect.
QRegion corners(const QRect& rect, int side)
{
    QRegion region(rect);
    region -= rect.adjusted(side, 0, -side, 0);
    region -= rect.adjusted(0, side, 0, -side);
    return region;
}

} // namespace

CornerCutter::CornerCutter(double radius, const Shadow& shadow, QWidget* card)
    : QWidget(card)
    , m_radius(radius)
    , m_shadow(shadow)
{
    setAttribute(Qt::WA_TransparentForMouseEvents);
}

void CornerCutter::resizeEvent(QResizeEvent* event)
{
    QWidget::resizeEvent(event);
    setMask(corners(rect(), static_cast<int>(std::ceil(m_radius))));
}

void CornerCutter::paintEvent(QPaintEvent* /*event*/)
{
    QPainterPath outside;
    outside.setFillRule(Qt::OddEvenFill);
    outside.addRect(rect());
    outside.addRoundedRect(rect(), m_radius, m_radius);
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setCompositionMode(QPainter::CompositionMode_DestinationOut);
    painter.fillPath(outside, Qt::black);
    painter.setCompositionMode(QPainter::CompositionMode_DestinationOver);
    m_shadow.paint(painter, rect(), m_radius);
}

} // namespace Lumenote

#include "UI/Shared/Backdrop.h"

#include "UI/Shared/Blur.h"
#include "UI/Shared/Theme.h"

#include <QPainter>

namespace Lumenote {

namespace {

/// What is blurred by so many points has no details that an eighth of the pixels couldn't show.
constexpr int reduction = 8;

/// The middle of @p image, as much as has the proportions of @p size, in that size.
QImage filling(const QImage& image, const QSize& size)
{
    const auto scaled =
        image.scaled(size, Qt::KeepAspectRatioByExpanding, Qt::SmoothTransformation);
    const QPoint surplus(
        (scaled.width() - size.width()) / 2, (scaled.height() - size.height()) / 2);
    return scaled.copy(QRect(surplus, size));
}

} // namespace

Backdrop::Backdrop(double blurRadius, double darkness)
    : m_blurRadius(blurRadius)
    , m_darkness(darkness)
{
}

void Backdrop::setImage(const QImage& image)
{
    m_image = image;
    m_blurred = {};
}

void Backdrop::prepare(const QSize& size)
{
    if (!m_blurred.isNull() && m_size == size)
        return;
    m_size = size;
    const auto reduced = QSize(size / reduction).expandedTo({1, 1});
    m_blurred = blurred(filling(m_image, reduced), m_blurRadius / reduction);
    QPainter(&m_blurred).fillRect(m_blurred.rect(), Theme::black(m_darkness));
    m_blurred.convertTo(QImage::Format_RGB32);
}

void Backdrop::paint(QPainter& painter, const QSize& size)
{
    const QRect area(QPoint(), size);
    if (m_image.isNull() || area.isEmpty()) {
        painter.fillRect(area, Qt::black);
        return;
    }
    prepare(size);
    painter.save();
    painter.setRenderHint(QPainter::SmoothPixmapTransform);
    painter.drawImage(area, m_blurred);
    painter.restore();
}

} // namespace Lumenote

#include "UI/Capture/FittedImage.h"

#include "Platform/Tasks.h"

#include <QPainter>

namespace Lumenote {

FittedImage::FittedImage(QObject* parent)
    : QObject(parent)
{
}

void FittedImage::setImage(const QImage& image)
{
    m_image = image;
    m_scaled = {};
    if (!m_wanted.isEmpty())
        prepare(m_wanted);
}

void FittedImage::prepare(const QSize& size)
{
    m_wanted = size;
    if (!m_image.isNull() && !isReady(size) && !m_isScaling)
        scale();
}

bool FittedImage::isReady(const QSize& size) const
{
    return size.isEmpty() || size == m_image.size() || size == m_scaled.size();
}

void FittedImage::scale()
{
    m_isScaling = true;
    const auto scaled = Platform::startTask<QImage>([image = m_image, size = m_wanted] {
        return Platform::Result<QImage>(
            image.scaled(size, Qt::IgnoreAspectRatio, Qt::SmoothTransformation));
    });
    Platform::whenFinished(
        scaled, this, [this, source = m_image](const Platform::Result<QImage>& result) {
            m_isScaling = false;
            take(source, result.value_or(QImage()));
        });
}

/// The size, or the image, may be another one by now. What couldn't be made stays coarse.
void FittedImage::take(const QImage& source, const QImage& scaled)
{
    const bool isCurrent = source.cacheKey() == m_image.cacheKey();
    if (isCurrent && !scaled.isNull())
        m_scaled = scaled;
    if (isReady(m_wanted))
        emit sharpened();
    else if (!isCurrent || !scaled.isNull())
        prepare(m_wanted);
}

void FittedImage::paint(QPainter& painter, const QRectF& rect)
{
    if (m_image.isNull())
        return;
    const auto size = (rect.size() * painter.device()->devicePixelRatioF()).toSize();
    prepare(size);
    painter.drawImage(rect, size == m_image.size() ? m_image : best());
}

void FittedImage::paintCoarsely(QPainter& painter, const QRectF& rect) const
{
    if (!m_image.isNull())
        painter.drawImage(rect, best());
}

} // namespace Lumenote

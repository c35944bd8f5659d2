#include "UI/History/HistoryThumbnail.h"

#include "UI/Shared/Theme.h"

#include <QImage>
#include <QPainter>

namespace Lumenote {

namespace {

namespace Metrics {
constexpr double radius = 7;
constexpr double plateOpacity = 0.5;
} // namespace Metrics

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

QPixmap historyThumbnail(const QImage& picture, const QSize& size, double devicePixelRatio)
{
    const auto pixels = (QSizeF(size) * devicePixelRatio).toSize();
    QPixmap thumbnail(pixels);
    thumbnail.setDevicePixelRatio(devicePixelRatio);
    thumbnail.fill(Qt::transparent);
    QPainter painter(&thumbnail);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    const auto fill = [&](const QBrush& brush) {
        painter.setBrush(brush);
        painter.drawRoundedRect(QRectF(QRect({}, size)), Metrics::radius, Metrics::radius);
    };
    fill(Theme::black(Metrics::plateOpacity));
    if (!picture.isNull()) {
        auto filled = filling(picture, pixels);
        filled.setDevicePixelRatio(devicePixelRatio);
        fill(QBrush(filled));
    }
    return thumbnail;
}

} // namespace Lumenote

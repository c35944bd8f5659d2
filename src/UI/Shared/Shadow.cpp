#include "UI/Shared/Shadow.h"

#include "UI/Shared/Blur.h"

#include <QPainter>
#include <QPixmapCache>

#include <array>
#include <cmath>

namespace Lumenote {

namespace {

/// Three boxes end at about three deviations, with hardly anything beyond two.
constexpr double reachInDeviations = 2.5;

double deviation(const Shadow& shadow)
{
    return shadow.radius / 2;
}

int reach(const Shadow& shadow)
{
    return static_cast<int>(std::ceil(deviation(shadow) * reachInDeviations));
}

/// The shadow of the smallest rectangle that shows all of its four corners. @p side is what a
/// corner takes of it, @p margin what of that lies outside of the rectangle.
QPixmap drawPatch(const Shadow& shadow, int side, int margin, double cornerRadius, double ratio)
{
    const int length = 2 * side + 1;
    QImage image(QSize(length, length) * ratio, QImage::Format_ARGB32_Premultiplied);
    image.setDevicePixelRatio(ratio);
    image.fill(Qt::transparent);
    QPainter painter(&image);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    painter.setBrush(shadow.color);
    const double inner = length - 2 * margin;
    painter.drawRoundedRect(QRectF(margin, margin, inner, inner), cornerRadius, cornerRadius);
    painter.end();
    auto soft = blurred(image, deviation(shadow) * ratio);
    soft.setDevicePixelRatio(ratio);
    return QPixmap::fromImage(soft);
}

QPixmap patch(const Shadow& shadow, int side, int margin, double cornerRadius, double ratio)
{
    const auto key = QStringLiteral("lumenote-shadow-%1-%2-%3-%4-%5")
                         .arg(shadow.color.rgba())
                         .arg(shadow.radius)
                         .arg(side)
                         .arg(cornerRadius)
                         .arg(ratio);
    QPixmap pixmap;
    if (!QPixmapCache::find(key, &pixmap)) {
        pixmap = drawPatch(shadow, side, margin, cornerRadius, ratio);
        QPixmapCache::insert(key, pixmap);
    }
    return pixmap;
}

} // namespace

QMargins Shadow::margins() const
{
    const auto beyond = [this](double offset) {
        return std::max(static_cast<int>(std::ceil(reach(*this) + offset)), 0);
    };
    return {beyond(-offset.x()), beyond(-offset.y()), beyond(offset.x()), beyond(offset.y())};
}

void Shadow::paint(QPainter& painter, const QRectF& rect, double cornerRadius) const
{
    const int margin = reach(*this);
    const int side = 2 * margin + static_cast<int>(std::ceil(cornerRadius));
    const auto ratio = painter.device()->devicePixelRatio();
    const auto pixmap = patch(*this, side, margin, cornerRadius, ratio);

    const auto area = rect.translated(offset).adjusted(-margin, -margin, margin, margin);
    const auto across = std::min<double>(side, area.width() / 2);
    const auto down = std::min<double>(side, area.height() / 2);
    const std::array xs{area.left(), area.left() + across, area.right() - across, area.right()};
    const std::array ys{area.top(), area.top() + down, area.bottom() - down, area.bottom()};
    const auto length = 2.0 * side + 1;
    const std::array sourceXs{0.0, across, length - across, length};
    const std::array sourceYs{0.0, down, length - down, length};
    for (std::size_t row = 0; row < 3; ++row)
        for (std::size_t column = 0; column < 3; ++column) {
            const QRectF target(QPointF(xs[column], ys[row]), QPointF(xs[column + 1], ys[row + 1]));
            const QRectF source(QPointF(sourceXs[column], sourceYs[row]) * ratio,
                QPointF(sourceXs[column + 1], sourceYs[row + 1]) * ratio);
            if (!target.isEmpty())
                painter.drawPixmap(target, pixmap, source);
        }
}

} // namespace Lumenote

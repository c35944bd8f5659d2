#include "Platform/X11/DisplayLayout.h"

#include <algorithm>

namespace Platform::X11 {

namespace {

/// Where pixels @p from onwards fit into 0 to @p limit, preferring to keep the whole @p length.
int fitted(int from, int length, int limit)
{
    return std::clamp(from, 0, std::max(0, limit - length));
}

} // namespace

QList<DisplayPlace> presentDisplays(
    const QList<DisplayPlace>& displays, const QList<Monitor>& monitors)
{
    if (monitors.isEmpty())
        return displays;
    QList<DisplayPlace> present;
    for (auto display : displays) {
        const auto monitor = std::ranges::find(monitors, display.name, &Monitor::name);
        if (monitor == monitors.end())
            continue;
        display.pixels = monitor->pixels;
        present.append(display);
    }
    return present;
}

const DisplayPlace& placeOf(const QRect& pixels, const QList<DisplayPlace>& displays)
{
    const auto firstWhere = [&displays](auto condition) {
        const auto found = std::ranges::find_if(displays, condition);
        return found == displays.end() ? nullptr : &*found;
    };
    if (const auto* const owner = firstWhere([&pixels](const DisplayPlace& display) {
            return display.pixels.contains(pixels.center());
        }))
        return *owner;
    if (const auto* const met = firstWhere(
            [&pixels](const DisplayPlace& display) { return display.pixels.intersects(pixels); }))
        return *met;
    return displays.first();
}

QRectF toPoints(const QRect& pixels, const DisplayPlace& display)
{
    const QPointF local = QPointF(pixels.topLeft() - display.pixels.topLeft()) / display.scale;
    return {display.points.topLeft() + local, QSizeF(pixels.size()) / display.scale};
}

QRect toPixels(QPointF displayLocal, QSize size, const DisplayPlace& display)
{
    const QPoint from = (displayLocal * display.scale).toPoint();
    const QPoint within(fitted(from.x(), size.width(), display.pixels.width()),
        fitted(from.y(), size.height(), display.pixels.height()));
    return QRect(display.pixels.topLeft() + within, size) & display.pixels;
}

} // namespace Platform::X11

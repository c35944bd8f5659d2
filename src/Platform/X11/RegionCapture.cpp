#include "Platform/X11/RegionCapture.h"

#include "Platform/X11/WindowPainter.h"

#include <QRegion>

#include <algorithm>

namespace Platform::X11 {

namespace {

constexpr int shadowReach = 40; // Pixels.

/// Where windows of ours, or what a compositor makes of them, may be seen.
QRegion areaOf(
    const std::vector<TopLevel>& own, const QList<QRect>& recentlyHidden, bool hasCompositor)
{
    const int margin = hasCompositor ? shadowReach : 0;
    const auto withMargin = [margin](const QRect& rect) {
        return rect.adjusted(-margin, -margin, margin, margin);
    };
    QRegion area;
    for (const auto& window : own)
        if (window.hasPixels)
            area += withMargin(window.rect);
    for (const auto& rect : recentlyHidden)
        area += withMargin(rect);
    return area;
}

void removeOwnWindows(Server& server, const WindowPainter& painter, const QRect& source,
    const OwnWindows& ownWindows, bool hasCompositor)
{
    auto& connection = server.connection();
    const auto children = rootChildren(connection);
    auto& frames = *ownWindows.frames;
    frames.learn(connection, ownWindows.newlyShown);
    frames.keepOnly(children);
    const auto isOwn = [&](xcb_window_t child) {
        return ownWindows.ids.hasMade(child) || frames.holds(child);
    };
    if (std::ranges::none_of(children, isOwn) && ownWindows.recentlyHidden.isEmpty())
        return;
    const auto windows = topLevels(connection, children);
    std::vector<TopLevel> own;
    std::vector<TopLevel> others;
    for (const auto& window : windows)
        (isOwn(window.id) ? own : others).push_back(window);
    painter.paint(others, areaOf(own, ownWindows.recentlyHidden, hasCompositor) & source);
}

} // namespace

Result<QImage> captureRegion(Server& server, const QRect& source, QSize imageSize,
    const OwnWindows& ownWindows, bool hasCompositor)
{
    auto canvas = server.canvas();
    const bool isCovered = source.size() == imageSize;
    canvas.create(imageSize, isCovered ? Canvas::Filling::undefined : Canvas::Filling::black);
    const WindowPainter painter(server, canvas, source.topLeft(), hasCompositor);
    {
        const ServerGrab grab(server.connection());
        painter.paintScreen(source);
        removeOwnWindows(server, painter, source, ownWindows, hasCompositor);
    }
    canvas.requestImage();
    return canvas.image(QImage::Format_RGB32);
}

} // namespace Platform::X11

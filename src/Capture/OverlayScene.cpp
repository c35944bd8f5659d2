#include "Capture/OverlayScene.h"

#include "Capture/OverlayPlacement.h"
#include "Platform/DesktopWords.h"
#include "Platform/Geometry.h"

#include <QCoreApplication>

#include <utility>

namespace Lumenote {

namespace {

namespace Metrics {

constexpr double selectionFrameWidth = 1;
constexpr double selectionFrameAlpha = 0.9;
constexpr double windowFrameWidth = 2;
constexpr double accentAlpha = 0.95;

constexpr double hintRadius = 8;
constexpr double hintAlpha = 0.7;
constexpr double hintInkAlpha = 0.9;
constexpr double readoutRadius = 4;
constexpr double readoutAlpha = 0.75;
constexpr double labelRadius = 5;

} // namespace Metrics

QColor withAlpha(QColor color, double alpha)
{
    color.setAlphaF(static_cast<float>(alpha));
    return color;
}

QString hintText(SelectionMode mode)
{
    return mode == SelectionMode::region ? QCoreApplication::translate(
               "SelectionOverlay", "Drag a region · space: pick a window · esc: cancel")
                                         : QCoreApplication::translate("SelectionOverlay",
                                             "Click a window · space: drag a region · esc: cancel");
}

OverlayScene::Pill hint(const QRectF& bounds, SelectionMode mode)
{
    const auto text = Platform::inDesktopWords(hintText(mode));
    const auto rect =
        OverlayPlacement::hintPill(bounds, OverlayText::size(OverlayText::Style::plain, text));
    return {.rect = rect,
        .radius = Metrics::hintRadius,
        .fill = withAlpha(Qt::black, Metrics::hintAlpha),
        .text = text,
        .textOrigin = OverlayPlacement::textOrigin(rect, OverlayPlacement::hintMargins),
        .ink = withAlpha(Qt::white, Metrics::hintInkAlpha)};
}

/// Whole pixels. Points are pixels divided by the scale, and the product may miss by a rounding.
int pixels(double points, double scale)
{
    constexpr double tolerance = 1e-6;
    return static_cast<int>(points * scale + tolerance);
}

OverlayScene::Pill readout(
    const QRectF& bounds, const QRectF& rect, QSizeF selectionSize, double scale)
{
    const auto text = QStringLiteral("%1 × %2")
                          .arg(pixels(selectionSize.width(), scale))
                          .arg(pixels(selectionSize.height(), scale));
    const auto pill = OverlayPlacement::readoutPill(
        bounds, rect, OverlayText::size(OverlayText::Style::readout, text));
    return {.rect = pill,
        .radius = Metrics::readoutRadius,
        .fill = withAlpha(Qt::black, Metrics::readoutAlpha),
        .style = OverlayText::Style::readout,
        .text = text,
        .textOrigin = OverlayPlacement::textOrigin(pill, OverlayPlacement::readoutMargins),
        .ink = Qt::white};
}

OverlayScene::Pill label(
    const QRectF& bounds, const QRectF& rect, const QString& text, const QColor& accent)
{
    const auto pill = OverlayPlacement::labelPill(
        bounds, rect, OverlayText::size(OverlayText::Style::plain, text));
    return {.rect = pill,
        .radius = Metrics::labelRadius,
        .fill = withAlpha(accent, Metrics::accentAlpha),
        .text = text,
        .textOrigin = OverlayPlacement::textOrigin(pill, OverlayPlacement::labelMargins),
        .ink = Qt::white};
}

/// Where a rectangle of the global space stands in the overlay, if any of it does.
std::optional<QRectF> viewRect(const QRectF& globalRect, const QRectF& frame)
{
    if (!Platform::intersection(globalRect, frame))
        return std::nullopt;
    return globalRect.translated(-frame.topLeft());
}

QRegion area(const std::optional<OverlayScene::Hole>& hole)
{
    return hole ? QRegion(hole->outerRect().toAlignedRect()) : QRegion();
}

} // namespace

QRectF OverlayScene::Hole::outerRect() const
{
    return rect.adjusted(-frameWidth, -frameWidth, frameWidth, frameWidth);
}

OverlayScene overlayScene(
    const SelectionState& state, const QRectF& frame, double scale, const QColor& accent)
{
    const QRectF bounds({}, frame.size());
    OverlayScene scene;
    if (state.mode == SelectionMode::window) {
        const auto& window = state.hoveredWindow;
        if (const auto rect = window ? viewRect(window->frame, frame) : std::nullopt) {
            scene.hole = {
                *rect, Metrics::windowFrameWidth, withAlpha(accent, Metrics::accentAlpha)};
            scene.pills.append(label(bounds, *rect, window->label(), accent));
        }
        scene.pills.append(hint(bounds, state.mode));
        return scene;
    }
    if (const auto rect = state.selection ? viewRect(*state.selection, frame) : std::nullopt) {
        scene.hole = {*rect, Metrics::selectionFrameWidth,
            withAlpha(Qt::white, Metrics::selectionFrameAlpha)};
        scene.pills.append(readout(bounds, *rect, state.selection->size(), scale));
    } else {
        scene.pills.append(hint(bounds, state.mode));
    }
    return scene;
}

QRegion changedArea(const OverlayScene& before, const OverlayScene& after)
{
    QRegion changed;
    if (before.hole != after.hole) {
        changed = area(before.hole) + area(after.hole);
        if (before.hole && after.hole)
            if (const auto both = Platform::intersection(before.hole->rect, after.hole->rect))
                changed -= both->toAlignedRect().adjusted(1, 1, -1, -1);
    }
    if (before.pills != after.pills)
        for (const auto& pill : before.pills + after.pills)
            changed += pill.rect.toAlignedRect();
    return changed;
}

} // namespace Lumenote

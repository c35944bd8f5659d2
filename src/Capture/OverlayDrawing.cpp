#include "Capture/OverlayDrawing.h"

#include "Capture/OverlayScene.h"

#include <QImage>
#include <QPainter>
#include <QPainterPath>

namespace Lumenote {

namespace {

constexpr float dimmingAlpha = 0.35F;

/// Replaces what is in @p rect by the display with @p dimming over it.
void drawDisplay(
    QPainter& painter, const QRectF& rect, const QColor& dimming, const QImage& backdrop)
{
    painter.setCompositionMode(QPainter::CompositionMode_Source);
    if (backdrop.isNull()) {
        painter.fillRect(rect, dimming);
        return;
    }
    painter.save();
    painter.setClipRect(rect, Qt::IntersectClip);
    painter.drawImage(QPointF(), backdrop);
    painter.setCompositionMode(QPainter::CompositionMode_SourceOver);
    painter.fillRect(rect, dimming);
    painter.restore();
}

void drawFrame(QPainter& painter, const OverlayScene::Hole& hole)
{
    QPainterPath frame; // Its inside is cut out by the odd-even rule.
    frame.addRect(hole.outerRect());
    frame.addRect(hole.rect);
    painter.fillPath(frame, hole.frameColor);
}

void drawPill(QPainter& painter, const OverlayScene::Pill& pill)
{
    QPainterPath ground;
    ground.addRoundedRect(pill.rect, pill.radius, pill.radius);
    painter.fillPath(ground, pill.fill);
    OverlayText::draw(painter, pill.style, pill.text, pill.textOrigin, pill.ink);
}

} // namespace

void drawOverlay(
    QPainter& painter, const QRectF& bounds, const OverlayScene& scene, const QImage& backdrop)
{
    painter.setRenderHint(QPainter::Antialiasing, false);
    drawDisplay(painter, bounds, QColor::fromRgbF(0, 0, 0, dimmingAlpha), backdrop);
    if (scene.hole)
        drawDisplay(painter, scene.hole->rect, Qt::transparent, backdrop);

    painter.setRenderHint(QPainter::Antialiasing);
    painter.setCompositionMode(QPainter::CompositionMode_SourceOver);
    if (scene.hole)
        drawFrame(painter, *scene.hole);
    for (const auto& pill : scene.pills)
        drawPill(painter, pill);
}

} // namespace Lumenote

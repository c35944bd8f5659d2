#pragma once

class QImage;
class QPainter;
class QRectF;

namespace Lumenote {

struct OverlayScene;

/// Draws @p scene into @p bounds, whatever was there before. The display shows through the hole and
/// the dimming where @p backdrop is null; else that picture of it, with the display's device pixel
/// ratio, stands in for it.
void drawOverlay(
    QPainter& painter, const QRectF& bounds, const OverlayScene& scene, const QImage& backdrop);

} // namespace Lumenote

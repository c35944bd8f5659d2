#include "Capture/ScreenGeometry.h"

#include "Platform/Geometry.h"

#include <QGuiApplication>
#include <QScreen>

namespace Lumenote::ScreenGeometry {

double flipReference(const QList<Platform::Screen>& screens)
{
    // The greatest y of a rectangle, which is its top where y goes up, is what Qt calls its bottom.
    return screens.isEmpty() ? 0 : screens.first().frame.bottom();
}

QPointF flipped(QPointF point, double reference)
{
    return {point.x(), reference - point.y()};
}

QRectF flipped(const QRectF& rect, double reference)
{
    return {rect.left(), reference - rect.bottom(), rect.width(), rect.height()};
}

QList<QRectF> globalFrames(const QList<Platform::Screen>& screens)
{
    const auto reference = flipReference(screens);
    QList<QRectF> frames;
    for (const auto& screen : screens)
        frames.append(flipped(screen.frame, reference));
    return frames;
}

QRectF displayLocal(const QRectF& globalRect, const QRectF& globalDisplayFrame)
{
    return globalRect.translated(-globalDisplayFrame.topLeft());
}

QPointF globalOriginInQt()
{
    const auto* const first = QGuiApplication::primaryScreen();
    return first != nullptr ? first->geometry().topLeft() : QPointF();
}

QRectF inQt(const QRectF& rect, const QList<Platform::Screen>& screens)
{
    return flipped(rect, flipReference(screens)).translated(globalOriginInQt());
}

std::optional<Platform::Screen> screenUnderPointer(
    const QList<Platform::Screen>& screens, QPointF pointer)
{
    for (const auto& screen : screens)
        if (Platform::contains(screen.frame, pointer))
            return screen;
    return std::nullopt;
}

} // namespace Lumenote::ScreenGeometry

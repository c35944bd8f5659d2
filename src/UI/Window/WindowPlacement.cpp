#include "UI/Window/WindowPlacement.h"

#include "UI/Shared/Theme.h"

#include <algorithm>

namespace Lumenote::WindowPlacement {

namespace {

constexpr double largestWidth = 0.72; ///< Of the display's.
constexpr double largestHeight = 0.76;
constexpr double spaceAbove = 0.45; ///< Of what the window leaves free.
constexpr QRectF assumedFrame(0, 0, 1440, 900); ///< Of a display that isn't known.
constexpr QSizeF leastCard(680, 380);
constexpr int leastShown = 80; ///< Points of a window by which it can be taken hold of.

double scaleFor(const QSizeF& capture, const QSizeF& most)
{
    const auto widthRatio = most.width() / capture.width();
    const auto heightRatio = most.height() / capture.height();
    if (widthRatio < 1)
        return std::min(widthRatio, heightRatio);
    return std::min(heightRatio, 1.0);
}

} // namespace

QSize popupSize(const QSizeF& capture, const std::optional<QRectF>& visibleFrame)
{
    if (capture.isEmpty())
        return leastSize;
    const auto frame = visibleFrame.value_or(assumedFrame);
    const QSizeF most(
        largestWidth * frame.width(), largestHeight * frame.height() - Theme::bottomBand);
    const auto card = (capture * scaleFor(capture, most)).expandedTo(leastCard);
    return (card + QSizeF(0, Theme::bottomBand)).toSize();
}

QPoint position(const QSize& size, const QRectF& visibleFrame)
{
    return QPointF(visibleFrame.center().x() - size.width() / 2.0,
        visibleFrame.top() + spaceAbove * (visibleFrame.height() - size.height()))
        .toPoint();
}

bool isReachable(const QRect& frame, const QList<QRectF>& visibleFrames)
{
    return std::any_of(visibleFrames.cbegin(), visibleFrames.cend(), [&](const QRectF& visible) {
        const auto shown = visible.intersected(frame);
        return shown.width() >= leastShown && shown.height() >= leastShown;
    });
}

} // namespace Lumenote::WindowPlacement

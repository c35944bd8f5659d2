#include "Capture/OverlayPlacement.h"

#include <gtest/gtest.h>

using namespace Lumenote;

namespace {

constexpr QRectF bounds(0, 0, 1000, 600);
constexpr QSizeF text(50, 14);

TEST(OverlayPlacementTest, pillsStandBesideTheRectangleAndWithinTheOverlay)
{
    const auto check = [](const char* name, const QRectF& rect, const QRectF& readout,
                           const QRectF& label, const QSizeF& textSize = text) {
        EXPECT_EQ(OverlayPlacement::readoutPill(bounds, rect, textSize), readout) << name;
        EXPECT_EQ(OverlayPlacement::labelPill(bounds, rect, textSize), label) << name;
    };
    check("aboveTheCorner", {100, 200, 300, 100}, {100, 174, 62, 20}, {100, 172, 66, 22});
    check("readoutTouchesTheTop", {100, 26, 300, 100}, {100, 0, 62, 20}, {100, 32, 66, 22});
    check("labelTouchesTheTop", {100, 28, 300, 100}, {100, 2, 62, 20}, {100, 0, 66, 22});
    check("insideForLackOfRoom", {100, 25, 300, 100}, {100, 31, 62, 20}, {100, 31, 66, 22});
    check("aboveTheOverlay", {100, -80, 300, 100}, {100, -74, 62, 20}, {100, -74, 66, 22});
    check("beyondTheLeftEdge", {-90, 200, 300, 100}, {4, 174, 62, 20}, {4, 172, 66, 22});
    check("atTheRightEdge", {990, 200, 10, 100}, {934, 174, 62, 20}, {930, 172, 66, 22});
    check("widerThanTheOverlay", {100, 200, 300, 100}, {-216, 174, 1212, 20}, {4, 172, 1216, 22},
        {1200, 14});
}

TEST(OverlayPlacementTest, theHintIsCentredAboveTheLowerEdge)
{
    const auto pill = OverlayPlacement::hintPill(bounds, text);
    EXPECT_EQ(pill, QRectF(465, 534, 70, 26));
    EXPECT_EQ(OverlayPlacement::textOrigin(pill, OverlayPlacement::hintMargins), QPointF(475, 540));
}

} // namespace

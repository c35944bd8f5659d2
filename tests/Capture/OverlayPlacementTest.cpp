#include "Capture/OverlayPlacement.h"

#include <gtest/gtest.h>

using namespace Lumenote;

namespace {

constexpr QRectF bounds(0, 0, 1000, 600);
constexpr QSizeF text(50, 14);

struct Placement {
    const char* name;
    QRectF rect; ///< Of the selection or the window.
    QSizeF textSize;
    QRectF readout;
    QRectF label;
};

class OverlayPlacementBeside : public testing::TestWithParam<Placement> { };

TEST_P(OverlayPlacementBeside, standsAsMeasured)
{
    const auto& row = GetParam();
    EXPECT_EQ(OverlayPlacement::readoutPill(bounds, row.rect, row.textSize), row.readout);
    EXPECT_EQ(OverlayPlacement::labelPill(bounds, row.rect, row.textSize), row.label);
}

// clang-format off
INSTANTIATE_TEST_SUITE_P(, OverlayPlacementBeside, testing::Values(
    Placement{"aboveTheLeftCorner", {100, 200, 300, 100}, text, {100, 174, 62, 20}, {100, 172, 66, 22}},
    Placement{"readoutTouchesTheTop", {100, 26, 300, 100}, text, {100, 0, 62, 20}, {100, 32, 66, 22}},
    Placement{"labelTouchesTheTop", {100, 28, 300, 100}, text, {100, 2, 62, 20}, {100, 0, 66, 22}},
    Placement{"insideForLackOfRoom", {100, 25, 300, 100}, text, {100, 31, 62, 20}, {100, 31, 66, 22}},
    Placement{"insideAboveTheOverlay", {100, -80, 300, 100}, text, {100, -74, 62, 20}, {100, -74, 66, 22}},
    Placement{"atTheLeftEdge", {0, 200, 300, 100}, text, {4, 174, 62, 20}, {4, 172, 66, 22}},
    Placement{"beyondTheLeftEdge", {-90, 200, 300, 100}, text, {4, 174, 62, 20}, {4, 172, 66, 22}},
    Placement{"atTheRightEdge", {990, 200, 10, 100}, text, {934, 174, 62, 20}, {930, 172, 66, 22}},
    Placement{"widerThanTheOverlay", {100, 200, 300, 100}, {1200, 14}, {-216, 174, 1212, 20}, {4, 172, 1216, 22}}),
    [](const auto& row) { return std::string(row.param.name); });
// clang-format on

TEST(OverlayPlacementTest, theHintIsCentredAboveTheLowerEdge)
{
    const auto pill = OverlayPlacement::hintPill(bounds, text);
    EXPECT_EQ(pill, QRectF(465, 534, 70, 26));
    EXPECT_EQ(OverlayPlacement::textOrigin(pill, OverlayPlacement::hintMargins), QPointF(475, 540));
}

} // namespace

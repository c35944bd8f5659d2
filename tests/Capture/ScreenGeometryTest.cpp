#include "Capture/ScreenGeometry.h"

#include <gtest/gtest.h>

using namespace Lumenote;

namespace {

Platform::Screen screen(quint32 number, const QRectF& frame)
{
    return {.displayNumber = number,
        .frame = frame,
        .visibleFrame = frame,
        .backingScaleFactor = 1,
        .colorSpace = {}};
}

/// The first display, one to its right that is lower and one on top, further left.
const QList<Platform::Screen> screens{screen(1, {0, 0, 1920, 1080}),
    screen(2, {1920, 56, 640, 512}), screen(3, {-300, 1080, 800, 600})};

TEST(ScreenGeometryTest, theFirstScreenIsTheReferenceOfAllFlips)
{
    EXPECT_EQ(ScreenGeometry::flipReference({}), 0);
    EXPECT_EQ(ScreenGeometry::globalFrames(screens),
        (QList<QRectF>{{0, 0, 1920, 1080}, {1920, 512, 640, 512}, {-300, -600, 800, 600}}));
    EXPECT_EQ(ScreenGeometry::flipped(QPointF(5, 1100), 1080), QPointF(5, -20));
}

TEST(ScreenGeometryTest, thePointerIsOnTheScreenWhoseMinimumEdgesItTouches)
{
    const auto check = [&](const char* name, QPointF pointer, quint32 number) {
        const auto found = ScreenGeometry::screenUnderPointer(screens, pointer);
        EXPECT_EQ(found ? found->displayNumber : 0, number) << name;
    };
    check("lowerLeftCorner", {0, 0}, 1);
    check("topEdgeBelongsToTheScreenAbove", {10, 1080}, 3);
    check("topEdgeWithNothingAbove", {1000, 1080}, 0);
    check("rightEdgeBelongsToTheNeighbour", {1920, 100}, 2);
    check("rightEdgeWithoutNeighbour", {1920, 20}, 0);
    check("outside", {-1, 500}, 0);
}

} // namespace

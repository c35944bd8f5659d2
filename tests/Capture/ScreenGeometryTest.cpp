#include "Capture/ScreenGeometry.h"

#include <array>
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
    EXPECT_EQ(ScreenGeometry::flipReference(screens), 1080);
    EXPECT_EQ(ScreenGeometry::flipReference({}), 0);
    EXPECT_EQ(ScreenGeometry::globalFrames(screens),
        (QList<QRectF>{{0, 0, 1920, 1080}, {1920, 512, 640, 512}, {-300, -600, 800, 600}}));
}

TEST(ScreenGeometryTest, aFlipUndoesItself)
{
    const QRectF rect(12.5, -30, 100.25, 40);
    EXPECT_EQ(ScreenGeometry::flipped(rect, 1080), QRectF(12.5, 1070, 100.25, 40));
    EXPECT_EQ(ScreenGeometry::flipped(ScreenGeometry::flipped(rect, 1080), 1080), rect);
    EXPECT_EQ(ScreenGeometry::flipped(QPointF(5, 1100), 1080), QPointF(5, -20));
    EXPECT_EQ(ScreenGeometry::flipped(QPointF(5, 1100), 0), QPointF(5, -1100));
}

TEST(ScreenGeometryTest, displayLocalRectanglesStartAtTheDisplaysCorner)
{
    EXPECT_EQ(ScreenGeometry::displayLocal({2000, 600, 10, 20}, {1920, 512, 640, 512}),
        QRectF(80, 88, 10, 20));
}

TEST(ScreenGeometryTest, thePointerIsOnTheScreenWhoseMinimumEdgesItTouches)
{
    struct Row {
        const char* name;
        QPointF pointer;
        quint32 number; ///< Zero for none.
    };
    const std::array rows{
        Row{"lowerLeftCorner", {0, 0}, 1},
        Row{"topEdgeBelongsToTheScreenAbove", {10, 1080}, 3},
        Row{"topEdgeWithNothingAbove", {1000, 1080}, 0},
        Row{"rightEdgeBelongsToTheNeighbour", {1920, 100}, 2},
        Row{"rightEdgeWithoutNeighbour", {1920, 20}, 0},
        Row{"outside", {-1, 500}, 0},
    };
    for (const auto& row : rows) {
        const auto found = ScreenGeometry::screenUnderPointer(screens, row.pointer);
        EXPECT_EQ(found ? found->displayNumber : 0, row.number) << row.name;
    }
}

} // namespace

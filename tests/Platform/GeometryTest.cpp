#include "Platform/Geometry.h"

#include <gtest/gtest.h>

using namespace Platform;

namespace {

constexpr QRectF unit{0, 0, 1, 1};

TEST(GeometryTest, theMinimumEdgesAreInAndTheMaximumEdgesAreOut)
{
    constexpr QRectF rect{10, 20, 30, 40};
    const auto check = [&](const char* name, const QRectF& rect, QPointF point, bool isInside) {
        EXPECT_EQ(contains(rect, point), isInside) << name;
    };
    check("upper left corner", rect, {10, 20}, true);
    check("just inside lower right", rect, {39.999, 59.999}, true);
    check("right edge", rect, {40, 30}, false);
    check("bottom edge", rect, {20, 60}, false);
    check("no width", {10, 20, 0, 40}, {10, 30}, false);
    check("no height", {10, 20, 30, 0}, {20, 20}, false);
}

TEST(GeometryTest, rectanglesThatTouchShareAnEmptyOne)
{
    const auto check = [&](const char* name, const QRectF& other,
                           const std::optional<QRectF>& shared) {
        SCOPED_TRACE(name);
        EXPECT_EQ(intersection(unit, other), shared);
        EXPECT_EQ(intersection(other, unit), shared);
    };
    check("overlapping", {0.5, 0.25, 5, 5}, QRectF{0.5, 0.25, 0.5, 0.75});
    check("corner to corner", {1, 1, 2, 2}, QRectF{1, 1, 0, 0});
    check("apart in x", {1.001, 0, 2, 1}, std::nullopt);
    check("apart in y", {0, -3, 1, 2}, std::nullopt);
}

TEST(GeometryTest, anInsetBeyondTheCentreLeavesNothing)
{
    EXPECT_EQ(inset(unit, 0.25, -1), QRectF(0.25, -1, 0.5, 3));
    EXPECT_EQ(inset(unit, 0.5, 0.5), QRectF(0.5, 0.5, 0, 0));
    EXPECT_EQ(inset(unit, 0, 0.501), std::nullopt);
    EXPECT_EQ(inset(unit, 0.501, -5), std::nullopt);
}

TEST(GeometryTest, integralGoesOutwardsToWholePixels)
{
    const auto check = [&](const char* name, const QRectF& rect, const QRectF& whole) {
        EXPECT_EQ(integral(rect), whole) << name;
    };
    check("whole already", {-3, 4, 5, 6}, {-3, 4, 5, 6});
    check("fractions", {1.5, 2.25, 1, 1}, {1, 2, 2, 2});
    check("negative", {-1.5, -0.25, 1, 0.5}, {-2, -1, 2, 2});
    check("a point", {0.5, 7, 0, 0}, {0, 7, 1, 0});
}

} // namespace

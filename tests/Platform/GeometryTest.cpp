#include "Platform/Geometry.h"

#include <array>
#include <gtest/gtest.h>

using namespace Platform;

namespace {

constexpr QRectF unit{0, 0, 1, 1};

TEST(GeometryTest, theMinimumEdgesAreInAndTheMaximumEdgesAreOut)
{
    struct Row {
        const char* name;
        QRectF rect;
        QPointF point;
        bool isInside;
    };
    constexpr QRectF rect{10, 20, 30, 40};
    constexpr std::array rows{
        Row{"upper left corner", rect, {10, 20}, true},
        Row{"just inside lower right", rect, {39.999, 59.999}, true},
        Row{"right edge", rect, {40, 30}, false},
        Row{"bottom edge", rect, {20, 60}, false},
        Row{"left of it", rect, {9.999, 30}, false},
        Row{"no width", {10, 20, 0, 40}, {10, 30}, false},
        Row{"no height", {10, 20, 30, 0}, {20, 20}, false},
    };
    for (const auto& row : rows)
        EXPECT_EQ(contains(row.rect, row.point), row.isInside) << row.name;
}

TEST(GeometryTest, rectanglesThatTouchShareAnEmptyOne)
{
    struct Row {
        const char* name;
        QRectF other;
        std::optional<QRectF> shared;
    };
    constexpr std::array rows{
        Row{"overlapping", {0.5, 0.25, 5, 5}, QRectF{0.5, 0.25, 0.5, 0.75}},
        Row{"inside", {0.25, 0.25, 0.5, 0.5}, QRectF{0.25, 0.25, 0.5, 0.5}},
        Row{"side by side", {1, 0, 2, 1}, QRectF{1, 0, 0, 1}},
        Row{"corner to corner", {1, 1, 2, 2}, QRectF{1, 1, 0, 0}},
        Row{"apart in x", {1.001, 0, 2, 1}, std::nullopt},
        Row{"apart in y", {0, -3, 1, 2}, std::nullopt},
    };
    for (const auto& row : rows) {
        EXPECT_EQ(intersection(unit, row.other), row.shared) << row.name;
        EXPECT_EQ(intersection(row.other, unit), row.shared) << row.name;
    }
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
    struct Row {
        const char* name;
        QRectF rect;
        QRectF whole;
    };
    constexpr std::array rows{
        Row{"whole already", {-3, 4, 5, 6}, {-3, 4, 5, 6}},
        Row{"fractions", {1.5, 2.25, 1, 1}, {1, 2, 2, 2}},
        Row{"negative", {-1.5, -0.25, 1, 0.5}, {-2, -1, 2, 2}},
        Row{"a point", {0.5, 7, 0, 0}, {0, 7, 1, 0}},
    };
    for (const auto& row : rows)
        EXPECT_EQ(integral(row.rect), row.whole) << row.name;
}

} // namespace

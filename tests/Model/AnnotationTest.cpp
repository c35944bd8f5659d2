#include "Model/Annotation.h"

#include <array>
#include <cmath>
#include <gtest/gtest.h>

using namespace Lumenote;

namespace {

using Tool = AnnotationTool;
using Handle = AnnotationHandle;

Annotation annotation(Tool tool, QPointF start, QPointF end)
{
    return {.tool = tool, .start = start, .end = end};
}

TEST(AnnotationToolTest, rawValuesLeadBackToTheirTool)
{
    for (const auto tool : AnnotationTools::allCases)
        EXPECT_EQ(AnnotationTools::fromRawValue(AnnotationTools::rawValue(tool)), tool);
    EXPECT_EQ(AnnotationTools::fromRawValue(u"whiteout"), Tool::whiteout);
    for (const auto* text : {u"", u"Arrow", u"arrow ", u"ellipse"})
        EXPECT_EQ(AnnotationTools::fromRawValue(text), std::nullopt);
}

TEST(AnnotationTest, equalityIsExact)
{
    const auto original = annotation(Tool::arrow, {1, 2}, {3, 4});
    EXPECT_EQ(original, Annotation(original));
    auto nudged = original;
    nudged.end.setX(std::nextafter(3.0, 4.0));
    EXPECT_NE(original, nudged);
    auto twin = original;
    twin.id = Annotation().id;
    EXPECT_NE(original, twin);
}

TEST(AnnotationTest, bodiesAreHitWhereTheyAre)
{
    const auto blackout = annotation(Tool::blackout, {10.5, 10.5}, {20.5, 20.5});
    const auto rectangle = annotation(Tool::rectangle, {20, 20}, {10, 10});
    const auto arrow = annotation(Tool::arrow, {10, 10}, {40, 50});
    const auto dot = annotation(Tool::arrow, {10, 10}, {10, 10});
    const auto speck = annotation(Tool::arrow, {0, 0}, {1e-200, 1e-200});
    const auto check = [&](const char* name, const Annotation& annotation, QPointF point,
                           double tolerance, bool isHit) {
        EXPECT_EQ(annotation.isHit(point, tolerance), isHit) << name;
    };
    check("1.5 outside a censor", blackout, {22, 15}, 0, true);
    check("the filled edge of a censor", blackout, {23, 15}, 0, false);
    check("tolerance around the filled edge", blackout, {23.9, 15}, 1, true);
    check("inside an outline", rectangle, {15, 15}, 0, true);
    check("1.5 outside an outline", rectangle, {21.5, 15}, 0, false);
    check("minimum edge with tolerance", rectangle, {8, 15}, 2, true);
    check("maximum edge with tolerance", rectangle, {22, 15}, 2, false);
    check("beside an arrow, at the limit", arrow, {25 + 4, 30 - 3}, 5, true);
    check("beside an arrow, too far", arrow, {25 + 4, 30 - 3}, 4.999, false);
    check("beyond the tip, at the limit", arrow, {43, 54}, 5, true);
    check("beyond the tip, on the endless line", arrow, {46, 58}, 9.999, false);
    check("an arrow without length", dot, {13, 14}, 5, true);
    check("an arrow whose length underflows", speck, {3, 4}, 5, true);
}

TEST(AnnotationTest, theUppermostIsHit)
{
    const std::array stack{
        annotation(Tool::blackout, {0, 0}, {50, 50}),
        annotation(Tool::highlight, {40, 40}, {90, 90}),
        annotation(Tool::arrow, {80, 80}, {200, 80}),
    };
    EXPECT_EQ(topmostHit(stack, {45, 45}, 1), stack[1]);
    EXPECT_EQ(topmostHit(stack, {10, 10}, 1), stack[0]);
    EXPECT_EQ(topmostHit(stack, {85, 82}, 2), stack[2]);
    EXPECT_EQ(topmostHit(stack, {10, 90}, 9), std::nullopt);
    EXPECT_EQ(topmostHit({}, {10, 10}, 9), std::nullopt);
}

TEST(AnnotationTest, handlesAreReshapedFromTheGrab)
{
    const auto original = annotation(Tool::highlight, {10, 20}, {30, 60});
    const auto check = [&](Handle handle, QPointF position, QPointF start, QPointF end) {
        EXPECT_EQ(original.point(handle), position);
        auto expected = original;
        expected.start = start;
        expected.end = end;
        const auto turned = original.reshaped(handle, {99, 5});
        EXPECT_EQ(turned, expected);
        EXPECT_TRUE(turned.rect().isValid()) << "dragged over the opposite side";
    };
    ASSERT_EQ(original.handles().size(), 4);
    check(Handle::start, {10, 20}, {99, 5}, {30, 60});
    check(Handle::end, {30, 60}, {10, 20}, {99, 5});
    check(Handle::startXEndY, {10, 60}, {99, 20}, {30, 5});
    check(Handle::endXStartY, {30, 20}, {10, 5}, {99, 60});
}

TEST(AnnotationTest, theFirstHandleInReachIsGrabbed)
{
    const auto small = annotation(Tool::rectangle, {10, 10}, {14, 13});
    EXPECT_EQ(small.handleAt({14, 13}, 5), Handle::start);
    EXPECT_EQ(small.handleAt({14, 13}, 4.999), Handle::end);
    EXPECT_EQ(small.handleAt({10, 14}, 2), Handle::startXEndY);
    EXPECT_EQ(small.handleAt({30, 30}, 9), std::nullopt);

    const auto arrow = annotation(Tool::arrow, {10, 10}, {14, 13});
    EXPECT_EQ(arrow.handleAt({14, 13}, 1), Handle::end);
    EXPECT_EQ(arrow.handleAt({10, 13}, 1), std::nullopt) << "an arrow has no other corners";
}

TEST(AnnotationTest, movingKeepsShapeAndIdentityAlsoOffTheImage)
{
    const auto original = annotation(Tool::arrow, {10, 20}, {5, 7});
    const auto moved = original.moved({-100, 0.5});
    EXPECT_EQ(moved.start, QPointF(-90, 20.5));
    EXPECT_EQ(moved.end, QPointF(-95, 7.5));
    EXPECT_EQ(moved.moved({100, -0.5}), original);
}

TEST(AnnotationTest, smallDragsAreClicks)
{
    const auto check = [&](Tool tool, QPointF end, bool isKept) {
        EXPECT_EQ(annotation(tool, {}, end).exceedsMinimumSize(), isKept)
            << AnnotationTools::rawValue(tool).toStdString() << end.x();
    };
    check(Tool::rectangle, {10, 2}, false);
    check(Tool::arrow, {10, 2}, false);
    check(Tool::highlight, {3, 10}, false);
    check(Tool::highlight, {-3.01, -10}, true);
    check(Tool::blackout, {10, 2}, true);
    check(Tool::blackout, {10, 0}, false);
    check(Tool::whiteout, {0, -2}, false);
    check(Tool::whiteout, {-0.1, -0.1}, true);
}

} // namespace

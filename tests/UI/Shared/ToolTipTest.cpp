#include "Harness/Waiting.h"
#include "UI/Shared/ToolTipController.h"
#include "UI/Shared/ToolTipLayer.h"

#include <gtest/gtest.h>

using namespace Lumenote;
using namespace std::chrono_literals;

namespace {

const QString first = QStringLiteral("first");
const QString second = QStringLiteral("second");
const QRectF frame(10, 20, 30, 30);

TEST(ToolTipTest, theFirstWaitsAndTheNextComesAtOnce)
{
    ToolTipController tips(nullptr, {.first = 20ms, .recent = 1h});
    tips.enter(first, frame);
    EXPECT_FALSE(tips.tip());
    EXPECT_TRUE(Harness::waitFor([&] { return tips.tip().has_value(); }));
    tips.enter(second, frame);
    EXPECT_EQ(tips.tip()->text, second);
    tips.exit(first); // Comes late, and is about the control before.
    EXPECT_TRUE(tips.tip());
    tips.exit(second);
    EXPECT_FALSE(tips.tip());
    tips.enter(first, frame);
    EXPECT_TRUE(tips.tip()) << "the last one has just gone";
}

TEST(ToolTipTest, aControlThatWasLeftShowsNothingAndAChangedLayoutForgetsAll)
{
    ToolTipController tips(nullptr, {.first = 20ms, .recent = 1h});
    tips.enter(first, frame);
    tips.exit(first);
    tips.enter(second, frame);
    tips.exit(second);
    QTest::qWait(60);
    EXPECT_FALSE(tips.tip());
    tips.enter(first, frame);
    ASSERT_TRUE(Harness::waitFor([&] { return tips.tip().has_value(); }));
    tips.clear();
    EXPECT_FALSE(tips.tip());
    tips.enter(first, frame);
    EXPECT_FALSE(tips.tip()) << "it waits again";
}

TEST(ToolTipTest, theBubbleStaysInsideTheContent)
{
    struct Row {
        const char* name;
        QRectF frame;
        double width;
        QPointF place;
    };
    const std::initializer_list<Row> rows{
        {"below, in the middle", {100, 50, 30, 30}, 40, {95, 90}},
        {"at the left edge", {0, 50, 30, 30}, 80, {8, 90}},
        {"at the right edge", {270, 50, 30, 30}, 80, {212, 90}},
        {"too wide for the content", {100, 50, 30, 30}, 400, {8, 90}},
        {"just room below", {100, 128, 30, 30}, 40, {95, 168}},
        {"no room below", {100, 129, 30, 30}, 40, {95, 95}},
        {"no room at all", {100, 10, 30, 180}, 40, {95, 8}},
    };
    for (const auto& row : rows)
        EXPECT_EQ(ToolTipLayer::bubblePosition(row.frame, row.width, {300, 200}), row.place)
            << row.name;
}

} // namespace

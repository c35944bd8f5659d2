#include "UI/Window/WindowPlacement.h"

#include "UI/Window/WindowDrag.h"

#include <QList>

#include <gtest/gtest.h>

using namespace Lumenote;

namespace {

TEST(WindowPlacementTest, theSizeComesFromTheCaptureAndTheDisplay)
{
    const QRectF visible(0, 25, 1440, 875);
    struct Row {
        const char* name;
        QSizeF capture;
        QSize window;
    };
    const std::initializer_list<Row> rows{
        {"larger than the display", {4000, 3000}, {764, 665}},
        {"small", {300, 200}, {680, 472}},
        {"fits", {900, 300}, {900, 472}},
        {"tall and narrow", {200, 3000}, {680, 665}},
        {"wide and low", {10000, 3}, {1037, 472}},
        {"a pixel", {1, 1}, {680, 472}},
        {"nothing", {0, 0}, {680, 472}},
    };
    for (const auto& row : rows)
        EXPECT_EQ(WindowPlacement::popupSize(row.capture, visible), row.window) << row.name;
    EXPECT_EQ(WindowPlacement::popupSize({4000, 3000}, {}), QSize(789, 684));
    EXPECT_EQ(WindowPlacement::position({680, 472}, visible), QPoint(380, 206));
}

TEST(WindowPlacementTest, aWindowIsReachableWhereItCanBeTakenHoldOf)
{
    const QList<QRectF> displays{{0, 0, 1000, 800}, {1000, 0, 500, 800}};
    EXPECT_TRUE(WindowPlacement::isReachable({900, 100, 700, 500}, displays));
    EXPECT_FALSE(WindowPlacement::isReachable({1450, 100, 700, 500}, displays));
    EXPECT_FALSE(WindowPlacement::isReachable({900, -450, 700, 500}, displays));
}

TEST(WindowPlacementTest, edgesAreTakenHoldOfInAFrameAndAreNeverCrossed)
{
    const QRect card(100, 100, 700, 500);
    EXPECT_EQ(WindowDrag::edgesAt(card, {103, 300}), Qt::Edges(Qt::LeftEdge));
    EXPECT_EQ(WindowDrag::edgesAt(card, {112, 103}), Qt::LeftEdge | Qt::TopEdge);
    EXPECT_EQ(WindowDrag::edgesAt(card, {797, 596}), Qt::RightEdge | Qt::BottomEdge);
    EXPECT_EQ(WindowDrag::edgesAt(card, {300, 300}), Qt::Edges());
    EXPECT_EQ(WindowDrag::edgesAt(card, {90, 300}), Qt::Edges());
    const auto resized = [&](Qt::Edges edges, QPoint offset) {
        return WindowDrag::resized(card, edges, offset, {680, 472});
    };
    EXPECT_EQ(resized(Qt::RightEdge, {50, 70}), QRect(100, 100, 750, 500));
    EXPECT_EQ(resized(Qt::LeftEdge | Qt::TopEdge, {500, 500}), QRect(120, 128, 680, 472));
}

} // namespace

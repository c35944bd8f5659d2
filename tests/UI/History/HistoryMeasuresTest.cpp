#include "UI/History/HistoryMeasures.h"

#include <gtest/gtest.h>

using namespace Lumenote;

namespace {

TEST(HistoryMeasuresTest, aThumbnailFollowsItsCaptureWithinBounds)
{
    const auto check = [](const char* name, const QSize& pixels, int height) {
        EXPECT_EQ(HistoryMeasures::thumbnailHeight(pixels), height) << name;
        EXPECT_EQ(HistoryMeasures::rowHeight(pixels), height + 30) << name;
    };
    check("aScreen", {1600, 900}, 104);
    check("square", {500, 500}, 108);
    check("tower", {10, 5000}, 108);
    check("line", {5000, 1}, 40);
    check("justAboveTheLeast", {184, 41}, 41);
    check("unknown", {}, 92);
    check("withoutHeight", {100, 0}, 92);
}

TEST(HistoryMeasuresTest, theContentIsItsRowsAndTheGapsBetween)
{
    const auto height = [](const QList<QSize>& sizes) {
        QList<CaptureHistory::Entry> entries(sizes.size());
        for (qsizetype index = 0; index < sizes.size(); ++index)
            entries[index].pixelSize = sizes.at(index);
        return HistoryMeasures::contentHeight(entries);
    };
    EXPECT_EQ(height({}), 59);
    EXPECT_EQ(height({{5000, 1}}), 59 + 70);
    EXPECT_EQ(height({{5000, 1}, {10, 10}, {}}), 59 + 70 + 138 + 122 + 12);
}

} // namespace

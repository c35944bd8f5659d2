#include "OCR/OCRTimes.h"

#include "OCR/OCRResult.h"

#include <array>
#include <gtest/gtest.h>

using namespace Lumenote;
using namespace std::chrono_literals;

namespace {

TEST(OCRTimesTest, timesAreRoundedWithinTheirUnit)
{
    struct Row {
        OCRTimes::Duration duration;
        const char* text;
    };
    constexpr std::array rows{
        Row{0ns, "0ms"},
        Row{499'999ns, "0ms"},
        Row{12'600us, "13ms"},
        Row{999'600us, "1000ms"},
        Row{1s, "1.0s"},
        Row{1'960ms, "2.0s"},
        Row{61'040ms, "61.0s"},
    };
    for (const auto& row : rows)
        EXPECT_EQ(OCRTimes::format(row.duration), QString::fromUtf8(row.text));
}

TEST(OCRTimesTest, aModelLoadTakesMoreThanTwoSeconds)
{
    EXPECT_EQ(OCRTimes::recognitionLine(0, 2s), QStringLiteral("0 lines in 2.0s"));
    EXPECT_EQ(
        OCRTimes::recognitionLine(12, 2s + 1ns), QStringLiteral("12 lines in 2.0s — model load"));
}

TEST(OCRTimesTest, aWarmUpCountsItsModelLoads)
{
    struct Row {
        bool isReady;
        int modelLoads;
        const char* text;
    };
    constexpr std::array rows{
        Row{true, 0, "warm-up ready in 1.5s"},
        Row{true, 1, "warm-up ready in 1.5s — 1 model load"},
        Row{true, 3, "warm-up ready in 1.5s — 3 model loads"},
        Row{false, 0, "warm-up failed in 1.5s"},
        Row{false, 1, "warm-up failed in 1.5s — 1 model load"},
    };
    for (const auto& row : rows)
        EXPECT_EQ(
            OCRTimes::warmUpLine(row.isReady, 1500ms, row.modelLoads), QString::fromUtf8(row.text));
}

TEST(OCRResultTest, theTextIsItsLinesWithOneLineFeedBetween)
{
    OCRResult result;
    EXPECT_EQ(result.text(), QString());
    result.lines = {{.text = QStringLiteral("one"), .boundingBox = {}},
        {.text = QString(), .boundingBox = {}},
        {.text = QStringLiteral("three "), .boundingBox = {}}};
    EXPECT_EQ(result.text(), QStringLiteral("one\n\nthree "));
}

} // namespace

#include "OCR/ProbeImage.h"

#include <gtest/gtest.h>
#include <thread>

using namespace Lumenote;

namespace {

bool isWhite(const QImage& image, const QRect& area)
{
    auto blank = QImage(area.size(), image.format());
    blank.fill(Qt::white);
    return image.copy(area) == blank;
}

TEST(ProbeImageTest, codeLinesAreNumberedAndTakenInTurn)
{
    const auto lines = probeLines(8, ProbeKind::code);
    ASSERT_EQ(lines.size(), 8);
    EXPECT_EQ(lines.at(0), u"0 let kCFAllocatorDefault = CFAllocatorGetDefault()"_qs);
    EXPECT_EQ(lines.at(7), u"7   guard let candidate = observation.topCandidates(1).first"_qs);
}

TEST(ProbeImageTest, proseFillsItsLinesAndRunsOnFromOneToTheNext)
{
    const auto lines = probeLines(72, ProbeKind::prose);
    ASSERT_EQ(lines.size(), 72);
    constexpr qsizetype longestWord = 8; // "carrying"
    for (const auto& line : lines) {
        EXPECT_GE(line.size(), 218);
        EXPECT_LE(line.size(), 218 + longestWord);
    }
    EXPECT_TRUE(lines.join(u' ').contains(
        u"and the wind falls still The quick brown fox jumps over the lazy dog"_qs));
}

TEST(ProbeImageTest, eachLineStandsInItsPlaceOnWhite)
{
    const auto check = [&](int lines, ProbeKind kind, int height) {
        const auto image = probeImage(lines, kind);
        ASSERT_EQ(image.size(), QSize(2000, height));
        EXPECT_TRUE(isWhite(image, QRect(0, 0, 8, height))) << "left of the text";
        EXPECT_TRUE(isWhite(image, QRect(0, 0, 2000, 8))) << "above the text";
        EXPECT_TRUE(isWhite(image, QRect(0, height - 8, 2000, 8))) << "below the text";
        for (int line = 0; line < lines; ++line)
            EXPECT_FALSE(isWhite(image, QRect(8, 8 + static_cast<int>(line * 28.8), 300, 28)))
                << "line " << line;
    };
    check(8, ProbeKind::code, 246);
    check(24, ProbeKind::prose, 707);
    check(112, ProbeKind::code, 3241);
}

TEST(ProbeImageTest, aBackgroundThreadDrawsTheSame)
{
    QImage drawnBehind;
    std::jthread([&drawnBehind] { drawnBehind = probeImage(24, ProbeKind::prose); }).join();
    EXPECT_EQ(drawnBehind, probeImage(24, ProbeKind::prose));
}

} // namespace

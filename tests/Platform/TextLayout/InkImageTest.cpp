#include "Platform/TextLayout/InkImage.h"

#include "Platform/TextLayout/Canvas.h"
#include "Platform/TextLayout/PageLayout.h"

#include <QLinearGradient>

#include <algorithm>
#include <array>
#include <gtest/gtest.h>

using Drawing::Canvas;
using Platform::inkOf;

namespace {

int strongestInk(const QImage& image)
{
    const auto ink = inkOf(image, {});
    int strongest = 0;
    for (int y = 0; y < ink.height(); ++y)
        strongest =
            std::max(strongest, int(*std::max_element(ink.row(y), ink.row(y) + ink.width())));
    return strongest;
}

QImage gradient(const QPointF& end)
{
    Canvas canvas({600, 400});
    QLinearGradient colours({0, 0}, end);
    colours.setColorAt(0, QColor(20, 40, 90));
    colours.setColorAt(1, QColor(240, 200, 120));
    QPainter(&canvas.image).fillRect(canvas.image.rect(), colours);
    return canvas.image;
}

QImage grid(const QColor& colour, const QColor& surface)
{
    Canvas canvas({301, 201}, surface);
    for (int x = 0; x < 301; x += 60)
        canvas.fill({x, 0, 1, 201}, colour);
    for (int y = 0; y < 201; y += 25)
        canvas.fill({0, y, 301, 1}, colour);
    return canvas.image;
}

TEST(InkImageTest, surfacesAndRulesHaveNoInk)
{
    const std::array rows{
        std::pair("flat", Canvas({200, 120}, QColor(90, 60, 200)).image),
        std::pair("gradientAcross", gradient({600, 0})),
        std::pair("gradientDown", gradient({0, 400})),
        std::pair("gradientAslant", gradient({600, 400})),
        std::pair("sideBySide", Canvas({200, 120}).fill({0, 0, 90, 120}, QColor(40, 40, 60)).image),
        std::pair(
            "oneBelowTheOther", Canvas({200, 120}).fill({0, 0, 200, 50}, QColor(40, 40, 60)).image),
        std::pair("button", Canvas({200, 120}).fill({30, 30, 120, 40}, Qt::blue).image),
        std::pair("rules", grid(Qt::lightGray, Qt::white)),
        std::pair("strongRules", grid(Qt::white, Qt::black)),
    };
    for (const auto& [name, image] : rows)
        EXPECT_EQ(strongestInk(image), 0) << name;
}

TEST(InkImageTest, textIsInkOfTheSameKindInEachPolarity)
{
    const auto black = Canvas({300, 80}).write({60, 45}, u"Polarity, 12:30"_qs).image;
    const auto ofBlack = inkOf(black, {});
    const auto ofWhite = inkOf(Drawing::inverted(black), {});
    EXPECT_GT(strongestInk(black), 150);
    for (int y = 0; y < black.height(); ++y)
        for (int x = 0; x < black.width(); ++x)
            ASSERT_NEAR(ofBlack.row(y)[x], ofWhite.row(y)[x], 1) << x << ' ' << y;
}

TEST(InkImageTest, aStopLeavesNothing)
{
    std::stop_source stop;
    stop.request_stop();
    const auto image = Canvas({300, 80}).write({60, 45}, u"Stopped"_qs).image;
    EXPECT_TRUE(inkOf(image, stop.get_token()).rect().isEmpty());
    const auto page = Platform::layoutOf(image, stop.get_token());
    EXPECT_TRUE(page.levels.empty());
    EXPECT_TRUE(page.lines.empty());
}

} // namespace

#include "Platform/TextLayout/PageLayout.h"

#include "Platform/TextLayout/Canvas.h"

#include <QDebug>

#include <algorithm>
#include <array>
#include <gtest/gtest.h>
#include <random>

using Drawing::Canvas;
using Drawing::inverted;
using Platform::layoutOf;
using Platform::PlacedLine;

namespace {

std::string toString(const QRect& box)
{
    return QDebug::toString(box).toStdString();
}

std::string toString(const std::vector<PlacedLine>& lines)
{
    std::string text;
    for (const auto& line : lines)
        text += toString(line.box) + " (level " + std::to_string(line.level) + ") ";
    return text;
}

bool hasLineAround(const std::vector<PlacedLine>& lines, const QRect& box, int fringe = 2)
{
    return std::any_of(lines.begin(), lines.end(), [&](const PlacedLine& line) {
        return line.box.adjusted(-fringe, -fringe, fringe, fringe).contains(box)
            && box.adjusted(-fringe, -fringe, fringe, fringe).contains(line.box);
    });
}

/// One or two shapes may be anything, such as a button's ends: that is told when they are read.
bool mayBeWords(const PlacedLine& line)
{
    return line.line.components.size() > 2;
}

Canvas cells()
{
    Canvas canvas({400, 150});
    canvas.frame({20, 20, 361, 97}, Qt::lightGray);
    for (int row = 0; row < 4; ++row) {
        canvas.fill({20, 20 + row * 24, 361, 1}, Qt::lightGray);
        for (int column = 0; column < 3; ++column) {
            canvas.fill({20 + column * 120, 20, 1, 97}, Qt::lightGray);
            canvas.write({30 + column * 120, 37 + row * 24}, u"Some cell"_qs, {.size = 13});
        }
    }
    return canvas;
}

Canvas rows(int distance)
{
    Canvas canvas({400, 150});
    for (int row = 0; row < 6; ++row)
        canvas.write({30, 30 + row * distance}, u"gypsum hedge flying by jet"_qs, {.size = 13});
    return canvas;
}

Canvas alone(const QString& text, const Drawing::Face& face = {})
{
    return Canvas({500, 140}).write({50, 90}, text, face);
}

TEST(PageLayoutTest, linesAreWhatWasWritten)
{
    const QColor blue(30, 90, 220);
    const auto linked = u"Typing quickly, properly"_qs;
    const std::array pages{
        std::pair("cells", cells()),
        std::pair("closeRows", rows(15)),
        std::pair("touchingRows", rows(13)),
        std::pair("dots", alone(u"Loading ..."_qs)),
        std::pair("dash", alone(u"- first of all"_qs)),
        std::pair("options", alone(u"sort -u --key=2 file"_qs, {.family = Drawing::mono})),
        std::pair("colons", alone(u"std :: vector :: end"_qs, {.family = Drawing::mono})),
        std::pair("quotes", alone(u"\"quoted\" and 'so'"_qs)),
        std::pair("umlauts", alone(u"Über Äpfel, für Öl"_qs)),
        std::pair("small", alone(u"the smallest print there is"_qs, {.size = 10})),
        std::pair("bold", alone(u"Bold and broad"_qs, {.size = 18, .isBold = true})),
        std::pair("coloured",
            Canvas({300, 90}, QColor(235, 235, 245))
                .write({60, 50}, u"Coloured"_qs, {.colour = QColor(200, 40, 40)})),
        std::pair("button",
            Canvas({300, 90}, QColor(240, 240, 240))
                .fill({80, 25, 120, 36}, Qt::white, 6)
                .frame({80, 25, 120, 36}, Qt::gray, 6)
                .write({115, 48}, u"Accept"_qs)),
        std::pair("colouredButton",
            Canvas({300, 90})
                .fill({80, 25, 120, 36}, blue, 8)
                .write({115, 48}, u"Accept"_qs, {.colour = Qt::white})),
        std::pair("framed",
            Canvas({300, 90}).frame({80, 25, 120, 36}, Qt::black).write({115, 48}, u"Accept"_qs)),
        std::pair("framedWithRoundCorners",
            Canvas({300, 90})
                .frame({80, 25, 66, 36}, Qt::black, 6)
                .write({98, 48}, u"Apply"_qs)
                .frame({152, 25, 66, 36}, Qt::black, 6)
                .write({168, 48}, u"Close"_qs)),
        std::pair("besideAnAvatar",
            Canvas({400, 120})
                .fill({20, 30, 36, 36}, blue, 18)
                .write({26, 53}, u"357"_qs, {.size = 12, .colour = Qt::white})
                .write({66, 44}, u"Typing quickly"_qs, {.size = 13})
                .write({66, 62}, u"without looking down"_qs, {.size = 13})),
        std::pair("sentences",
            alone(u"A sentence may stop here.  Others go  on"_qs,
                {.size = 13, .family = Drawing::mono})),
        std::pair("underlined", alone(linked, {.colour = blue}).fill({50, 92, 176, 1}, blue)),
        std::pair("underlinedWithASoftEdge",
            alone(linked, {.colour = blue})
                .fill({46, 90, 184, 1}, QColor(210, 205, 237))
                .fill({46, 91, 184, 1}, blue)),
        std::pair("bracketsApart", alone(u"while (a) {"_qs, {.size = 10, .family = Drawing::mono})),
        std::pair("crossedByARule", alone(linked).fill({0, 92, 500, 1}, Qt::black)),
    };
    for (const auto& [name, page] : pages) {
        for (const auto& image : {page.image, inverted(page.image)}) {
            SCOPED_TRACE(testing::Message() << name << (image == page.image ? "" : ", inverted"));
            const auto lines = layoutOf(image, {}).lines;
            for (const auto& piece : page.pieces)
                EXPECT_TRUE(hasLineAround(lines, piece.box)) << toString(piece.box);
            EXPECT_EQ(std::size_t(std::count_if(lines.begin(), lines.end(), mayBeWords)),
                page.pieces.size())
                << toString(lines);
        }
    }
}

TEST(PageLayoutTest, lettersOfAllSizesAreFoundWhole)
{
    for (const int size : {9, 12, 16, 24, 40, 72, 120, 200, 400}) {
        Canvas canvas({size * 6 + 200, size * 2 + 100});
        canvas.write({100, size + 50}, u"Heading"_qs, {.size = size, .isBold = true});
        const auto lines = layoutOf(canvas.image, {}).lines;
        const QRect box = canvas.pieces.front().box;
        const int fringe = std::max(2, size / 12); // A reduced level sees no single pixels.
        EXPECT_TRUE(hasLineAround(lines, box, fringe))
            << size << ": " << toString(box) << " in " << toString(lines);
    }
}

TEST(PageLayoutTest, whatStandsOnASmallSurfaceIsALine)
{
    const QColor red(220, 30, 40);
    const QColor dark(40, 42, 46);
    const auto badge = [&](const QString& digit, const QColor& page, int diameter) {
        return Canvas({300, 90}, page)
            .fill({140, 30, diameter, diameter}, red, diameter / 2)
            .write({147, 44}, digit, {.size = 11, .colour = Qt::white});
    };
    const std::array pages{
        std::pair("badge", badge(u"3"_qs, Qt::white, 20)),
        std::pair("darkBadge", badge(u"5"_qs, dark, 20)),
        std::pair("smallBadge", badge(u"7"_qs, Qt::white, 18)),
        std::pair("twoDigits", badge(u"12"_qs, dark, 28)),
        std::pair("boldDigit",
            Canvas({300, 90}, dark)
                .fill({140, 30, 24, 24}, red, 12)
                .write({148, 47}, u"7"_qs, {.size = 13, .colour = Qt::white, .isBold = true})),
        std::pair("keyCap",
            Canvas({300, 90}, QColor(245, 245, 245))
                .fill({140, 30, 44, 24}, Qt::darkGray, 4)
                .write({150, 47}, u"Esc"_qs, {.size = 12, .colour = Qt::white})),
        std::pair("outlinedKeys",
            Canvas({300, 90})
                .write({150, 47}, u"U"_qs, {.size = 12})
                .frame({142, 30, 24, 24}, Qt::lightGray, 4)
                .frame({172, 30, 24, 24}, Qt::lightGray, 4)
                .write({180, 47}, u"V"_qs, {.size = 12})),
    };
    for (const auto& [name, page] : pages) {
        const auto lines = layoutOf(page.image, {}).lines;
        EXPECT_TRUE(hasLineAround(lines, page.pieces.front().box))
            << name << ": " << toString(page.pieces.front().box) << " in " << toString(lines);
    }
}

TEST(PageLayoutTest, anyPictureEndsWithItsLinesInside)
{
    std::mt19937 random(11);
    const std::array sizes{QSize(1, 1), QSize(1, 20'000), QSize(20'000, 1), QSize(3, 3),
        QSize(27, 27), QSize(29, 57), QSize(5, 20'000), QSize(20'000, 30), QSize(2000, 2000)};
    for (const auto& size : sizes) {
        QImage image(size, QImage::Format_RGB32);
        for (int y = 0; y < size.height(); ++y)
            std::generate_n(reinterpret_cast<QRgb*>(image.scanLine(y)), size.width(),
                [&] { return QRgb(random() | 0xff000000U); });
        // A part without noise, which makes what stands beside it ink.
        QPainter(&image).fillRect(0, 0, size.width(), size.height() / 4, Qt::white);
        const auto page = layoutOf(image, {});
        EXPECT_FALSE(page.levels.empty());
        EXPECT_LT(page.lines.size(), 60'000U);
        for (const auto& line : page.lines)
            ASSERT_TRUE(image.rect().contains(line.box)) << toString(line.box);
    }
}

} // namespace

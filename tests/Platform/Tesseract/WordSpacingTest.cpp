#include "Platform/Tesseract/WordSpacing.h"

#include <QStringList>

#include <algorithm>
#include <array>
#include <gtest/gtest.h>

using Platform::InkGap;
using Platform::ReadSymbol;

namespace {

enum class Letters { typewriter, proportional };

double inkWidthOf(QChar character)
{
    return QStringLiteral(".,:;'!|").contains(character) ? 2
        : QStringLiteral("ijlt/()").contains(character)  ? 4
                                                         : 8;
}

double advanceOf(QChar character, Letters letters)
{
    return letters == Letters::typewriter ? 10 : character == u' ' ? 5 : inkWidthOf(character) + 1;
}

struct Line {
    std::vector<ReadSymbol> symbols;
    std::vector<InkGap> gaps;
};

/// The line that shows @p drawn, with the words that are told apart in @p read.
Line lineOf(const QString& drawn, const QString& read, Letters letters)
{
    Line line;
    double x = 0;
    double inkEnd = 0;
    qsizetype next = 0;
    for (const QChar character : drawn) {
        const double advance = advanceOf(character, letters);
        if (character != u' ') {
            const double centre = x + advance / 2;
            const double left = centre - inkWidthOf(character) / 2;
            if (left > inkEnd)
                line.gaps.push_back({inkEnd, left});
            inkEnd = left + inkWidthOf(character);
            const bool startsWord = next == 0 || read[next] == u' ';
            next += next > 0 && startsWord ? 2 : 1;
            line.symbols.push_back({QString(character), centre, startsWord});
        }
        x += advance;
    }
    return line;
}

TEST(WordSpacingTest, wordsAreWhatTheGapsTell)
{
    struct Row {
        const char* name;
        QString drawn;
        QString read;
        Letters letters;
    };
    using enum Letters;
    const std::array rows{
        Row{"right", u"for each line"_qs, u"for each line"_qs, typewriter},
        Row{"falseBlankAfterColon", u"see https://example.org/a"_qs,
            u"see https: //example.org/a"_qs, typewriter},
        Row{"falseBlanksAroundDots", u"std::cout.flush();"_qs, u"std:: cout. flush ();"_qs,
            typewriter},
        Row{"missedBlank", u"int main(void) {"_qs, u"intmain(void) {"_qs, typewriter},
        Row{"missedBlankBesideDot", u"cp . other/place"_qs, u"cp. other/place"_qs, typewriter},
        Row{"wideBlanks", u"name    size    owner"_qs, u"name size owner"_qs, typewriter},
        Row{"rightInPrint", u"all the words stand apart"_qs, u"all the words stand apart"_qs,
            proportional},
        Row{"missedBlankInPrint", u"all the words stand apart"_qs, u"all thewords stand apart"_qs,
            proportional},
        Row{"twoMissedInPrint", u"so all of the words stand apart"_qs,
            u"so allof the wordsstand apart"_qs, proportional},
        Row{"onlyOneWordInPrint", u"immediately"_qs, u"immediately"_qs, proportional},
        Row{"numbersInPrint", u"version 1.10, of 2021"_qs, u"version 1.10, of 2021"_qs,
            proportional},
        Row{"oneLetter", u"x"_qs, u"x"_qs, proportional},
    };
    for (const auto& row : rows) {
        auto [symbols, gaps] = lineOf(row.drawn, row.read, row.letters);
        ASSERT_EQ(Platform::textOf(symbols), row.read) << row.name;
        Platform::respace(symbols, gaps);
        EXPECT_EQ(Platform::textOf(symbols), row.drawn.simplified()) << row.name;
    }
}

TEST(WordSpacingTest, linesThatRunFromRightToLeftStayAsRead)
{
    const auto text = u"one line of words runs the other way"_qs;
    for (const auto letters : {Letters::typewriter, Letters::proportional}) {
        auto [symbols, gaps] = lineOf(text, text, letters);
        for (ReadSymbol& symbol : symbols)
            symbol.centre = 400 - symbol.centre;
        for (InkGap& gap : gaps)
            gap = {400 - gap.right, 400 - gap.left};
        std::reverse(gaps.begin(), gaps.end());
        Platform::respace(symbols, gaps);
        EXPECT_EQ(Platform::textOf(symbols), text);
    }
}

TEST(WordSpacingTest, nothingReadIsNoText)
{
    std::vector<ReadSymbol> symbols;
    Platform::respace(symbols, {{0, 5}, {9, 30}});
    EXPECT_EQ(Platform::textOf(symbols), QString());
}

} // namespace

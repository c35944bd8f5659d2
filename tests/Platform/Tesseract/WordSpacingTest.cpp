#include "Platform/Tesseract/WordSpacing.h"

#include <QStringList>

#include <algorithm>
#include <gtest/gtest.h>

using Platform::InkGap;
using Platform::ReadSymbol;

namespace {

enum class Letters { typewriter, proportional };

double inkWidthOf(QChar character)
{
    return u".,:;'!|"_qs.contains(character) ? 2 : u"ijlt/()"_qs.contains(character) ? 4 : 8;
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
    using enum Letters;
    const auto check = [&](const char* name, const QString& drawn, const QString& read,
                           Letters letters) {
        SCOPED_TRACE(name);
        auto [symbols, gaps] = lineOf(drawn, read, letters);
        ASSERT_EQ(Platform::textOf(symbols), read);
        Platform::respace(symbols, gaps);
        EXPECT_EQ(Platform::textOf(symbols), drawn.simplified());
    };
    check("right", u"for each line"_qs, u"for each line"_qs, typewriter);
    check("falseBlankAfterColon", u"see https://example.org/a"_qs, u"see https: //example.org/a"_qs,
        typewriter);
    check(
        "falseBlanksAroundDots", u"std::cout.flush();"_qs, u"std:: cout. flush ();"_qs, typewriter);
    check("missedBlank", u"int main(void) {"_qs, u"intmain(void) {"_qs, typewriter);
    check("missedBlankBesideDot", u"cp . other/place"_qs, u"cp. other/place"_qs, typewriter);
    check("wideBlanks", u"name    size    owner"_qs, u"name size owner"_qs, typewriter);
    check("rightInPrint", u"all the words stand apart"_qs, u"all the words stand apart"_qs,
        proportional);
    check("missedBlankInPrint", u"all the words stand apart"_qs, u"all thewords stand apart"_qs,
        proportional);
    check("twoMissedInPrint", u"so all of the words stand apart"_qs,
        u"so allof the wordsstand apart"_qs, proportional);
    check("onlyOneWordInPrint", u"immediately"_qs, u"immediately"_qs, proportional);
    check("numbersInPrint", u"version 1.10, of 2021"_qs, u"version 1.10, of 2021"_qs, proportional);
    check("oneLetter", u"x"_qs, u"x"_qs, proportional);
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

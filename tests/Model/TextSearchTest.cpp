#include "Model/TextSearch.h"

#include <gtest/gtest.h>

namespace TextSearch = Lumenote::TextSearch;

namespace {

struct SearchCase {
    const char* name;
    const char16_t* query;
    const char16_t* line;
    bool isFound;
};

class TextSearchTest : public testing::TestWithParam<SearchCase> { };

TEST_P(TextSearchTest, findsWhateverTheCaseAndTheAccents)
{
    const QStringList lines{QString::fromUtf16(GetParam().line)};
    const auto found = TextSearch::linesMatching(lines, QString::fromUtf16(GetParam().query));
    EXPECT_EQ(found, GetParam().isFound ? lines : QStringList());
}

INSTANTIATE_TEST_SUITE_P(Lines, TextSearchTest,
    testing::Values(SearchCase{"composedAccent", u"cafe", u"Caf\u00e9 au lait", true},
        SearchCase{"decomposedAccent", u"cafe", u"CAFE\u0301", true},
        SearchCase{"accentInTheQuery", u"caf\u00e9", u"the cafe", true},
        SearchCase{"sharpS", u"STRASSE", u"die Stra\u00dfe", true},
        SearchCase{"blankInTheQuery", u"two words", u"twowords", false},
        SearchCase{"noPatterns", u"a.c", u"abc", false},
        SearchCase{"noTrimming", u" end", u"end", false},
        SearchCase{"hebrewPoints", u"\u05e9\u05dc\u05d5\u05dd",
            u"\u05e9\u05b8\u05c1\u05dc\u05d5\u05b9\u05dd", true},
        SearchCase{"voicedKanaIsAnotherLetter", u"\u304b", u"\u304c", false},
        SearchCase{"syllableBeginsAlike", u"\uac00", u"\uac01", false},
        SearchCase{"emptyQueryKeepsEmptyLines", u"", u"", true}),
    [](const auto& row) { return std::string(row.param.name); });

TEST(TextSearch, wordsStandBetweenUnicodeWhitespace)
{
    const auto count = [](const char16_t* line) {
        return TextSearch::wordCount(QString::fromUtf16(line));
    };
    EXPECT_EQ(count(u""), 0);
    EXPECT_EQ(count(u" \t\u00a0\u2003\u3000\n"), 0);
    EXPECT_EQ(count(u"well-known, words"), 2);
    EXPECT_EQ(count(u"a\u2009b\u3000c\u0085d "), 4);
}

} // namespace

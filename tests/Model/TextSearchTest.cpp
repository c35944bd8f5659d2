#include "Model/TextSearch.h"

#include <gtest/gtest.h>

namespace TextSearch = Lumenote::TextSearch;

namespace {

TEST(TextSearch, findsWhateverTheCaseAndTheAccents)
{
    const auto check = [](const char* name, const QString& query, const QString& line,
                           bool isFound) {
        EXPECT_EQ(TextSearch::matches({line}, query).size(), isFound ? 1 : 0) << name;
    };
    check("decomposedAccent", u"cafe"_qs, u"CAFE\u0301"_qs, true);
    check("accentInTheQuery", u"caf\u00e9"_qs, u"the cafe"_qs, true);
    check("sharpS", u"STRASSE"_qs, u"die Stra\u00dfe"_qs, true);
    check("blankInTheQuery", u"two words"_qs, u"twowords"_qs, false);
    check("noPatterns", u"a.c"_qs, u"abc"_qs, false);
    check("hebrewPoints", u"\u05e9\u05dc\u05d5\u05dd"_qs,
        u"\u05e9\u05b8\u05c1\u05dc\u05d5\u05b9\u05dd"_qs, true);
    check("voicedKanaIsAnotherLetter", u"\u304b"_qs, u"\u304c"_qs, false);
    check("syllableBeginsAlike", u"\uac00"_qs, u"\uac01"_qs, false);
    check("emptyQueryKeepsEmptyLines", {}, {}, true);
}

TEST(TextSearch, tellsEveryPlaceInTheTextAsItStands)
{
    using Ranges = QList<TextSearch::Range>;
    const auto check = [](const char* name, const QString& query, const QString& line,
                           const Ranges& ranges) {
        const auto matches = TextSearch::matches({u"?"_qs, line}, query);
        ASSERT_EQ(matches.size(), 1) << name;
        EXPECT_EQ(matches.constFirst().row, 1) << name;
        EXPECT_EQ(matches.constFirst().ranges, ranges) << name;
    };
    check("severalPlaces", u"ab"_qs, u"ABxabab"_qs, {{0, 2}, {3, 2}, {5, 2}});
    check("composed", u"cafe"_qs, u"le caf\u00e9"_qs, {{3, 4}});
    check("decomposed", u"cafe"_qs, u"Cafe\u0301 au"_qs, {{0, 5}});
    check("behindAnAccent", u"au"_qs, u"Cafe\u0301 au"_qs, {{6, 2}});
    check("sharpS", u"strasse 1"_qs, u"Hauptstra\u00dfe 1"_qs, {{5, 8}});
    check("bothHalvesOfASharpS", u"s"_qs, u"Gru\u00df"_qs, {{3, 1}});
    check("behindASharpS", u"e"_qs, u"\u00dfe"_qs, {{1, 1}});
    check("sharingASharpS", u"sas"_qs, u"\u00dfa\u00dfa\u00df"_qs, {{0, 5}});
    check("ligature", u"fi"_qs, u"o\ufb01"_qs, {{1, 1}});
    check("emoji", u"\U0001f600"_qs, u"\U0001f601 \U0001f600"_qs, {{3, 2}});
    check("behindAnEmoji", u"x"_qs, u"\U0001f468\u200d\U0001f469 x"_qs, {{6, 1}});
    check("partOfAnEmoji", u"\U0001f44d"_qs, u"a\U0001f44d\U0001f3fd"_qs, {{1, 4}});
    check("hangul", u"\uac01"_qs, u"\uac00\u1100\u1161\u11a8"_qs, {{1, 3}});
}

TEST(TextSearch, anEmptyQueryLeavesEveryRowWithoutAPlace)
{
    EXPECT_EQ(TextSearch::matches({u"a"_qs, {}}, {}),
        (QList<TextSearch::Match>{{.row = 0, .ranges = {}}, {.row = 1, .ranges = {}}}));
}

TEST(TextSearch, wordsStandBetweenUnicodeWhitespace)
{
    EXPECT_EQ(TextSearch::wordCount(u" \t\u00a0\u2003\u3000\n"_qs), 0);
    EXPECT_EQ(TextSearch::wordCount(u"well-known, words"_qs), 2);
    EXPECT_EQ(TextSearch::wordCount(u"a\u2009b\u3000c\u0085d "_qs), 4);
}

} // namespace

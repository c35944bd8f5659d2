#include "Model/TextSearch.h"

#include <gtest/gtest.h>

namespace TextSearch = Lumenote::TextSearch;

namespace {

TEST(TextSearch, findsWhateverTheCaseAndTheAccents)
{
    const auto check = [](const char* name, const QString& query, const QString& line,
                           bool isFound) {
        EXPECT_EQ(
            TextSearch::linesMatching({line}, query), isFound ? QStringList(line) : QStringList())
            << name;
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

TEST(TextSearch, wordsStandBetweenUnicodeWhitespace)
{
    EXPECT_EQ(TextSearch::wordCount(u" \t\u00a0\u2003\u3000\n"_qs), 0);
    EXPECT_EQ(TextSearch::wordCount(u"well-known, words"_qs), 2);
    EXPECT_EQ(TextSearch::wordCount(u"a\u2009b\u3000c\u0085d "_qs), 4);
}

} // namespace

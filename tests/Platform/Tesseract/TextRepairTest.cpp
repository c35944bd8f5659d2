#include "Platform/Tesseract/TextRepair.h"

#include <gtest/gtest.h>

using Platform::ReadSymbol;

namespace {

QString repaired(const QString& text)
{
    std::vector<ReadSymbol> symbols;
    bool startsWord = true;
    for (const QChar character : text) {
        if (character != u' ')
            symbols.push_back({QString(character), 0, startsWord});
        startsWord = character == u' ';
    }
    Platform::repair(symbols);
    return Platform::textOf(symbols);
}

struct Row {
    const char* name;
    QString read;
    QString meant;
};

class TextRepairTest : public testing::TestWithParam<Row> { };

TEST_P(TextRepairTest, screensAreMendedAndTheRestIsKept)
{
    EXPECT_EQ(repaired(GetParam().read), GetParam().meant);
}

Row kept(const char* name, const QString& text)
{
    return {name, text, text};
}

INSTANTIATE_TEST_SUITE_P(Mended, TextRepairTest,
    testing::Values(Row{"barAtTheStart", u"| think so"_qs, u"I think so"_qs},
        Row{"barAfterWord", u"when | think of it"_qs, u"when I think of it"_qs},
        Row{"hexPrefix", u"at @x7ffe"_qs, u"at 0x7ffe"_qs},
        Row{"zeroInTime", u"12:3@"_qs, u"12:30"_qs},
        Row{"zeroInNumber", u"1@5 of 2@"_qs, u"105 of 20"_qs},
        Row{"zeroBeforePoint", u"@.5 s"_qs, u"0.5 s"_qs},
        Row{"zeroAsArgument", u"f(x, @);"_qs, u"f(x, 0);"_qs},
        Row{"date", u"2O24-O1-15"_qs, u"2024-01-15"_qs},
        Row{"hash", u"4bdf1c2O"_qs, u"4bdf1c20"_qs},
        Row{"uuid", u"S50e8400-e29b-4ld4"_qs, u"550e8400-e29b-41d4"_qs},
        Row{"hashOfLetters", u"Off3ef7l624e"_qs, u"0ff3ef71624e"_qs},
        Row{"ending", u"a.xIsx b.htmI"_qs, u"a.xlsx b.html"_qs},
        Row{"controlKey", u"Ctri+Shift+S"_qs, u"Ctrl+Shift+S"_qs},
        Row{"controlKeyAlone", u"Press Ctr| now"_qs, u"Press Ctrl now"_qs},
        Row{"brace", u"call{a, b)"_qs, u"call(a, b)"_qs},
        Row{"braceInIndex", u"list{0]"_qs, u"list[0]"_qs}),
    [](const auto& row) { return row.param.name; });

INSTANTIATE_TEST_SUITE_P(Kept, TextRepairTest,
    testing::Values(kept("nothing", QString()), kept("address", u"user@example.com"_qs),
        kept("addressAfterDigit", u"user1@example.com"_qs), kept("atRule", u"@media (print)"_qs),
        kept("name", u"ask @anna2, please"_qs), kept("atSigns", u"@@ -1,5 +1,7 @@"_qs),
        kept("barBetweenLetters", u"a | b"_qs), kept("barBetweenCapitals", u"Home | About"_qs),
        kept("bars", u"x || yes"_qs), kept("lastBar", u"end |"_qs), kept("braces", u"{ x }"_qs),
        kept("nestedBraces", u"f({a: [1, 2]});"_qs), kept("openBrace", u"if (x) {"_qs),
        kept("closingBrackets", u"}); ])"_qs), kept("fruit", u"Citrus Ctrip"_qs),
        kept("state", u"Illinois"_qs), kept("call", u"SOS OSLO Isis soil"_qs),
        kept("pipe", u"cat log | grep error"_qs), kept("linkBars", u"home | about"_qs),
        kept("wordWithNumber", u"Office365 file2024"_qs),
        kept("hexNumber", u"deadbeef cafe1234"_qs), kept("hexWord", u"0x1F3A 1e-5"_qs),
        kept("members", u"a.isId b.toInt c.Icon"_qs), kept("size", u"1920x1080"_qs),
        kept("longNumber", u"+49 30 1234567"_qs), kept("version", u"v1.2.3-rc10"_qs),
        kept("measure", u"100 Sols, 10 lbs"_qs)),
    [](const auto& row) { return row.param.name; });

} // namespace

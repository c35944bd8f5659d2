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

TEST(TextRepairTest, screensAreMended)
{
    const auto check = [](const QString& read, const QString& meant) {
        EXPECT_EQ(repaired(read), meant) << read.toStdString();
    };
    check(u"| think so"_qs, u"I think so"_qs);
    check(u"when | think of it"_qs, u"when I think of it"_qs);
    check(u"at @x7ffe"_qs, u"at 0x7ffe"_qs);
    check(u"12:3@"_qs, u"12:30"_qs);
    check(u"1@5 of 2@"_qs, u"105 of 20"_qs);
    check(u"@.5 s"_qs, u"0.5 s"_qs);
    check(u"f(x, @);"_qs, u"f(x, 0);"_qs);
    check(u"2O24-O1-15"_qs, u"2024-01-15"_qs);
    check(u"4bdf1c2O"_qs, u"4bdf1c20"_qs);
    check(u"S50e8400-e29b-4ld4"_qs, u"550e8400-e29b-41d4"_qs);
    check(u"Off3ef7l624e"_qs, u"0ff3ef71624e"_qs);
    check(u"a.xIsx b.htmI"_qs, u"a.xlsx b.html"_qs);
    check(u"Ctri+Shift+S"_qs, u"Ctrl+Shift+S"_qs);
    check(u"Press Ctr| now"_qs, u"Press Ctrl now"_qs);
    check(u"Ctrl+Fll F1l"_qs, u"Ctrl+F11 F11"_qs);
    check(u"call{a, b)"_qs, u"call(a, b)"_qs);
    check(u"list{0]"_qs, u"list[0]"_qs);
}

TEST(TextRepairTest, whatMayBeMeantIsKept)
{
    for (const auto& text :
        {QString(), u"user@example.com"_qs, u"user1@example.com"_qs, u"@media (print)"_qs,
            u"ask @anna2, please"_qs, u"@@ -1,5 +1,7 @@"_qs, u"a | b"_qs, u"Home | About"_qs,
            u"x || yes"_qs, u"end |"_qs, u"{ x }"_qs, u"f({a: [1, 2]});"_qs, u"if (x) {"_qs,
            u"}); ])"_qs, u"Citrus Ctrip"_qs, u"Illinois Fill"_qs, u"SOS OSLO Isis soil"_qs,
            u"cat log | grep error"_qs, u"home | about"_qs, u"Office365 file2024"_qs,
            u"deadbeef cafe1234"_qs, u"0x1F3A 1e-5"_qs, u"a.isId b.toInt c.Icon"_qs,
            u"1920x1080"_qs, u"+49 30 1234567"_qs, u"v1.2.3-rc10"_qs, u"100 Sols, 10 lbs"_qs})
        EXPECT_EQ(repaired(text), text);
}

} // namespace

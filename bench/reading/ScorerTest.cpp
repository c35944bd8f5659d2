#include "Scorer.h"

#include "Boxes.h"

#include <array>
#include <gtest/gtest.h>

using namespace Lumenote::Bench;
using namespace Qt::StringLiterals;

namespace {

QList<Piece> piecesOf(const QStringList& texts)
{
    QList<Piece> pieces;
    for (const QString& text : texts)
        pieces.append({text, {}});
    return pieces;
}

TEST(ScorerTest, countsWhatIsWrongMissingAndTooMuch)
{
    struct Row {
        const char* name;
        QStringList pieces;
        QString read;
        int errors;
        int lost;
        int extra;
    };
    const QString longLine = u"a line of far more than sixty-four characters, as documents have "_s
        + u"them, and as long as two of the words that are compared at once"_s;
    const std::array rows{
        Row{"allRight", {u"Open file"_s, u"Save"_s}, u"Open file\nSave\n\f"_s, 0, 0, 0},
        Row{"anyOrder", {u"Open file"_s, u"Save"_s}, u"Save\nOpen file\n"_s, 0, 0, 0},
        Row{"joinedRow", {u"Open file"_s, u"Save"_s}, u"Save Open file"_s, 0, 0, 0},
        Row{"overTwoLines", {u"Open file"_s}, u"Open\nfile"_s, 0, 0, 0},
        Row{"wrongCharacter", {u"Open file"_s}, u"Open fi1e"_s, 1, 0, 0},
        Row{"missingCharacter", {u"Open file"_s}, u"Opn file"_s, 1, 0, 0},
        Row{"addedCharacter", {u"Open file"_s}, u"Open  f ile"_s, 1, 0, 0},
        Row{"nothingRead", {u"Open file"_s}, u""_s, 9, 1, 0},
        Row{"garbage", {u"Open file"_s}, u"~~ ## =="_s, 9, 1, 6},
        Row{"halfIsNotLost", {u"abcd"_s}, u"abxy"_s, 2, 0, 0},
        Row{"moreThanHalfIsLost", {u"abcd"_s}, u"axyz"_s, 4, 1, 4},
        Row{"tooMuch", {u"Save"_s}, u"Save\n@ x"_s, 0, 0, 2},
        Row{"noText", {}, u" oo\n"_s, 0, 0, 2},
        Row{"repeatedOnce", {u"Running"_s, u"Running"_s}, u"Running"_s, 7, 1, 0},
        Row{"repeatedTwice", {u"Running"_s, u"Running"_s}, u"Running\nRunning"_s, 0, 0, 0},
        Row{"theLongerFirst", {u"Save"_s, u"Save as"_s}, u"Save as\nSave"_s, 0, 0, 0},
        Row{"theBetterFirst", {u"item 1234"_s, u"item 1235"_s}, u"item 1235 item 1Z34"_s, 1, 0, 0},
        Row{"digitAlone", {u"5"_s}, u"2 5"_s, 0, 0, 1},
        Row{"digitWithinNumber", {u"5"_s}, u"255"_s, 1, 1, 3},
        Row{"quotesAndDashes", {u"“it’s” 3–4"_s}, u"\"it's\" 3-4"_s, 0, 0, 0},
        Row{"composedAccents", {u"über"_s}, u"u\u0308ber"_s, 0, 0, 0},
        Row{"blanksWithinChinese", {u"文件大小"_s}, u"文件 大 小"_s, 0, 0, 0},
        Row{"longLine", {longLine}, u"x\n"_s + longLine + u"\ny"_s, 0, 0, 2},
        Row{"longLineChanged", {longLine},
            QString(longLine).replace(u"documents"_s, u"docunents"_s).remove(u','), 3, 0, 0},
    };
    for (const Row& row : rows) {
        const Score score = Scorer::score(piecesOf(row.pieces), row.read);
        EXPECT_EQ(score.errors, row.errors) << row.name;
        EXPECT_EQ(score.lost, row.lost) << row.name;
        EXPECT_EQ(score.extra, row.extra) << row.name;
    }
}

TEST(ScorerTest, tellsWhatWasReadInstead)
{
    QList<PieceReading> readings;
    Scorer::score(piecesOf({u"Open file"_s}), u"File Open fi1e now"_s, &readings);
    ASSERT_EQ(readings.size(), 1);
    EXPECT_EQ(readings[0].nearest, u"Open fi1e"_s);
}

TEST(BoxesTest, aLineMustCoverItsPiece)
{
    const QList<Piece> pieces{{u"Name"_s, {10, 10, 40, 10}}, {u"Size"_s, {100, 10, 30, 10}}};
    struct Row {
        const char* name;
        QByteArray lines;
        int missed;
    };
    const std::array rows{
        Row{"each", "9 9 42 12\tName\n99 9 32 12\tSize\n", 0},
        Row{"joined", "9 8 123 14\tName Size\n", 0},
        Row{"joinedButTooHigh", "9 0 123 24\tName Size\n", 2},
        Row{"tooWide", "9 9 80 12\tName\n", 2},
        Row{"elsewhere", "9 40 42 12\tName\n", 2},
        Row{"otherText", "9 9 42 12\txyzq\n", 2},
        Row{"nothing", "", 2},
    };
    for (const Row& row : rows)
        EXPECT_EQ(Boxes::missed(pieces, Boxes::parse(row.lines)).size(), row.missed) << row.name;
}

} // namespace

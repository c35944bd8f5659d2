#include "Platform/Tesseract/PageSpacing.h"

#include <QStringList>

#include <deque>
#include <gtest/gtest.h>

using Platform::LineGlyphs;
using Platform::LineReading;

namespace {

/// The widths of letters of 14 px, and of the room beside them, in one face.
struct Face {
    int letter = 6;
    int room = 1;
    int blank = 4;
    bool hasCells = false;
};

int widthOf(QChar character, const Face& face)
{
    const bool isNarrow = QStringLiteral("ijlt.:,;").contains(character);
    return isNarrow ? 2 : face.letter;
}

/// Lines that show one text each, with the words that are told apart in another.
class Page {
public:
    Page& add(const QString& drawn, const QString& read, const Face& face)
    {
        LineReading& reading = m_readings.emplace_back();
        LineGlyphs line{&reading, 14, {}, {}};
        int x = 0;
        qsizetype next = 0;
        for (const QChar character : drawn) {
            const int width = widthOf(character, face);
            const int inset = face.hasCells ? (face.letter - width) / 2 : 0;
            if (character != u' ') {
                const bool startsWord = next == 0 || read[next] == u' ';
                next += next > 0 && startsWord ? 2 : 1;
                line.partners.emplace_back(line.glyphs.size());
                line.glyphs.emplace_back().box = QRect(x + inset, 0, width, 10);
                reading.symbols.push_back(
                    {QString(character), x + inset + width / 2.0, startsWord, 90, false});
            }
            const bool isBlank = character == u' ' && !face.hasCells;
            x += isBlank ? face.blank - face.room
                         : (face.hasCells ? face.letter : width) + face.room;
        }
        m_lines.push_back(std::move(line));
        return *this;
    }

    QStringList respaced()
    {
        Platform::respacePage(m_lines);
        QStringList texts;
        for (const LineReading& reading : m_readings)
            texts.append(Platform::textOf(reading.symbols));
        return texts;
    }

private:
    std::deque<LineReading> m_readings;
    std::vector<LineGlyphs> m_lines;
};

TEST(PageSpacingTest, theOtherSpacesOfAPageDenyAFalseBlank)
{
    const auto text = u"the map of the rapid river lies on the same table"_qs;
    const Face print;
    Page page;
    for (int line = 0; line < 5; ++line)
        page.add(text, text, print);
    page.add(text, u"the ma p of the ra pid river lies on the same table"_qs, print);
    // Of the same height, but narrower: what is a gap there is a blank here.
    const Face narrow{.letter = 4, .room = 0, .blank = 1};
    page.add(u"so it is"_qs, u"so it is"_qs, narrow);
    const QStringList texts = page.respaced();
    EXPECT_EQ(texts[5], text);
    EXPECT_EQ(texts[6], u"so it is"_qs);
}

TEST(PageSpacingTest, blanksOfATypewriterFaceAreCells)
{
    const Face typewriter{.letter = 7, .room = 1, .hasCells = true};
    Page page;
    page.add(
        u"auto x = std::move(node.next);"_qs, u"auto x = std: :move(node .next);"_qs, typewriter);
    page.add(u"cp . ../other/place"_qs, u"cp. ../other/place"_qs, typewriter);
    const QStringList texts = page.respaced();
    EXPECT_EQ(texts[0], u"auto x = std::move(node.next);"_qs);
    EXPECT_EQ(texts[1], u"cp . ../other/place"_qs);
}

} // namespace

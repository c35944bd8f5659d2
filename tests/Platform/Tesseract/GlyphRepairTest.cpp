#include "Platform/Tesseract/GlyphRepair.h"

#include <gtest/gtest.h>
#include <string_view>

using Platform::InkImage;
using Platform::LineReading;

namespace {

constexpr int glyphWidth = 5;
constexpr int glyphHeight = 7;
constexpr int advance = 7;
constexpr int lineStep = 16;

/// A line as it is drawn and as it was read, a blank for each letter that was left out.
struct Line {
    const char* drawn;
    const char* read;
    bool isKnownWord = false;
    const char* repaired = nullptr; ///< As it was read when not set.
};

/// A shape of its own for each letter, in one piece: a frame with the bits of its code inside.
void draw(char letter, int left, int top, InkImage& ink)
{
    for (int y = 0; y < glyphHeight; ++y) {
        for (int x = 0; x < glyphWidth; ++x) {
            const bool isFrame = x == 0 || y == 0 || x == glyphWidth - 1 || y == glyphHeight - 1;
            const bool isSet = (letter >> (y % 5)) & 1;
            ink.row(top + y)[left + x] = isFrame || isSet ? 200 : 0;
        }
    }
}

Platform::TextLine lineAt(int top, const Platform::Components& components)
{
    Platform::TextLine line;
    for (std::size_t item = 0; item < components.items.size(); ++item)
        if (components.items[item].box.y() == top)
            line.components.push_back(int(item));
    line.letterHeight = 10;
    line.baseline = top + glyphHeight;
    return line;
}

LineReading readingOf(const Line& line)
{
    LineReading reading;
    double left = 4;
    for (const char character : std::string_view(line.read)) {
        if (character != ' ')
            reading.symbols.push_back({QString(QLatin1Char(character)), left + glyphWidth / 2.0,
                reading.symbols.empty(), 90, line.isKnownWord});
        left += advance;
    }
    return reading;
}

void check(const char* name, const std::vector<Line>& lines)
{
    SCOPED_TRACE(name);
    Platform::PageLayout page;
    page.levels.push_back({1, InkImage(100, lineStep * int(lines.size()) + lineStep), {}});
    Platform::LayoutLevel& level = page.levels.front();
    for (std::size_t line = 0; line < lines.size(); ++line)
        for (int letter = 0; lines[line].drawn[letter] != 0; ++letter)
            draw(lines[line].drawn[letter], 4 + advance * letter, 4 + lineStep * int(line),
                level.ink);
    level.components = Platform::componentsOf(level.ink, {});
    std::vector<LineReading> readings;
    for (const Line& line : lines) {
        page.lines.push_back(
            {lineAt(4 + lineStep * int(readings.size()), level.components), 0, {}});
        readings.push_back(readingOf(line));
    }

    std::vector<Platform::LineGlyphs> glyphs = lineGlyphsOf(page, 0, readings);
    repairByGlyphs(glyphs);

    for (std::size_t line = 0; line < lines.size(); ++line)
        EXPECT_EQ(textOf(readings[line].symbols).toStdString(),
            lines[line].repaired ? lines[line].repaired : lines[line].read);
}

TEST(GlyphRepairTest, looksSettleWhatNoDictionaryTells)
{
    const Line known{"race", "race", true};
    /// Its letters are less alike than others.
    const Line distinct{"gral", "gral", true};
    const Line stop{"race.", "race.", true};
    const Line comma{"race,", "race,", true};
    const Line often{"rrrrrrrrr", "rrrrrrrrr", true};

    check("wordsOfThePageTell", {known, known, {"barc", "bare", false, "barc"}});
    check("oneWordIsNotEnough", {known, {"barc", "bare"}});
    check("knownWordsKeepTheirLetters", {known, known, {"barc", "bare", true}});
    check("knownWordsMayChangeTheirCase", {often, often, {"raw", "Raw", true, "raw"}});
    check("aMissingLetterShiftsNothing", {known, known, {"raace", "rbce"}});
    check("fullStopsReadAsCommas", {stop, stop, stop, {"race.", "race,", true, "race."}});
    check("fullStopsStayThemselves", {comma, comma, comma, {"race,", "race.", true}});
    check("lettersAreNoMarks", {stop, stop, stop, {"ra.", "rab"}});
    check("aLetterLeftOut", {distinct, distinct, {"gral", "g al", false, "gral"}});
    check("lettersLeftOutAtTheEnds", {distinct, distinct, {"gral", " ra ", false, "gral"}});
    check("knownWordsLackNoLetter", {distinct, distinct, {"gral", "g al", true, "gal"}});
    check("oneLetterReadOfTwo", {distinct, distinct, {"gral", "gr m", false, "gral"}});
    check("barsThatAreDrawnAlikeStay",
        {{"all", "all", true}, {"all", "all", true}, {"olKo", "oIKo"}});
    check("aBarAmongSmallLettersIsOneOfThem",
        {{"all", "all", true}, {"all", "all", true}, {"xls", "xIs", false, "xls"}});
}

} // namespace

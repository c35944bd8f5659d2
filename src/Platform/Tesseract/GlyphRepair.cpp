#include "Platform/Tesseract/GlyphRepair.h"

#include "Platform/Tesseract/GlyphMemory.h"
#include "Platform/Tesseract/GlyphOmissions.h"

#include <algorithm>
#include <cmath>
#include <optional>

namespace Platform {

namespace {

/// How much a word says of its letters.
constexpr int sureWeight = 4;
constexpr int likelyWeight = 1;
constexpr double likelyConfidence = 93;
/// How far from its glyph a symbol may stand, in letter heights.
constexpr double widestMisfit = 0.25;

/// What it takes for a text to take the place of another one.
struct Demand {
    double weight = 0;
    double majority = 0; ///< So many times the weight of the other one.
    double likeness = 0;
};

constexpr Demand ofAnything{6, 8, 0.5};
/// Engines mistake small marks for each other even in words that they know.
constexpr Demand ofMarks{4, 2.5, 0.8};
constexpr Demand ofCase{3, 4, 0.6};
/// Of words with a part that is out of step.
constexpr double leastLikenessOutOfStep = 0.8;

Demand demandOf(const QString& text, const QString& other)
{
    // A full stop is often read as a comma, and hardly ever the other way round.
    if (isSmallMark(text) && isSmallMark(other) && other != u',')
        return ofMarks;
    const bool isOtherCase =
        text.toLower() == other.toLower() && text.toLower() != u'k' && text.toLower() != u'l';
    return isOtherCase ? ofCase : ofAnything;
}

/// Whether @p glyph stands as high over the baseline as the small mark @p text does.
bool suitsHeight(const LineGlyphs& line, const Glyph& glyph, const QString& text)
{
    const bool isLow = QStringLiteral(".,:;_„").contains(text);
    return isLow == (glyph.drop > -0.12 * line.letterHeight);
}

/// Whether @p symbol was read from a glyph where it stands.
bool isPlaced(const LineGlyphs& line, std::size_t symbol)
{
    return line.partners[symbol]
        && std::abs(
               line.reading->symbols[symbol].centre - centreOf(line.glyphs[*line.partners[symbol]]))
        <= widestMisfit * line.letterHeight;
}

/// Whether @p symbol and the one before it were read from glyphs that follow each other.
bool followsGlyph(const LineGlyphs& line, std::size_t symbol)
{
    return line.partners[symbol - 1] && line.partners[symbol]
        && *line.partners[symbol] == *line.partners[symbol - 1] + 1;
}

/// Whether the symbols from @p first up to @p end were read from glyphs that follow each other,
/// where these stand.
bool areInStep(const LineGlyphs& line, std::size_t first, std::size_t end)
{
    for (std::size_t symbol = first; symbol < end; ++symbol)
        if (!isPlaced(line, symbol) || (symbol > first && !followsGlyph(line, symbol)))
            return false;
    return true;
}

int weightOf(std::span<const ReadSymbol> word)
{
    const bool isNumber = std::none_of(word.begin(), word.end(),
        [](const ReadSymbol& symbol) { return symbol.text.front().isLetter(); });
    const double confidence = word.front().confidence;
    if ((word.front().isOfKnownWord && word.size() > 1)
        || (isNumber && confidence >= likelyConfidence))
        return sureWeight;
    return confidence >= likelyConfidence ? likelyWeight : 0;
}

void learnLine(const LineGlyphs& line, GlyphMemory& memory)
{
    std::size_t first = 0;
    for (const auto& word : wordsOf(std::span<const ReadSymbol>(line.reading->symbols))) {
        const int weight = weightOf(word);
        if (weight > 0 && areInStep(line, first, first + word.size()))
            for (std::size_t symbol = first; symbol < first + word.size(); ++symbol)
                memory.learn(line.glyphs[*line.partners[symbol]],
                    line.reading->symbols[symbol].text, weight);
        first += word.size();
    }
}

bool isLower(const ReadSymbol& symbol)
{
    return symbol.text.front().isLower();
}

/// Whether @p memory tells the bar of this number from another one. Many faces draw "l" and "I"
/// alike; then only small letters on both sides tell them apart.
bool isToldFromBars(const LineGlyphs& line, std::size_t symbol, const GlyphMemory& memory)
{
    const std::vector<ReadSymbol>& symbols = line.reading->symbols;
    if (memory.knows(symbols[symbol].text))
        return true;
    const bool isLast = symbol + 1 == symbols.size() || symbols[symbol + 1].startsWord;
    return symbols[symbol].text == u'I' && !symbols[symbol].startsWord
        && isLower(symbols[symbol - 1]) && (isLast || isLower(symbols[symbol + 1]));
}

std::optional<QString> betterText(
    const LineGlyphs& line, std::size_t symbol, const GlyphMemory& memory, double leastLikeness)
{
    const QString bars = QStringLiteral("lI|");
    const QString& text = line.reading->symbols[symbol].text;
    const Glyph& glyph = line.glyphs[*line.partners[symbol]];
    // Letters that touch may have been cut in a wrong place.
    if (glyph.isCut)
        return std::nullopt;
    const std::vector<GlyphMemory::Opinion> opinions = memory.recall(glyph);
    if (opinions.empty() || opinions.front().text == text)
        return std::nullopt;
    const GlyphMemory::Opinion& best = opinions.front();
    const Demand demand = demandOf(text, best.text);
    if (best.weight < demand.weight || best.likeness < std::max(leastLikeness, demand.likeness)
        || isSmallMark(text) != isSmallMark(best.text)
        || (isSmallMark(text) && !suitsHeight(line, glyph, best.text)))
        return std::nullopt;
    const bool areBars = bars.contains(text) && bars.contains(best.text);
    if (areBars && !isToldFromBars(line, symbol, memory))
        return std::nullopt;
    for (const GlyphMemory::Opinion& own : opinions)
        if (own.text == text && (areBars || own.weight * demand.majority > best.weight))
            return std::nullopt;
    return best.text;
}

/// Whether @p texts are those of the neighbours in @p word: then the glyphs were cut in wrong
/// places.
bool areShifted(std::span<const ReadSymbol> word, const std::vector<std::optional<QString>>& texts)
{
    for (std::size_t next = 1; next < word.size(); ++next)
        if ((texts[next] && texts[next] == word[next - 1].text)
            || (texts[next - 1] && texts[next - 1] == word[next].text))
            return true;
    return false;
}

/// Whether a symbol of the word from @p first up to @p end, and the neighbours it has there, were
/// read from glyphs that follow each other.
bool isInStep(const LineGlyphs& line, std::size_t symbol, std::size_t first, std::size_t end)
{
    return areInStep(line, std::max(first + 1, symbol) - 1, std::min(end, symbol + 2));
}

/// Whether a word that the dictionary knows may yet be wrong there: in the case it starts with, and
/// in the marks around it.
bool mayBeWrong(const ReadSymbol& symbol, bool isFirst, const QString& text)
{
    return isSmallMark(symbol.text) || (isFirst && symbol.text.toUpper() == text.toUpper());
}

/// Sets the symbols right from @p first up to @p end, those of one word.
void repairWord(LineGlyphs& line, std::size_t first, std::size_t end, const GlyphMemory& memory)
{
    const std::span<ReadSymbol> word(line.reading->symbols.data() + first, end - first);
    std::vector<std::optional<QString>> texts(word.size());
    const double leastLikeness = areInStep(line, first, end) ? 0 : leastLikenessOutOfStep;
    for (std::size_t at = 0; at < word.size(); ++at) {
        const bool isSettled = word[at].isOfKnownWord && at > 0 && !isSmallMark(word[at].text);
        if (!isSettled && isInStep(line, first + at, first, end))
            texts[at] = betterText(line, first + at, memory, leastLikeness);
    }
    if (areShifted(word, texts))
        return;
    for (std::size_t at = 0; at < word.size(); ++at)
        if (texts[at] && (!word[at].isOfKnownWord || mayBeWrong(word[at], at == 0, *texts[at])))
            word[at].text = *texts[at];
}

void repairLine(LineGlyphs& line, const GlyphMemory& memory)
{
    std::size_t first = 0;
    for (const auto& word : wordsOf(std::span<const ReadSymbol>(line.reading->symbols))) {
        repairWord(line, first, first + word.size(), memory);
        first += word.size();
    }
}

} // namespace

void repairByGlyphs(std::vector<LineGlyphs>& lines)
{
    GlyphMemory memory;
    for (const LineGlyphs& line : lines)
        learnLine(line, memory);
    for (LineGlyphs& line : lines) {
        repairLine(line, memory);
        fillOmissions(line, memory);
    }
}

} // namespace Platform

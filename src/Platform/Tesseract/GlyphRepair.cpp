#include "Platform/Tesseract/GlyphRepair.h"

#include "Platform/Tesseract/GlyphAlignment.h"
#include "Platform/Tesseract/GlyphMemory.h"
#include "Platform/Tesseract/TextRepair.h"

#include <algorithm>
#include <cmath>
#include <optional>

namespace Platform {

namespace {

/// How much a word says of its letters.
constexpr int sureWeight = 4;
constexpr int likelyWeight = 1;
constexpr double likelyConfidence = 93;
/// A letter gives way to one with so much more weight, and at least so much.
constexpr double leastWeight = 6;
constexpr double leastMajority = 8;
constexpr double leastLikeness = 0.5;
/// How far from its glyph a symbol may stand, in letter heights.
constexpr double widestMisfit = 0.25;

/// A line, and which glyph each of its symbols was read from.
struct LineGlyphs {
    LineReading* reading = nullptr;
    double letterHeight = 1;
    std::vector<Glyph> glyphs;
    std::vector<std::optional<std::size_t>> partners;
};

std::vector<double> centresOf(const LineReading& reading)
{
    std::vector<double> centres;
    for (const ReadSymbol& symbol : reading.symbols)
        centres.push_back(symbol.centre);
    return centres;
}

/// Whether the symbols from @p first up to @p end were read from glyphs that follow each other,
/// where these stand.
bool areInStep(const LineGlyphs& line, std::size_t first, std::size_t end)
{
    for (std::size_t symbol = first; symbol < end; ++symbol) {
        if (!line.partners[symbol]
            || *line.partners[symbol] != *line.partners[first] + (symbol - first))
            return false;
        const Glyph& glyph = line.glyphs[*line.partners[symbol]];
        if (std::abs(line.reading->symbols[symbol].centre - centreOf(glyph))
            > widestMisfit * line.letterHeight)
            return false;
    }
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
    const LineGlyphs& line, std::size_t symbol, const GlyphMemory& memory)
{
    const QString bars = QStringLiteral("lI|");
    const QString& text = line.reading->symbols[symbol].text;
    const std::vector<GlyphMemory::Opinion> opinions =
        memory.recall(line.glyphs[*line.partners[symbol]]);
    if (opinions.empty() || opinions.front().text == text || opinions.front().weight < leastWeight
        || opinions.front().likeness < leastLikeness)
        return std::nullopt;
    const bool areBars = bars.contains(text) && bars.contains(opinions.front().text);
    if (areBars && !isToldFromBars(line, symbol, memory))
        return std::nullopt;
    for (const GlyphMemory::Opinion& own : opinions)
        if (own.text == text && (areBars || own.weight * leastMajority > opinions.front().weight))
            return std::nullopt;
    return opinions.front().text;
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

/// Sets the symbols right from @p first up to @p end, those of one word.
bool repairWord(LineGlyphs& line, std::size_t first, std::size_t end, const GlyphMemory& memory)
{
    if (!areInStep(line, first, end))
        return false;
    const std::span<ReadSymbol> word(line.reading->symbols.data() + first, end - first);
    std::vector<std::optional<QString>> texts;
    // Of a word that the dictionary knows, no more can be wrong than the case it starts with.
    const bool isKnown = word.front().isOfKnownWord;
    for (std::size_t symbol = first; symbol < (isKnown ? first + 1 : end); ++symbol)
        texts.push_back(betterText(line, symbol, memory));
    texts.resize(word.size());
    if (areShifted(word, texts))
        return false;
    bool isChanged = false;
    for (std::size_t at = 0; at < word.size(); ++at) {
        if (!texts[at]
            || (word[at].isOfKnownWord && texts[at]->toUpper() != word[at].text.toUpper()))
            continue;
        word[at].text = *texts[at];
        isChanged = true;
    }
    return isChanged;
}

bool repairLine(LineGlyphs& line, const GlyphMemory& memory)
{
    bool isChanged = false;
    std::size_t first = 0;
    for (const auto& word : wordsOf(std::span<const ReadSymbol>(line.reading->symbols))) {
        isChanged |= repairWord(line, first, first + word.size(), memory);
        first += word.size();
    }
    return isChanged;
}

} // namespace

void repairByGlyphs(const PageLayout& page, std::vector<LineReading>& readings)
{
    for (std::size_t level = 0; level < page.levels.size(); ++level) {
        std::vector<LineGlyphs> lines;
        for (std::size_t index = 0; index < readings.size(); ++index) {
            const PlacedLine& placed = page.lines[index];
            if (std::size_t(placed.level) != level || readings[index].symbols.empty())
                continue;
            LineGlyphs line{&readings[index], std::max(1.0, placed.line.letterHeight),
                glyphsOf(page.levels[level].ink, page.levels[level].components, placed.line,
                    centresOf(readings[index])),
                {}};
            line.partners = align(line.reading->symbols, line.glyphs, line.letterHeight);
            lines.push_back(std::move(line));
        }
        GlyphMemory memory;
        for (const LineGlyphs& line : lines)
            learnLine(line, memory);
        for (LineGlyphs& line : lines)
            if (repairLine(line, memory))
                repair(line.reading->symbols);
    }
}

} // namespace Platform

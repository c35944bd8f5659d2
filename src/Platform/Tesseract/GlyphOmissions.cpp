#include "Platform/Tesseract/GlyphOmissions.h"

#include "Platform/TextLayout/Boxes.h"

#include <QStringList>

#include <algorithm>
#include <optional>

namespace Platform {

namespace {

/// What it takes for a glyph to be surely known: so many times the weight of any other text.
constexpr double leastWeight = 6;
constexpr double leastLikeness = 0.75;
constexpr double majorityOfLetters = 8;
/// Engines mistake small marks for each other even in words that they know.
constexpr double majorityOfMarks = 2.5;

/// What @p glyph surely is, whatever was read of it.
std::optional<QString> sureText(const Glyph& glyph, const GlyphMemory& memory)
{
    if (glyph.isCut)
        return std::nullopt;
    const std::vector<GlyphMemory::Opinion> opinions = memory.recall(glyph);
    if (opinions.empty())
        return std::nullopt;
    const GlyphMemory::Opinion& best = opinions.front();
    const double majority = isSmallMark(best.text) ? majorityOfMarks : majorityOfLetters;
    const bool isAlone = opinions.size() == 1 || opinions[1].weight * majority <= best.weight;
    if (best.weight < leastWeight || best.likeness < leastLikeness || !isAlone)
        return std::nullopt;
    return best.text;
}

/// Glyphs of a line that no symbol was read from, between symbols that were.
struct Omission {
    std::size_t symbol = 0; ///< Before which it stands, maybe the end.
    std::size_t firstGlyph = 0;
    std::size_t endGlyph = 0;
};

constexpr std::size_t longestOmission = 3;

std::vector<Omission> omissionsOf(const LineGlyphs& line)
{
    std::vector<Omission> omissions;
    // The symbols between one without a glyph and a glyph without one may all be one place off.
    if (!std::all_of(line.partners.begin(), line.partners.end(),
            [](const auto& partner) { return partner.has_value(); }))
        return omissions;
    const std::size_t count = line.partners.size();
    for (std::size_t symbol = 0; symbol <= count; ++symbol) {
        const std::size_t first = symbol == 0 ? 0 : *line.partners[symbol - 1] + 1;
        const std::size_t end = symbol == count ? line.glyphs.size() : *line.partners[symbol];
        if (first < end && end - first <= longestOmission)
            omissions.push_back({symbol, first, end});
    }
    return omissions;
}

/// What the glyphs from @p first up to @p end surely are; nothing if that isn't known of all.
std::optional<QStringList> sureTexts(
    const LineGlyphs& line, std::size_t first, std::size_t end, const GlyphMemory& memory)
{
    QStringList texts;
    for (std::size_t glyph = first; glyph < end; ++glyph) {
        const std::optional<QString> text = sureText(line.glyphs[glyph], memory);
        if (!text)
            return std::nullopt;
        texts.append(*text);
    }
    return texts;
}

/// Whether @p symbol may stand beside @p missing, which was left out, though its glyph is surely
/// @p text.
bool agrees(const ReadSymbol& symbol, const QString& text, const QStringList& missing)
{
    // If what was left out stands beside it, the symbols are one place off.
    return symbol.text == text
        || (isSmallMark(symbol.text) == isSmallMark(text) && !missing.contains(symbol.text));
}

bool startsWordAt(const LineGlyphs& line, std::size_t glyph)
{
    constexpr double leastBlank = 0.25; // In letter heights.
    return glyph == 0
        || line.glyphs[glyph].box.x() - rightOf(line.glyphs[glyph - 1].box)
        > leastBlank * line.letterHeight;
}

/// Puts @p texts, what @p omission leaves out, into the line.
void insert(LineGlyphs& line, const Omission& omission, const QStringList& texts)
{
    std::vector<ReadSymbol>& symbols = line.reading->symbols;
    const std::size_t place = omission.symbol;
    if (place < symbols.size())
        symbols[place].startsWord = startsWordAt(line, omission.endGlyph);
    std::vector<ReadSymbol> added;
    std::vector<std::optional<std::size_t>> partners;
    for (std::size_t glyph = omission.firstGlyph; glyph < omission.endGlyph; ++glyph) {
        const ReadSymbol& beside = symbols[std::min(place, symbols.size() - 1)];
        added.push_back({texts[int(glyph - omission.firstGlyph)], centreOf(line.glyphs[glyph]),
            startsWordAt(line, glyph), beside.confidence, beside.isOfKnownWord});
        partners.emplace_back(glyph);
    }
    symbols.insert(symbols.begin() + std::ptrdiff_t(place), added.begin(), added.end());
    line.partners.insert(
        line.partners.begin() + std::ptrdiff_t(place), partners.begin(), partners.end());
}

/// Puts what @p omission leaves out into the line, where its glyphs are surely known, and what was
/// read beside it agrees with its glyphs or gives way to what these surely are.
void fillOmission(LineGlyphs& line, const Omission& omission, const GlyphMemory& memory)
{
    std::vector<ReadSymbol>& symbols = line.reading->symbols;
    const auto texts = sureTexts(line, omission.firstGlyph, omission.endGlyph, memory);
    if (!texts)
        return;
    const std::size_t first = omission.symbol - (omission.symbol > 0 ? 1 : 0);
    const std::size_t end = std::min(symbols.size(), omission.symbol + 1);
    // No letter is missing in a word that the dictionary knows, unless it was read as another word.
    bool mayBeMissing = std::all_of(texts->begin(), texts->end(), isSmallMark);
    std::vector<QString> besides;
    for (std::size_t symbol = first; symbol < end; ++symbol) {
        const auto text = sureText(line.glyphs[*line.partners[symbol]], memory);
        if (!text || !agrees(symbols[symbol], *text, *texts))
            return;
        mayBeMissing |= !symbols[symbol].isOfKnownWord || *text != symbols[symbol].text;
        besides.push_back(*text);
    }
    if (!mayBeMissing)
        return;
    for (std::size_t symbol = first; symbol < end; ++symbol)
        symbols[symbol].text = besides[symbol - first];
    insert(line, omission, *texts);
}

} // namespace

void fillOmissions(LineGlyphs& line, const GlyphMemory& memory)
{
    std::vector<Omission> omissions = omissionsOf(line);
    // From the end, so that the places of the others stay.
    std::reverse(omissions.begin(), omissions.end());
    for (const Omission& omission : omissions)
        fillOmission(line, omission, memory);
}

} // namespace Platform

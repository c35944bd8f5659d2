#include "Platform/Tesseract/GlyphAlignment.h"

#include <algorithm>
#include <cmath>
#include <cstdint>

namespace Platform {

namespace {

/// What it costs to leave a symbol or a glyph without a partner; a pair costs their distance. All
/// in letter heights.
constexpr double skipCost = 0.4;

enum class Step : std::uint8_t { pair, skipSymbol, skipGlyph };

} // namespace

std::vector<std::optional<std::size_t>> align(
    const std::vector<ReadSymbol>& symbols, const std::vector<Glyph>& glyphs, double letterHeight)
{
    const std::size_t columns = glyphs.size() + 1;
    std::vector<Step> steps((symbols.size() + 1) * columns, Step::skipGlyph);
    std::vector<double> above(columns);
    for (std::size_t glyph = 0; glyph < columns; ++glyph)
        above[glyph] = skipCost * double(glyph);
    std::vector<double> row(columns);
    for (std::size_t symbol = 1; symbol <= symbols.size(); ++symbol) {
        row[0] = skipCost * double(symbol);
        steps[symbol * columns] = Step::skipSymbol;
        for (std::size_t glyph = 1; glyph < columns; ++glyph) {
            const double distance =
                std::abs(symbols[symbol - 1].centre - centreOf(glyphs[glyph - 1])) / letterHeight;
            const double pair = above[glyph - 1] + distance;
            const double withoutSymbol = above[glyph] + skipCost;
            const double withoutGlyph = row[glyph - 1] + skipCost;
            row[glyph] = std::min({pair, withoutSymbol, withoutGlyph});
            steps[symbol * columns + glyph] = row[glyph] == pair ? Step::pair
                : row[glyph] == withoutSymbol                    ? Step::skipSymbol
                                                                 : Step::skipGlyph;
        }
        std::swap(above, row);
    }

    std::vector<std::optional<std::size_t>> partners(symbols.size());
    for (std::size_t symbol = symbols.size(), glyph = glyphs.size(); symbol > 0;) {
        const Step step = steps[symbol * columns + glyph];
        if (step == Step::pair)
            partners[symbol - 1] = glyph - 1;
        symbol -= step != Step::skipGlyph ? 1 : 0;
        glyph -= step != Step::skipSymbol ? 1 : 0;
    }
    return partners;
}

} // namespace Platform

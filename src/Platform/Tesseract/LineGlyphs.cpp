#include "Platform/Tesseract/LineGlyphs.h"

#include <algorithm>
#include <cmath>
#include <cstdint>

namespace Platform {

namespace {

/// What it costs to leave a symbol or a glyph without a partner; a pair costs their distance. All
/// in letter heights.
constexpr double skipCost = 0.4;

enum class Step : std::uint8_t { pair, skipSymbol, skipGlyph };

std::vector<double> centresOf(const LineReading& reading)
{
    std::vector<double> centres;
    for (const ReadSymbol& symbol : reading.symbols)
        centres.push_back(symbol.centre);
    return centres;
}

/// Whether @p left and @p right are the two strokes of one quotation mark: alike, side by side and
/// all in the upper half of the line.
bool areQuotationMark(const Glyph& left, const Glyph& right, double letterHeight)
{
    constexpr double widestStep = 0.3;
    const double highest = -letterHeight * 0.3;
    return left.drop < highest && right.drop < highest && std::abs(left.drop - right.drop) <= 1
        && std::abs(left.box.height() - right.box.height()) <= 1
        && std::abs(left.box.width() - right.box.width()) <= 1
        && left.box.height() > left.box.width()
        && centreOf(right) - centreOf(left) <= widestStep * letterHeight;
}

/// Both glyphs as one.
Glyph joined(const Glyph& left, const Glyph& right)
{
    Glyph both;
    both.box = left.box | right.box;
    both.drop = std::max(left.drop, right.drop);
    both.ink.resize(std::size_t(both.box.width()) * std::size_t(both.box.height()));
    both.inkSum = left.inkSum + right.inkSum;
    for (const Glyph* part : {&left, &right}) {
        const QPoint corner = part->box.topLeft() - both.box.topLeft();
        for (int row = 0; row < part->box.height(); ++row)
            std::copy_n(part->ink.begin() + std::ptrdiff_t(row) * part->box.width(),
                part->box.width(),
                both.ink.begin() + std::ptrdiff_t(row + corner.y()) * both.box.width()
                    + corner.x());
    }
    return both;
}

void joinQuotationMarks(std::vector<Glyph>& glyphs, double letterHeight)
{
    for (std::size_t right = 1; right < glyphs.size(); ++right) {
        if (!areQuotationMark(glyphs[right - 1], glyphs[right], letterHeight))
            continue;
        glyphs[right - 1] = joined(glyphs[right - 1], glyphs[right]);
        glyphs.erase(glyphs.begin() + std::ptrdiff_t(right));
    }
}

bool runsFromRightToLeft(const LineReading& reading)
{
    return reading.symbols.front().centre > reading.symbols.back().centre;
}

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

std::vector<LineGlyphs> lineGlyphsOf(
    const PageLayout& page, std::size_t level, std::vector<LineReading>& readings)
{
    std::vector<LineGlyphs> lines;
    for (std::size_t index = 0; index < readings.size(); ++index) {
        const PlacedLine& placed = page.lines[index];
        LineReading& reading = readings[index];
        if (std::size_t(placed.level) != level || reading.symbols.empty())
            continue;
        LineGlyphs line{&reading, std::max(1.0, placed.line.letterHeight),
            glyphsOf(page.levels[level].ink, page.levels[level].components, placed.line,
                centresOf(reading)),
            {}};
        joinQuotationMarks(line.glyphs, line.letterHeight);
        if (runsFromRightToLeft(reading))
            line.partners.resize(reading.symbols.size());
        else
            line.partners = align(reading.symbols, line.glyphs, line.letterHeight);
        lines.push_back(std::move(line));
    }
    return lines;
}

} // namespace Platform

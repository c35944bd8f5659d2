#include "Platform/Tesseract/PageSpacing.h"

#include "Platform/TextLayout/Boxes.h"
#include "Platform/TextLayout/Cells.h"
#include "Platform/TextLayout/Quantiles.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <map>
#include <optional>

namespace Platform {

namespace {

/// The room between two glyphs that follow each other, each read as one symbol.
struct Space {
    std::size_t symbol = 0; ///< The one on its right.
    int width = 0; ///< Pixels without ink.
    double step = 0; ///< From the centre of the one glyph to that of the other.
};

std::vector<Space> spacesOf(const LineGlyphs& line)
{
    std::vector<Space> spaces;
    for (std::size_t symbol = 1; symbol < line.partners.size(); ++symbol) {
        const auto& left = line.partners[symbol - 1];
        const auto& right = line.partners[symbol];
        if (!left || !right || *right != *left + 1)
            continue;
        const Glyph& before = line.glyphs[*left];
        const Glyph& after = line.glyphs[*right];
        spaces.push_back({symbol, std::max(0, after.box.x() - rightOf(before.box)),
            centreOf(after) - centreOf(before)});
    }
    return spaces;
}

bool isBlank(const LineGlyphs& line, const Space& space)
{
    return line.reading->symbols[space.symbol].startsWord;
}

/// How many cells @p space leads on.
double cellsOver(const LineGlyphs& line, const Space& space, const Cells& cells)
{
    const double place = centreOf(line.glyphs[*line.partners[space.symbol]]);
    return cells.numberAt(place) - cells.numberAt(place - space.step);
}

/// Whether most of the blanks that the engine sees lead over a cell. The digits of printed numbers
/// stand in cells as well, but not the blanks between them.
bool haveBlanksOfCells(const LineGlyphs& line, const std::vector<Space>& spaces, const Cells& cells)
{
    int blanks = 0;
    int wide = 0;
    for (const Space& space : spaces) {
        if (!isBlank(line, space))
            continue;
        ++blanks;
        wide += cellsOver(line, space, cells) >= 2 ? 1 : 0;
    }
    return wide * 10 >= blanks * 6;
}

/// The cells of @p line where it is set in a typewriter face.
std::optional<Cells> cellsIn(const LineGlyphs& line, const std::vector<Space>& spaces)
{
    constexpr std::size_t fewestSteps = 6;
    std::vector<double> steps;
    for (const Space& space : spaces)
        if (!isBlank(line, space))
            steps.push_back(space.step);
    if (steps.size() < fewestSteps)
        return std::nullopt;
    std::vector<double> places;
    for (const Glyph& glyph : line.glyphs)
        places.push_back(centreOf(glyph));
    const std::optional<Cells> cells = cellsOf(places, medianOf(std::move(steps)));
    return cells && haveBlanksOfCells(line, spaces, *cells) ? cells : std::nullopt;
}

/// In a typewriter face a blank is a cell of its own.
void respaceByCells(LineGlyphs& line, const std::vector<Space>& spaces, const Cells& cells)
{
    for (const Space& space : spaces)
        line.reading->symbols[space.symbol].startsWord = cellsOver(line, space, cells) >= 2;
}

/// Of the spaces in faces of one size, how many of each width the engine takes for blanks.
class Widths {
public:
    void add(const Space& space, bool isBlank)
    {
        ++(isBlank ? m_blanks : m_others)[std::size_t(std::min(space.width, widest))];
    }

    /// The widest space that is hardly ever one, with all narrower ones; -1 for none.
    int widestOther() const
    {
        int width = -1;
        while (width < widest && isMostly(m_others, m_blanks, width + 1))
            ++width;
        return width;
    }

private:
    static constexpr int widest = 63;
    using Counts = std::array<int, widest + 1>;

    static bool isMostly(const Counts& these, const Counts& those, int width)
    {
        constexpr int majority = 12;
        return those[std::size_t(width)] * majority <= these[std::size_t(width)];
    }

    Counts m_blanks{};
    Counts m_others{};
};

/// The engine sees blanks between the letters of some faces. Where all the other spaces of the page
/// that are so narrow are none, neither are these.
void closeNarrow(LineGlyphs& line, const Widths& widths)
{
    const std::vector<Space> spaces = spacesOf(line);
    std::vector<double> blanks;
    for (const Space& space : spaces)
        if (isBlank(line, space))
            blanks.push_back(space.width);
    if (blanks.empty())
        return;
    // A line may be set narrower than others of its height.
    const double narrow = 0.45 * quantileOf(blanks, 0.75);
    std::vector<ReadSymbol>& symbols = line.reading->symbols;
    for (const Space& space : spaces)
        if (space.width <= narrow && space.width <= widths.widestOther()
            && haveUprightSides(symbols[space.symbol - 1], symbols[space.symbol]))
            symbols[space.symbol].startsWord = false;
}

} // namespace

void respacePage(std::vector<LineGlyphs>& lines)
{
    std::map<int, Widths> widthsByHeight;
    std::vector<LineGlyphs*> printed;
    for (LineGlyphs& line : lines) {
        const std::vector<Space> spaces = spacesOf(line);
        if (const std::optional<Cells> cells = cellsIn(line, spaces)) {
            respaceByCells(line, spaces, *cells);
            continue;
        }
        for (const Space& space : spaces)
            widthsByHeight[int(std::lround(line.letterHeight))].add(space, isBlank(line, space));
        printed.push_back(&line);
    }
    for (LineGlyphs* line : printed)
        closeNarrow(*line, widthsByHeight[int(std::lround(line->letterHeight))]);
}

} // namespace Platform

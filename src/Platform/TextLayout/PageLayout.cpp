#include "Platform/TextLayout/PageLayout.h"

#include "Platform/TextLayout/Patches.h"
#include "Platform/TextLayout/Pixels.h"
#include "Platform/TextLayout/Quantiles.h"
#include "Platform/TextLayout/ReadingOrder.h"
#include "Platform/TextLayout/Slivers.h"

#include <algorithm>

namespace Platform {

namespace {

constexpr int mostLevels = 4;
constexpr int smallestSide = 24; ///< Of a level worth looking at, in its own pixels.
/// The least letter height that a reduced level is asked for, in its own pixels: smaller
/// letters are seen well enough on the level below.
constexpr double leastReducedHeight = 13;

/// Half the size, each pixel the mean of four.
QImage halved(const QImage& image)
{
    QImage half(image.width() / 2, image.height() / 2, QImage::Format_RGB32);
    for (int y = 0; y < half.height(); ++y) {
        const Pixel* upper = pixelRow(image, 2 * y);
        const Pixel* lower = pixelRow(image, 2 * y + 1);
        auto* row = reinterpret_cast<Pixel*>(half.scanLine(y));
        for (std::ptrdiff_t x = 0; x < half.width(); ++x) {
            // Two channels at a time, with room for the sum of four between them.
            constexpr Pixel redAndBlue = 0x00ff00ff;
            const Pixel a = upper[2 * x];
            const Pixel b = upper[2 * x + 1];
            const Pixel c = lower[2 * x];
            const Pixel d = lower[2 * x + 1];
            const Pixel even = (a & redAndBlue) + (b & redAndBlue) + (c & redAndBlue)
                + (d & redAndBlue) + 0x00020002;
            const Pixel odd = ((a >> 8) & redAndBlue) + ((b >> 8) & redAndBlue)
                + ((c >> 8) & redAndBlue) + ((d >> 8) & redAndBlue) + 0x00020002;
            row[x] = ((even >> 2) & redAndBlue) | (((odd >> 2) & redAndBlue) << 8);
        }
    }
    return half;
}

struct LevelLines {
    LayoutLevel level;
    std::vector<TextLine> lines;
};

LevelLines levelOf(const QImage& image, int reduction, const std::stop_token& stop)
{
    LayoutLevel level{reduction, inkOf(image, stop), {}};
    level.components = componentsOf(level.ink, stop);
    dropSlivers(image, level.components, level.ink);
    std::vector<TextLine> lines = textLinesOf(level.components);
    if (flattenPatches(image, level.components, lines, level.ink)) {
        level.components = componentsOf(level.ink, stop);
        lines = textLinesOf(level.components);
    }
    return {std::move(level), std::move(lines)};
}

QRect enlarged(const QRect& box, int factor)
{
    return {box.x() * factor, box.y() * factor, box.width() * factor, box.height() * factor};
}

/// Whether @p box holds whole lines of much smaller letters, and so is no line itself.
bool isBlockOfLines(const QRect& box, const std::vector<PlacedLine>& finer)
{
    return std::count_if(finer.begin(), finer.end(), [&](const PlacedLine& line) {
        return liesMostlyIn(line.box, box) && line.box.height() * 10 < box.height() * 6
            && line.line.components.size() >= 4;
    }) >= 2;
}

/// Adds the lines of a level. Large letters were seen in fragments on finer levels too, and a
/// picture may look like a line here; which of them is text only reading tells.
void addLines(int level, int reduction, std::vector<TextLine> found, std::vector<PlacedLine>& lines)
{
    std::vector<PlacedLine> large;
    for (TextLine& line : found) {
        const QRect box = enlarged(line.box, reduction);
        if (level == 0 || (line.letterHeight >= leastReducedHeight && !isBlockOfLines(box, lines)))
            large.push_back({std::move(line), level, box});
    }
    std::move(large.begin(), large.end(), std::back_inserter(lines));
}

/// Drops what can't be text beside the lines that surely are lines: a single shape that is wider
/// or taller than any letter of theirs. Reading it would cost as much as reading a word.
void dropShapes(const std::vector<LayoutLevel>& levels, std::vector<PlacedLine>& lines)
{
    constexpr std::size_t sureLetters = 4;
    constexpr std::size_t fewLetters = 2;
    constexpr double tallestShortLine = 3.6;
    constexpr double lowestShortLine = 0.4;
    constexpr double tallestLetter = 0.9;
    const auto heightOf = [&](const PlacedLine& line) {
        return line.line.letterHeight * levels[std::size_t(line.level)].reduction;
    };
    std::vector<double> heights;
    for (const PlacedLine& line : lines)
        if (line.level == 0 && line.line.components.size() >= sureLetters)
            heights.push_back(heightOf(line));
    if (heights.empty())
        return;
    const double typical = medianOf(std::move(heights));
    std::erase_if(lines, [&](const PlacedLine& line) {
        const std::size_t letters = line.line.components.size();
        const double aspect = double(line.box.width()) / line.box.height();
        if (letters > fewLetters)
            return false;
        const bool isTall = line.box.height() > tallestLetter * typical;
        if (letters == 1 && aspect < 2 && (line.level > 0 || (isTall && aspect > 1.2)))
            return true;
        return heightOf(line) > tallestShortLine * typical
            || heightOf(line) < lowestShortLine * typical;
    });
}

} // namespace

bool liesMostlyIn(const QRect& box, const QRect& container)
{
    const QRect common = box.intersected(container);
    return 2 * std::int64_t(common.width()) * common.height()
        > std::int64_t(box.width()) * box.height();
}

PageLayout layoutOf(const QImage& image, const std::stop_token& stop)
{
    PageLayout page;
    QImage scaled = image;
    for (int level = 0; level < mostLevels; ++level) {
        if (level > 0)
            scaled = halved(scaled);
        if (level > 0 && std::min(scaled.width(), scaled.height()) < smallestSide)
            break;
        LevelLines seen = levelOf(scaled, 1 << level, stop);
        if (stop.stop_requested())
            return {};
        page.levels.push_back(std::move(seen.level));
        addLines(level, 1 << level, std::move(seen.lines), page.lines);
    }
    dropShapes(page.levels, page.lines);
    putInReadingOrder(page.lines, [](const PlacedLine& line) { return line.box; });
    return page;
}

} // namespace Platform

#include "Platform/Tesseract/TextFilter.h"

#include <algorithm>

namespace Platform {

namespace {

/// How much a reading says: its length, weighed by how sure it is.
double weightOf(const LineReading& reading)
{
    constexpr double coinToss = 50;
    return double(reading.symbols.size()) * std::max(0.0, reading.confidence - coinToss);
}

bool isText(const PlacedLine& placed, const LineReading& reading)
{
    (void)placed;
    return !reading.symbols.empty();
}

/// Of a line of large letters and the smaller ones that lie in it, drops the side that says less.
void settleOverlaps(
    const PageLayout& page, const std::vector<LineReading>& readings, std::vector<char>& isKept)
{
    for (std::size_t large = 0; large < page.lines.size(); ++large) {
        if (page.lines[large].level == 0)
            continue;
        std::vector<std::size_t> smaller;
        double smallerWeight = 0;
        for (std::size_t line = 0; line < page.lines.size(); ++line) {
            if (!isKept[line] || page.lines[line].level >= page.lines[large].level
                || !liesMostlyIn(page.lines[line].box, page.lines[large].box))
                continue;
            smaller.push_back(line);
            smallerWeight += weightOf(readings[line]);
        }
        if (smallerWeight >= weightOf(readings[large])) {
            isKept[large] = isKept[large] && smaller.empty();
            continue;
        }
        for (const std::size_t line : smaller)
            isKept[line] = false;
    }
}

} // namespace

std::vector<int> linesWithText(const PageLayout& page, const std::vector<LineReading>& readings)
{
    std::vector<char> isKept(page.lines.size());
    for (std::size_t line = 0; line < page.lines.size(); ++line)
        isKept[line] = isText(page.lines[line], readings[line]);
    settleOverlaps(page, readings, isKept);
    std::vector<int> kept;
    for (std::size_t line = 0; line < page.lines.size(); ++line)
        if (isKept[line])
            kept.push_back(int(line));
    return kept;
}

} // namespace Platform

#include "Platform/Tesseract/WordSpacing.h"

#include "Platform/TextLayout/Quantiles.h"

#include <algorithm>
#include <cmath>
#include <optional>

namespace Platform {

namespace {

/// Of the steps from one character to the next in a typewriter face, this share is one cell long,
/// and of those over a blank this share is a whole number of cells.
constexpr double agreeingShare = 0.8;
constexpr double agreeingBlanks = 0.6;
constexpr std::size_t leastSteps = 6;
constexpr double pitchTolerance = 0.13; // Of the pitch.
constexpr double blankTolerance = 0.2;

/// The distance from one character to the next where it is the same everywhere.
std::optional<double> pitchOf(const std::vector<ReadSymbol>& symbols)
{
    std::vector<double> steps;
    std::vector<double> blankSteps;
    for (std::size_t next = 1; next < symbols.size(); ++next)
        (symbols[next].startsWord ? blankSteps : steps)
            .push_back(symbols[next].centre - symbols[next - 1].centre);
    if (steps.size() < leastSteps)
        return std::nullopt;
    const double pitch = medianOf(steps);
    if (pitch <= 0)
        return std::nullopt;
    const auto agreeing = std::count_if(steps.begin(), steps.end(),
        [&](double step) { return std::abs(step - pitch) <= pitchTolerance * pitch; });
    const auto wholeCells = std::count_if(blankSteps.begin(), blankSteps.end(), [&](double step) {
        return std::abs(step / pitch - std::round(step / pitch)) <= blankTolerance;
    });
    const bool isTypewriter = double(agreeing) >= agreeingShare * double(steps.size())
        && double(wholeCells) >= agreeingBlanks * double(blankSteps.size());
    return isTypewriter ? std::optional(pitch) : std::nullopt;
}

double widthOf(const InkGap& gap)
{
    return gap.right - gap.left;
}

double centreOf(const InkGap& gap)
{
    return (gap.left + gap.right) / 2;
}

/// Where a word that starts with the symbol of this number would be cut off, across.
double boundaryBefore(const std::vector<ReadSymbol>& symbols, std::size_t symbol)
{
    return (symbols[symbol - 1].centre + symbols[symbol].centre) / 2;
}

/// The number of the gap nearest to @p place among those that @p isFree, or nothing within
/// @p reach.
std::optional<std::size_t> nearestGap(
    const std::vector<InkGap>& gaps, const std::vector<char>& isFree, double place, double reach)
{
    std::optional<std::size_t> nearest;
    for (std::size_t gap = 0; gap < gaps.size(); ++gap) {
        const double distance = std::abs(centreOf(gaps[gap]) - place);
        if (isFree[gap] && distance <= reach) {
            nearest = gap;
            reach = distance;
        }
    }
    return nearest;
}

/// Gives each word the gap that is nearest to its start. What the engine says of the other words
/// and gaps is an error of one kind or the other.
struct Matching {
    std::vector<std::size_t> wordsWithoutGap; ///< The numbers of the symbols that start them.
    std::vector<InkGap> gapsWithoutWord;
};

Matching match(
    const std::vector<ReadSymbol>& symbols, const std::vector<InkGap>& gaps, double reach)
{
    Matching result;
    std::vector<char> isFree(gaps.size(), true);
    for (std::size_t symbol = 1; symbol < symbols.size(); ++symbol) {
        if (!symbols[symbol].startsWord)
            continue;
        if (const auto gap = nearestGap(gaps, isFree, boundaryBefore(symbols, symbol), reach))
            isFree[*gap] = false;
        else
            result.wordsWithoutGap.push_back(symbol);
    }
    for (std::size_t gap = 0; gap < gaps.size(); ++gap)
        if (isFree[gap])
            result.gapsWithoutWord.push_back(gaps[gap]);
    return result;
}

/// The symbol whose start is nearest to @p gap, of those that start no word yet.
std::optional<std::size_t> symbolAfter(
    const std::vector<ReadSymbol>& symbols, const InkGap& gap, double reach)
{
    std::optional<std::size_t> nearest;
    for (std::size_t symbol = 1; symbol < symbols.size(); ++symbol) {
        const double distance = std::abs(boundaryBefore(symbols, symbol) - centreOf(gap));
        if (!symbols[symbol].startsWord && distance <= reach) {
            nearest = symbol;
            reach = distance;
        }
    }
    return nearest;
}

std::vector<InkGap> atLeast(const std::vector<InkGap>& gaps, double width)
{
    std::vector<InkGap> wide;
    std::copy_if(gaps.begin(), gaps.end(), std::back_inserter(wide),
        [&](const InkGap& gap) { return widthOf(gap) >= width; });
    return wide;
}

/// In a typewriter face a blank leaves more than a cell without ink, and nothing else does.
void respaceByPitch(std::vector<ReadSymbol>& symbols, const std::vector<InkGap>& gaps, double pitch)
{
    const Matching matching = match(symbols, atLeast(gaps, 0.93 * pitch), pitch);
    for (const std::size_t symbol : matching.wordsWithoutGap)
        symbols[symbol].startsWord = false;
    for (const InkGap& gap : matching.gapsWithoutWord)
        if (const auto symbol = symbolAfter(symbols, gap, 0.7 * pitch))
            symbols[*symbol].startsWord = true;
}

/// Only letters have even sides: a "1" or a comma leaves room of its own.
bool areLetters(const ReadSymbol& a, const ReadSymbol& b)
{
    return a.text.back().isLetter() && b.text.front().isLetter();
}

/// In any other face a gap as wide as those that the engine took for blanks is one as well.
void respaceByWidth(std::vector<ReadSymbol>& symbols, const std::vector<InkGap>& gaps)
{
    std::vector<double> blanks;
    std::vector<double> others;
    std::vector<char> isFree(gaps.size(), true);
    for (std::size_t symbol = 1; symbol < symbols.size(); ++symbol) {
        if (!symbols[symbol].startsWord)
            continue;
        const double reach = symbols[symbol].centre - symbols[symbol - 1].centre;
        if (const auto gap = nearestGap(gaps, isFree, boundaryBefore(symbols, symbol), reach)) {
            isFree[*gap] = false;
            blanks.push_back(widthOf(gaps[*gap]));
        }
    }
    for (std::size_t gap = 0; gap < gaps.size(); ++gap)
        if (isFree[gap])
            others.push_back(widthOf(gaps[gap]));
    if (blanks.empty() || others.size() < leastSteps)
        return;
    const double blank = medianOf(blanks);
    const double wideOther = quantileOf(others, 0.9);
    if (blank < 1.6 * wideOther + 1)
        return;
    const Matching matching = match(symbols, atLeast(gaps, (blank + wideOther) / 2), 2 * blank);
    for (const InkGap& gap : matching.gapsWithoutWord) {
        const auto symbol = symbolAfter(symbols, gap, blank);
        if (!symbol || !areLetters(symbols[*symbol - 1], symbols[*symbol]))
            continue;
        const bool isSure = widthOf(gap) >= (2 * blank + wideOther) / 3;
        if (isSure || !haveUprightSides(symbols[*symbol - 1], symbols[*symbol]))
            symbols[*symbol].startsWord = true;
    }
}

} // namespace

void respace(std::vector<ReadSymbol>& symbols, const std::vector<InkGap>& gaps)
{
    if (const std::optional<double> pitch = pitchOf(symbols))
        respaceByPitch(symbols, gaps, *pitch);
    else
        respaceByWidth(symbols, gaps);
}

} // namespace Platform

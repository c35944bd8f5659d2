#include "Platform/TextLayout/TableRows.h"

#include "Platform/TextLayout/Boxes.h"
#include "Platform/TextLayout/Quantiles.h"

#include <algorithm>
#include <cstdlib>

namespace Platform {

namespace {

constexpr std::size_t fewestRows = 4;
constexpr int widestCell = 12; // In heights of its text.
/// How far the middles of a row's cells may be apart: one has descenders, the other doesn't.
constexpr double offRow = 0.3; // In heights of its text.
constexpr double inRowsShare = 0.8;
constexpr double evenShare = 0.85;

std::vector<int> sortedMiddles(const std::vector<QRect>& boxes)
{
    std::vector<int> middles;
    middles.reserve(boxes.size());
    for (const QRect& box : boxes)
        middles.push_back(middleOf(box));
    std::sort(middles.begin(), middles.end());
    return middles;
}

bool areMostlyShort(const std::vector<QRect>& boxes)
{
    const auto count = std::count_if(boxes.begin(), boxes.end(),
        [](const QRect& box) { return box.width() <= widestCell * box.height(); });
    return 2 * std::size_t(count) > boxes.size();
}

/// Whether most of @p boxes stand beside one of @p others.
bool standInRowsOf(const std::vector<QRect>& boxes, const std::vector<QRect>& others)
{
    const std::vector<int> middles = sortedMiddles(others);
    const auto count = std::count_if(boxes.begin(), boxes.end(), [&](const QRect& box) {
        const int reach = int(offRow * box.height());
        const auto next = std::lower_bound(middles.begin(), middles.end(), middleOf(box) - reach);
        return next != middles.end() && *next <= middleOf(box) + reach;
    });
    return double(count) >= inRowsShare * double(boxes.size());
}

/// Whether most rows of @p boxes follow each other at one step.
bool areEven(const std::vector<QRect>& boxes)
{
    const std::vector<int> middles = sortedMiddles(boxes);
    const int height = boxes.front().height();
    std::vector<int> steps;
    for (std::size_t next = 1; next < middles.size(); ++next)
        if (const int step = middles[next] - middles[next - 1]; 2 * step > height)
            steps.push_back(step);
    if (steps.size() + 1 < fewestRows)
        return false;
    const int typical = medianOf(steps);
    const auto even = std::count_if(steps.begin(), steps.end(),
        [&](int step) { return 4 * std::abs(step - typical) <= typical; });
    return double(even) >= evenShare * double(steps.size());
}

} // namespace

bool areCellsOfOneTable(const std::vector<QRect>& left, const std::vector<QRect>& right)
{
    return std::min(left.size(), right.size()) >= fewestRows
        && (areMostlyShort(left) || areMostlyShort(right)) && areEven(left) && areEven(right)
        && standInRowsOf(left, right) && standInRowsOf(right, left);
}

} // namespace Platform

#include "Platform/TextLayout/Cells.h"

#include <algorithm>
#include <complex>
#include <numbers>
#include <vector>

namespace Platform {

namespace {

/// How well @p places stand in the middle of cells of this pitch: 1 where all do, near 0 where they
/// stand anywhere. It is the length of the mean of the directions on a dial that a cell turns once.
double fitOf(std::span<const double> places, Cells& cells)
{
    std::complex<double> sum;
    for (const double place : places)
        sum += std::polar(1.0, 2 * std::numbers::pi * place / cells.pitch);
    cells.phase = std::arg(sum) / (2 * std::numbers::pi) * cells.pitch;
    return std::abs(sum) / double(places.size());
}

/// The pitch in this share of @p pitch around it that @p places fit best, where they fit at all.
std::optional<Cells> bestCells(
    std::span<const double> places, double pitch, double range, double finestChange)
{
    // A few letters of any face stand in cells by chance.
    double bestFit = 0.7 + 2.0 / double(places.size());
    std::optional<Cells> best;
    const int reach = int(range / finestChange) + 1;
    for (int at = -reach; at <= reach; ++at) {
        Cells cells{pitch * (1 + at * finestChange), 0};
        const double fit = fitOf(places, cells);
        if (fit < bestFit)
            continue;
        bestFit = fit;
        best = cells;
    }
    return best;
}

} // namespace

std::optional<Cells> cellsOf(std::span<const double> places, double step)
{
    constexpr std::size_t fewestPlaces = 7;
    constexpr std::size_t firstPlaces = 24;
    constexpr double finestStep = 0.15; // Of a cell, at the last place.
    if (places.size() < fewestPlaces || step <= 0)
        return std::nullopt;
    // From the first one on: far from it the phase would turn with the least change of the pitch.
    std::vector<double> fromFirst(places.begin(), places.end());
    for (double& place : fromFirst)
        place -= places.front();

    // The more places, the finer the pitch: few of them tell where to look with more.
    Cells cells{step, 0};
    double range = 0.06;
    std::size_t count = std::min(firstPlaces, fromFirst.size());
    for (;; count = std::min(2 * count, fromFirst.size())) {
        const double finestChange = finestStep / std::max(1.0, fromFirst[count - 1] / cells.pitch);
        const std::optional<Cells> best =
            bestCells(std::span(fromFirst).first(count), cells.pitch, range, finestChange);
        if (!best)
            return std::nullopt;
        cells = *best;
        if (count == fromFirst.size())
            break;
        range = 1.5 * finestChange;
    }
    cells.phase += places.front();
    return cells;
}

} // namespace Platform

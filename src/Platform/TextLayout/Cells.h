#pragma once

#include <cmath>
#include <optional>
#include <span>

namespace Platform {

/// The cells of a line in a typewriter face, across.
struct Cells {
    double pitch = 1; ///< From the middle of a cell to that of the next, in pixels.
    double phase = 0; ///< The middle of one cell.

    /// The number of the cell that this place lies in.
    double numberAt(double place) const { return std::round((place - phase) / pitch); }
    /// How far from the middle of its cell this place lies, in cells: at most a half.
    double offsetOf(double place) const
    {
        return std::abs((place - phase) / pitch - numberAt(place));
    }
};

/// The cells that letters with their middles at @p places stand in, or nothing if they are set in
/// another face: in these letters stand in the middle of a cell, but for some ("l", ",") that stand
/// a fifth of one beside it. @p places grow; @p step is about the pitch.
std::optional<Cells> cellsOf(std::span<const double> places, double step);

} // namespace Platform

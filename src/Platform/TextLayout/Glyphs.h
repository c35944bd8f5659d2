#pragma once

#include "Platform/TextLayout/TextLines.h"

#include <QRect>

#include <cstdint>
#include <vector>

namespace Platform {

/// What stands in a line as one character: a component, or a few above each other ("i", "é", ":").
struct Glyph {
    QRect box; ///< Pixels of the ink image.
    int drop = 0; ///< How far its lowest row is below the line's baseline.
    /// Row by row, 255 where its ink is strongest.
    std::vector<std::uint8_t> ink;
    int inkSum = 0;
    bool isCut = false; ///< Cut out of letters that touch, maybe in a wrong place.
};

/// How far across the middle of @p glyph stands.
inline double centreOf(const Glyph& glyph)
{
    return glyph.box.x() + glyph.box.width() / 2.0;
}

/// The glyphs of @p line from left to right. Letters that touch are cut between @p centres, which
/// tell where the characters stand, where there is the least ink.
std::vector<Glyph> glyphsOf(const InkImage& ink, const Components& components, const TextLine& line,
    const std::vector<double>& centres);

/// How unlike two glyphs are, placed on each other in the best way: 0 for the same ink at the same
/// height over the baseline, 2 for nothing in common. Sizes and heights may differ by a pixel,
/// since letters may stand on fractions of one. What is beyond @p limit is told as 2.
double unlikeness(const Glyph& a, const Glyph& b, double limit);

} // namespace Platform

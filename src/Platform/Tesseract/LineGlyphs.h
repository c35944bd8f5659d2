#pragma once

#include "Platform/Tesseract/LineReading.h"
#include "Platform/TextLayout/Glyphs.h"
#include "Platform/TextLayout/PageLayout.h"

#include <optional>
#include <vector>

namespace Platform {

/// A line that was read, and which glyph each of its symbols was read from.
struct LineGlyphs {
    LineReading* reading = nullptr; ///< Must outlive this.
    double letterHeight = 1; ///< The line's.
    std::vector<Glyph> glyphs; ///< From left to right.
    /// For each symbol a number of a glyph; these only grow. Nothing for a symbol that shares a
    /// glyph with its neighbour, or that has none, and for all of a line that runs from right to
    /// left.
    std::vector<std::optional<std::size_t>> partners;
};

/// The lines of @p page on one level that were read, with their glyphs.
std::vector<LineGlyphs> lineGlyphsOf(
    const PageLayout& page, std::size_t level, std::vector<LineReading>& readings);

/// Which of @p glyphs each of @p symbols was read from, as LineGlyphs tells it.
std::vector<std::optional<std::size_t>> align(
    const std::vector<ReadSymbol>& symbols, const std::vector<Glyph>& glyphs, double letterHeight);

} // namespace Platform

#pragma once

#include "Platform/Tesseract/WordSpacing.h"
#include "Platform/TextLayout/Glyphs.h"

#include <optional>
#include <vector>

namespace Platform {

/// Which glyph each symbol was read from: numbers that only grow. Nothing for a symbol that shares
/// a glyph with its neighbour, or that has none. @p letterHeight is the line's.
std::vector<std::optional<std::size_t>> align(
    const std::vector<ReadSymbol>& symbols, const std::vector<Glyph>& glyphs, double letterHeight);

} // namespace Platform

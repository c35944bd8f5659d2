#pragma once

#include "Platform/Tesseract/LineGlyphs.h"

#include <vector>

namespace Platform {

/// Sets the words' boundaries right where their glyphs tell it, those of the line or those of all
/// @p lines, which are of one level.
void respacePage(std::vector<LineGlyphs>& lines);

} // namespace Platform

#pragma once

#include "Platform/Tesseract/LineGlyphs.h"

#include <vector>

namespace Platform {

/// Sets right what was read of a letter against what the same pixels were read as in sure words of
/// @p lines, those of one level: names of files and numbers have no dictionary that would tell.
void repairByGlyphs(std::vector<LineGlyphs>& lines);

} // namespace Platform

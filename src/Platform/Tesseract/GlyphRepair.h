#pragma once

#include "Platform/Tesseract/TesseractEngine.h"
#include "Platform/TextLayout/PageLayout.h"

#include <vector>

namespace Platform {

/// Sets right what was read of a letter against what the same pixels were read as in sure words of
/// the page: names of files and numbers have no dictionary that would tell. What stands in a line
/// and was not read at all is added where the page knows it.
void repairByGlyphs(const PageLayout& page, std::vector<LineReading>& readings);

} // namespace Platform

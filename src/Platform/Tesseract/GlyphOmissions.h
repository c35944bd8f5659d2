#pragma once

#include "Platform/Tesseract/GlyphMemory.h"
#include "Platform/Tesseract/LineGlyphs.h"

namespace Platform {

/// Puts into @p line what the engine left out of it, such as one of several equal letters, where
/// @p memory surely knows the glyphs and what was read beside them agrees.
void fillOmissions(LineGlyphs& line, const GlyphMemory& memory);

} // namespace Platform

#pragma once

#include "Platform/Tesseract/LineReading.h"

#include <vector>

namespace Platform {

/// A stretch of a line without ink, in pixels of the line.
struct InkGap {
    double left = 0;
    double right = 0;
};

/// Puts the words' boundaries where the line has its gaps. The engine misses narrow blanks and
/// sees one where a typewriter face leaves room around a dot. @p gaps stand from left to right.
void respace(std::vector<ReadSymbol>& symbols, const std::vector<InkGap>& gaps);

} // namespace Platform

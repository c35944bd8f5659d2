#pragma once

#include "Platform/Tesseract/TesseractEngine.h"
#include "Platform/TextLayout/PageLayout.h"

#include <vector>

namespace Platform {

/// Makes capitals of letters that stand alone, look like theirs and are as tall ("S" in a key cap):
/// the engine sees each line in one height. There is one reading for each line of @p page.
void settleLoneLetters(const PageLayout& page, std::vector<LineReading>& readings);

/// The numbers of the lines whose readings are text, in reading order: not pictures that were
/// taken for letters, nor what a line of larger or smaller letters in the same place says better.
/// There is one reading for each line of @p page.
std::vector<int> linesWithText(const PageLayout& page, const std::vector<LineReading>& readings);

} // namespace Platform

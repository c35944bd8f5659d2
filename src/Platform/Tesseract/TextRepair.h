#pragma once

#include "Platform/Tesseract/LineReading.h"

#include <vector>

namespace Platform {

/// Mends what an engine trained on books takes for another character on screens, where the
/// neighbours leave no doubt: a bar for "I", an at sign for a slashed zero, letters in hexadecimal
/// numbers, the key "Ctrl", and a brace that a parenthesis closes.
void repair(std::vector<ReadSymbol>& symbols);

} // namespace Platform

#pragma once

#include "Platform/TextLayout/Components.h"

#include <QRect>

#include <vector>

namespace Platform {

/// Components that stand in a row like the letters of one line of text.
struct TextLine {
    QRect box; ///< Around all its components, in pixels of the ink image.
    std::vector<int> components; ///< Indices into Components::items, from left to right.
    /// From the top of "d" to the bottom of "p" in this line's font; an estimate where the line
    /// has letters of one height only. Pixels.
    double letterHeight = 0;
    int baseline = 0; ///< The y of the letters' feet: the first row below them.
};

/// Groups components into lines. A gap wider than about one and a half letters ends a line, so
/// that cells and columns come apart. What has no text's shape belongs to no line.
std::vector<TextLine> textLinesOf(const Components& components);

} // namespace Platform

#pragma once

#include "Platform/TextLayout/TextLines.h"

#include <QImage>

namespace Platform {

/// How wide the letters of a prepared line are. The recogniser's work grows with the width of a
/// line, and where there are many letters to go by, narrow ones are read as well.
enum class LetterWidth {
    natural,
    byLength, ///< The longer the line, the narrower.
};

/// A line prepared for the recogniser.
struct LineImage {
    QImage pixels; ///< Dark on white, of QImage::Format_Grayscale8.
    double scale = 1; ///< Pixels of this picture to one of the line's level, across.
    double left = 0; ///< Where this picture's left edge stands on the level.

    /// Across, from this picture to the level.
    double toLevel(double x) const { return left + x / scale; }
};

/// A picture of @p line alone, in full contrast, scaled to letters of one height and padded with
/// blank. The line's neighbours are left out even where they reach into its box.
LineImage lineImageOf(
    const InkImage& ink, const Components& components, const TextLine& line, LetterWidth width);

} // namespace Platform

#pragma once

#include "Platform/TextLayout/TextLines.h"

#include <QImage>

namespace Platform {

/// How a line is prepared for the recogniser.
struct LineScale {
    double letterHeight = 26; ///< Of the prepared line, from ascender to descender, in pixels.
};

/// A picture of @p line alone, dark on white, stretched to full contrast, scaled and padded with
/// blank: QImage::Format_Grayscale8. The line's neighbours are left out even where they reach into
/// its box.
QImage lineImageOf(const InkImage& ink, const Components& components, const TextLine& line,
    const LineScale& scale = {});

} // namespace Platform

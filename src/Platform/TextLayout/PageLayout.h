#pragma once

#include "Platform/TextLayout/TextLines.h"

#include <QImage>
#include <QRect>

#include <stop_token>
#include <vector>

namespace Platform {

/// The picture at one scale, for letters of a range of sizes.
struct LayoutLevel {
    int reduction = 1; ///< Pixels of the picture to one of this level, across and down.
    InkImage ink;
    Components components;
};

/// A line, and the level on which it is best seen.
struct PlacedLine {
    TextLine line; ///< In pixels of its level.
    int level = 0;
    QRect box; ///< In pixels of the picture.
};

/// Where the text of a picture stands.
struct PageLayout {
    std::vector<LayoutLevel> levels;
    /// In reading order. A line of a reduced level may lie over finer ones: only one side is text.
    std::vector<PlacedLine> lines;
};

/// Whether more than half of @p box lies in @p container.
bool liesMostlyIn(const QRect& box, const QRect& container);

/// Finds the lines of @p image, of QImage::Format_RGB32, with letters from 6 to 500 px tall.
/// Nothing once @p stop is requested. Any thread.
PageLayout layoutOf(const QImage& image, const std::stop_token& stop);

} // namespace Platform

#pragma once

#include <QIODevice>

#include <optional>

namespace Platform {

/// The horizontal dots per inch that the picture in @p file tells of itself; nothing where it tells
/// none, or one that no picture can have. Asks the file, since a QImage holds the screen's
/// resolution where the file tells none. Reads PNG, JPEG, TIFF, BMP and WebP.
///
/// @p file is open and can seek, and stands at its start afterwards. Reads a few kilobytes at most.
/// Any thread.
std::optional<double> imageDotsPerInch(QIODevice& file);

} // namespace Platform

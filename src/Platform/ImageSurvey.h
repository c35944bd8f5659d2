#pragma once

#include "Platform/Error.h"

#include <QImage>

#include <filesystem>
#include <optional>

namespace Platform {

/// What a list shows of an image file.
struct ImageSurvey {
    QSize pixelSize; ///< As the file's header tells, before turning.
    std::optional<double> dotsPerInch; ///< Horizontal; only where the file itself tells.
    QImage thumbnail; ///< Upright; null where the pixels can't be decoded.
};

/// Looks at the regular file at @p path. The thumbnail's long edge is @p thumbnailLongEdge
/// pixels, less where the picture itself is smaller; no edge is less than one.
///
/// Fails where no header can be read, with Error::Kind::unreadable where there is no picture to be
/// had. Made for many files in a row: PNG files as encodePng writes them are never held as a whole.
/// Blocks, but never without an end. Any thread, several at a time.
Result<ImageSurvey> surveyImageFile(const std::filesystem::path& path, int thumbnailLongEdge);

} // namespace Platform

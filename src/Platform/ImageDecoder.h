#pragma once

#include "Platform/Error.h"
#include "Platform/ImageLimits.h"

#include <QImage>

#include <filesystem>

namespace Platform {

struct DecodedImage {
    QImage image;
    QSize fileSize; ///< In pixels as the file tells, before turning and scaling.
    std::optional<double> dotsPerInch; ///< Horizontal; only where the file itself tells.
};

/// Reads the picture at @p path upright as its orientation tag says, with at most 8 bits a channel
/// and in its own colour space. Regular files and pipes only; of several pictures in a file, the
/// first.
///
/// Fails with Error::Kind::unreadable where there is no picture to be had, and with
/// Error::Kind::failed where there is one that can't be decoded. Blocks, but never without an end
/// and never with more memory than the limits imply. Any thread.
Result<DecodedImage> decodeImageFile(
    const std::filesystem::path& path, const ImageLimits& limits = {});

} // namespace Platform

#pragma once

#include "Platform/Error.h"
#include "Platform/ImageDecoder.h"

#include <QIODevice>

namespace Platform {

/// Whether the first bytes are those of a HEIC or AVIF file.
bool isHeif(QIODevice& file);

/// Reads the primary picture of a HEIC or AVIF file, upright and in its own colour space, but not
/// scaled. libheif is loaded for the first such file; fails with Error::Kind::unreadable where it
/// isn't installed. Any thread.
Result<DecodedImage> decodeHeif(QIODevice& file, const ImageLimits& limits);

} // namespace Platform

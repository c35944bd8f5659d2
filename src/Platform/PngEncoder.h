#pragma once

#include "Platform/Error.h"

#include <QByteArray>
#include <QImage>

namespace Platform {

/// The bytes of a PNG file that shows @p image: 8 bits a channel, without an alpha channel where
/// every pixel is opaque. It carries the image's colour space, sRGB where the image tells none, and
/// @p dotsPerInch where that is above zero.
///
/// Made for screens: fast first, and then small. Fails with Error::Kind::failed for an image that
/// is null or too large for a file or for the memory. Any thread.
Result<QByteArray> encodePng(const QImage& image, double dotsPerInch);

} // namespace Platform

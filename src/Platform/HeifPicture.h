#pragma once

#include "Platform/HeifLibrary.h"

#include <QByteArray>

#include <array>

namespace Platform {

/// What is known of a decoded HEIC or AVIF picture. Plain, as it goes from one process to another
/// at the start of a file, with the pixels, the ICC profile and the EXIF block behind it.
struct HeifPicture {
    int width = 0;
    int height = 0;
    int fileWidth = 0; ///< Before the picture was turned upright.
    int fileHeight = 0;
    int rowBytes = 0;
    bool hasAlpha = false; ///< RGBA instead of RGB.
    bool isPremultiplied = false;
    bool hasCodedColours = false;
    bool isLinear = false;
    std::array<float, 8> colours{}; ///< White, red, green and blue: x and y of each.
    qint64 profileSize = 0;
    qint64 exifSize = 0;

    qint64 pixelBytes() const { return qint64{rowBytes} * height; }
};

/// Decodes the primary picture of @p bytes with libheif into the empty file @p descriptor. Calls
/// nothing but libheif and the system; meant for a process of its own, since the library's decoders
/// crash and take gigabytes for the right thousand bytes.
bool decodeHeifInto(
    int descriptor, const HeifLibrary& heif, const QByteArray& bytes, qint64 mostPixels);

} // namespace Platform

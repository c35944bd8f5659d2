#pragma once

#include "Platform/ByteSource.h"

namespace Platform {

/// What a directory of TIFF tags says of its picture, in a TIFF file or as the EXIF data in
/// another.
struct ExifTags {
    std::optional<double> dotsPerInch; ///< Horizontal; only where it is told and can be true.
    int orientation = 1; ///< 1 to 8 as EXIF counts them: how the picture lies in its file.

    bool operator==(const ExifTags&) const = default;
};

/// Reads the first directory behind the TIFF header at the start of @p source. Tags that are broken
/// or missing are left as they are by default. Reads some hundred bytes, whatever they claim.
ExifTags readExifTags(const ByteSource& source);

/// @p value where a picture can have that many dots in an inch: no scanner or film comes near a
/// hundred thousand, and a claim beyond, or of none, would only do harm to arithmetic.
std::optional<double> credibleDotsPerInch(double value);

} // namespace Platform

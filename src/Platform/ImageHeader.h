#pragma once

#include "Platform/ByteSource.h"
#include "Platform/ExifTags.h"

#include <QSize>

namespace Platform {

/// The formats whose files are looked into beside their decoder.
enum class FileKind { other, png, jpeg, gif, tiff, bmp, webp, ico };

/// By the first bytes.
FileKind fileKind(const ByteSource& source);

/// The place of the content of the first chunk of this type before the pixels of a PNG file.
std::optional<qint64> findPngChunk(const ByteSource& source, QByteArrayView type);

/// The place where the TIFF header of the EXIF data of a PNG, JPEG, WebP or TIFF file begins.
std::optional<qint64> findExif(const ByteSource& source);

/// What the EXIF data of a picture say, if it has any.
ExifTags exifTags(const ByteSource& source);

/// The size of the canvas of a GIF file.
QSize gifSize(const ByteSource& source);

/// The size of the PNG file that is the first icon of an icon file; invalid where there is none.
QSize icoPngSize(const ByteSource& source);

/// Whether a JPEG file has more scans than any encoder writes. Each makes the decoder go over all
/// the pixels, for a dozen bytes. Reads all of the file.
bool hasEndlessScans(const ByteSource& source);

/// Whether a PNG or JPEG file holds its rows one after the other, so that a decoder needs a few of
/// them at a time only: PNG without interlacing, JPEG with a single scan.
bool comesRowByRow(const ByteSource& source);

} // namespace Platform

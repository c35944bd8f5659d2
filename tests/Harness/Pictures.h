#pragma once

#include <QByteArray>
#include <QImage>

/// Picture files for tests, good and bad.
namespace Harness {

/// What Qt writes of @p image in @p format.
QByteArray encoded(const QImage& image, const char* format);

/// A file of tests/Platform/Pictures.
QByteArray pictureFile(const char* name);

/// A chunk of a PNG file, with its sum.
QByteArray pngChunk(const QByteArray& type, const QByteArray& content);

/// @p png with @p chunk right behind its header.
QByteArray withPngChunk(QByteArray png, const QByteArray& chunk);

/// @p png with a header that claims another size, and is right otherwise.
QByteArray pngClaiming(QByteArray png, quint32 width, quint32 height);

enum class PngColour : char { grayBits = 0, rgb = 2 };

/// A black PNG that is right in all, of a thousandth of the bytes that it holds: one bit a pixel
/// of gray, 24 of colour.
QByteArray blackPng(quint32 width, quint32 height, PngColour colour);

/// @p jpeg with a frame header that claims another size.
QByteArray jpegClaiming(QByteArray jpeg, quint16 width, quint16 height);

/// @p jpeg with a segment of @p content right behind its start.
QByteArray withJpegSegment(QByteArray jpeg, quint8 marker, const QByteArray& content);

/// EXIF data, beginning with their TIFF header, that tell nothing but @p orientation.
QByteArray exifOrientation(quint16 orientation);

/// The simple WebP file @p webp, with a picture of this size, and EXIF data.
QByteArray withWebpExif(const QByteArray& webp, const QSize& size, const QByteArray& exif);

/// The first frame of the GIF file @p gif, @p count times.
QByteArray repeatedGif(const QByteArray& gif, int count);

/// The most memory that this process ever held.
qint64 peakMegabytes();

} // namespace Harness

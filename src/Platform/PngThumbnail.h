#pragma once

#include <QColorSpace>
#include <QIODevice>
#include <QImage>

#include <optional>

namespace Platform {

/// What stands before the pixels of a PNG file such as encodePng writes of opaque images: 8 bits of
/// red, green and blue, row by row, with nothing told that changes their looks but a colour space.
struct PlainPng {
    QSize size;
    QColorSpace colourSpace;
    qint64 pixelsPlace = 0; ///< Of the first chunk with pixels.
};

/// Nothing where @p file is no such file. Any thread.
std::optional<PlainPng> readPlainPng(QIODevice& file);

/// The largest reduction that shrunkPng can do; at least by 2 it has to be.
constexpr int largestPngReduction = 256;

/// The picture of the file in @p size, each pixel the mean of those it covers: whole ones, so that
/// small reductions should rather be done by scaledDown. Holds some rows at a time only. Null where
/// the pixels are damaged. Any thread; throws std::bad_alloc.
QImage shrunkPng(QIODevice& file, const PlainPng& png, QSize size);

} // namespace Platform

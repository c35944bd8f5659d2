#pragma once

#include <QImage>

#include <algorithm>
#include <cstdint>
#include <cstdlib>

namespace Platform {

/// A pixel of QImage::Format_RGB32.
using Pixel = std::uint32_t;

inline const Pixel* pixelRow(const QImage& image, int y)
{
    return reinterpret_cast<const Pixel*>(image.constScanLine(y));
}

/// The channel @p shift bits up (0 blue, 8 green, 16 red).
inline int channelOf(Pixel pixel, int shift)
{
    return int((pixel >> shift) & 0xff);
}

/// How far the channels are apart, the farthest of them: 0 to 255.
inline int channelDistance(Pixel a, Pixel b)
{
    const int red = std::abs(channelOf(a, 16) - channelOf(b, 16));
    const int green = std::abs(channelOf(a, 8) - channelOf(b, 8));
    const int blue = std::abs(channelOf(a, 0) - channelOf(b, 0));
    return std::max({red, green, blue});
}

/// How far the channels are apart in the mean: 0 to 255. Unlike the farthest channel, the mean
/// keeps the coverage of subpixel-rendered glyphs.
inline int inkBetween(Pixel a, Pixel b)
{
    const int red = std::abs(channelOf(a, 16) - channelOf(b, 16));
    const int green = std::abs(channelOf(a, 8) - channelOf(b, 8));
    const int blue = std::abs(channelOf(a, 0) - channelOf(b, 0));
    return (red + green + blue) / 3;
}

} // namespace Platform

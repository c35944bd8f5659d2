#pragma once

#include <QImage>

namespace Platform {

/// @p image at @p size, which is nowhere larger: each pixel is the mean of what it covers. Keeps
/// the colour space, takes any format, answers one of 8 bits a channel, and needs no memory beside
/// the picture answered, unlike QImage::scaled, which converts all of its source first. Null where
/// there is no memory for it. Any thread.
QImage scaledDown(const QImage& image, QSize size);

} // namespace Platform

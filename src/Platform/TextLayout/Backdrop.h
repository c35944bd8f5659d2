#pragma once

#include <QImage>

namespace Platform {

/// @p image in QImage::Format_RGB32. Where it is transparent it is laid over black or white,
/// whichever what is visible stands out from: text on a clear background has no other.
/// Shares the pixels of an image that is opaque already.
QImage opaqueImageOf(const QImage& image);

/// @p image, of QImage::Format_RGB32, with @p margin pixels more on each side, in the colour that
/// most of its edge has: a cut close around a letter shows too little of what the letter stands on.
QImage framedImageOf(const QImage& image, int margin);

} // namespace Platform

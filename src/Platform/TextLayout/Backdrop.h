#pragma once

#include <QImage>

namespace Platform {

/// @p image in QImage::Format_RGB32. Where it is transparent it is laid over black or white,
/// whichever what is visible stands out from: text on a clear background has no other.
/// Shares the pixels of an image that is opaque already.
QImage opaqueImageOf(const QImage& image);

} // namespace Platform

#pragma once

#include <QImage>

/// Pictures as they are painted. A painter knows no colour spaces, so they are in sRGB; and it is
/// fast in two formats only, RGB32 where all is opaque and premultiplied ARGB32. Any thread.
namespace Lumenote::DisplayImage {

/// Whether @p image can be painted as it is.
bool isPaintable(const QImage& image);

/// @p image to be painted, one pixel for each of its own. Shares its pixels where it is paintable
/// already; takes a while where it isn't. Null where there is no image, or no memory.
QImage from(const QImage& image);

/// The size of a smaller copy of a picture of @p size: its long edge is @p longEdge, less where the
/// picture itself is smaller; no edge is less than one.
QSize reducedSize(const QSize& size, int longEdge);

} // namespace Lumenote::DisplayImage

#pragma once

#include <QImage>

namespace Lumenote {

/// @p image with its colours spread by about a Gaussian of @p sigma pixels: three passes of a box.
/// The edges are continued. For small pictures; premultiplied ARGB.
QImage blurred(const QImage& image, double sigma);

} // namespace Lumenote

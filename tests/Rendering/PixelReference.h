#pragma once

#include "Model/Annotation.h"

#include <QColor>
#include <QImage>

#include <array>
#include <span>

/// What pixels must be, computed without any drawing: distances, overlaps and samples tell how much
/// of a pixel a mark covers, and the compositing formula mixes the colours.
namespace PixelReference {

/// The colours of the marks in the image's own space.
struct Colors {
    QColor shape{255, 59, 48};
    QColor highlight{255, 204, 0, 102};
};

/// Premultiplied red, green, blue and alpha, and how far off a drawn channel may be: not at all
/// where an opaque mark covers all of the pixel, or nothing does.
struct Pixel {
    std::array<double, 4> channels{};
    double tolerance = 0;
};

Pixel expected(const QImage& image, std::span<const Lumenote::Annotation> annotations,
    const Colors& colors, int x, int y);

/// A pixel of 32 bits as it is: QImage::pixel() would divide by alpha and round.
QRgb bitsAt(const QImage& image, int x, int y);

} // namespace PixelReference

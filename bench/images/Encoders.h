#pragma once

#include <QByteArray>
#include <QImage>

#include <array>

namespace Lumenote::Bench {

/// A way to write a picture as PNG.
struct PngWriter {
    const char* name;
    QByteArray (*encode)(const QImage& image); ///< Of an RGB32 image.
};

QByteArray withLumenote(const QImage& image);
QByteArray withQImageSave(const QImage& image);
QByteArray withLibpng(const QImage& image);
QByteArray withLibpngLevel1(const QImage& image);
QByteArray withLibspng(const QImage& image);

/// The first is what the others are compared with.
inline constexpr std::array pngWriters{
    PngWriter{"QImage::save", withQImageSave},
    PngWriter{"lumenote", withLumenote},
    PngWriter{"libpng", withLibpng},
    PngWriter{"libpng level 1", withLibpngLevel1},
    PngWriter{"libspng", withLibspng},
};

} // namespace Lumenote::Bench

#pragma once

#include "Platform/Error.h"

#include <QByteArray>
#include <QImage>

#include <chrono>

namespace Platform {

/// What reading one picture may cost, whatever the file claims.
struct ImageLimits {
    qint64 fileBytes = 512LL << 20;
    std::chrono::milliseconds pipeSilence{10'000}; ///< Without a byte from the other side.
    qint64 pixels = 8192LL * 8192; ///< Of the picture answered; one with more comes scaled down.
    /// What the picture may take once decoded and before it is scaled; one with more is refused.
    /// Decoding and scaling together take up to twice this.
    qint64 decodedBytes = 640LL << 20;
};

/// Reads the picture at @p path, which is the file system's bytes, upright as its orientation tag
/// says and with at most 8 bits a channel. Regular files and pipes only; of several pictures in a
/// file, the first.
///
/// Fails with Error::Kind::unreadable where there is no picture to be had, and with
/// Error::Kind::failed where there is one that can't be decoded. Blocks, but never without an end
/// and never with more memory than the limits imply. Any thread.
Result<QImage> decodeImageFile(const QByteArray& path, const ImageLimits& limits = {});

} // namespace Platform

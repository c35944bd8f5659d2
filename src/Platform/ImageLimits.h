#pragma once

#include <QtGlobal>

#include <chrono>
#include <optional>

namespace Platform {

/// What reading one picture may cost, whatever the file claims.
struct ImageLimits {
    qint64 fileBytes = 512LL << 20;
    std::chrono::milliseconds pipeSilence{10'000}; ///< Without a byte from the other side.
    /// Of the file, also where little memory is needed since it is scaled while it is decoded.
    qint64 filePixels = 512LL << 20;
    qint64 pixels = 8192LL * 8192; ///< Of the picture answered; one with more comes scaled down.
    std::optional<int> longEdge = std::nullopt; ///< In pixels, of the picture answered; likewise.
    /// What the picture may take while it is decoded and before it is scaled; one with more is
    /// refused. Decoding and scaling together take up to twice this.
    qint64 decodedBytes = 640LL << 20;
};

} // namespace Platform

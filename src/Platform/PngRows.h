#pragma once

#include "Platform/Compression.h"
#include "Platform/PngFilter.h"

#include <QImage>

#include <array>
#include <vector>

namespace Platform {

/// What a few rows are like.
struct PngSample {
    quint64 bytes = 0;
    quint64 changedBytes = 0; ///< Unlike the byte to the left and unlike the one above.
    std::array<quint64, pngDifferenceFilters.size()> differences{}; ///< Their sum by each filter.
};

/// The pixels of an image as the bytes of PNG rows, a few rows at a time: 8 bits a channel, red,
/// green and blue, with alpha only where a pixel isn't opaque. Throws std::bad_alloc.
class PngRows {
public:
    explicit PngRows(const QImage& image);

    bool isOpaque() const { return m_isOpaque; }
    int height() const { return m_image.height(); }
    /// Of one row together with its filter's number.
    size_t rowBytes() const;

    /// The rows from @p first on, all filtered alike. Valid until the next call.
    Bytes filtered(int first, int count, PngFilter filter);

    PngSample sample(int first, int count);

private:
    void pack(int first, int count);

    QImage m_image;
    bool m_isOpaque;
    size_t m_channels;
    std::vector<uchar> m_packed; ///< The row above the first one, and the rows.
    int m_first = 0;
    int m_count = 0; ///< Of the rows that are packed.
    std::vector<uchar> m_filtered;
};

} // namespace Platform

#include "Platform/ImageScaler.h"

#include <QColorSpace>

#include <algorithm>
#include <vector>

namespace Platform {

namespace {

/// How a row or column of the source falls on those of the picture answered: on one of them, or
/// also on the next.
struct Share {
    int target = 0;
    float here = 0;
    float next = 0;
};

std::vector<Share> shares(int from, int to)
{
    std::vector<Share> shares(static_cast<size_t>(from));
    for (int index = 0; index < from; ++index) {
        // In units of which a source pixel has as many as `to`, and a target pixel `from`.
        const auto start = qint64{index} * to;
        const auto target = start / from;
        const auto inTarget = std::min<qint64>(to, (target + 1) * from - start);
        shares[static_cast<size_t>(index)] = {.target = static_cast<int>(target),
            .here = static_cast<float>(inTarget) / static_cast<float>(from),
            .next = static_cast<float>(to - inTarget) / static_cast<float>(from)};
    }
    return shares;
}

/// Sums of the four channels of the pixels of a row, and of one more that nothing falls on.
class SumRow {
public:
    explicit SumRow(int width)
        : m_sums(static_cast<size_t>(width + 1) * channels)
    {
    }

    void clear() { std::fill(m_sums.begin(), m_sums.end(), 0.F); }

    void addPixels(const uchar* pixels, const std::vector<Share>& columns)
    {
        for (const auto& column : columns) {
            auto* sum = m_sums.data() + static_cast<size_t>(column.target) * channels;
            for (size_t channel = 0; channel < channels; ++channel) {
                const auto value = static_cast<float>(pixels[channel]);
                sum[channel] += value * column.here;
                sum[channel + channels] += value * column.next;
            }
            pixels += channels;
        }
    }

    void addRow(const SumRow& row, float factor)
    {
        for (size_t index = 0; index < m_sums.size(); ++index)
            m_sums[index] += row.m_sums[index] * factor;
    }

    void writePixels(uchar* pixels) const
    {
        for (size_t index = 0; index < m_sums.size() - channels; ++index)
            pixels[index] = static_cast<uchar>(std::min(m_sums[index] + 0.5F, 255.F));
    }

private:
    static constexpr size_t channels = 4;

    std::vector<float> m_sums;
};

} // namespace

QImage scaledDown(const QImage& image, QSize size)
{
    // Transparent pixels count for nothing, so their colours must not either.
    const auto format =
        image.hasAlphaChannel() ? QImage::Format_ARGB32_Premultiplied : QImage::Format_RGB32;
    QImage scaled(size, format);
    if (scaled.isNull())
        return scaled;
    scaled.setColorSpace(image.colorSpace());
    const auto columns = shares(image.width(), size.width());
    const auto rows = shares(image.height(), size.height());
    SumRow ofSource(size.width());
    SumRow current(size.width());
    SumRow next(size.width());
    for (int y = 0; y < image.height(); ++y) {
        const auto& row = rows[static_cast<size_t>(y)];
        const auto line = image.copy(0, y, image.width(), 1).convertToFormat(format);
        ofSource.clear();
        ofSource.addPixels(line.constScanLine(0), columns);
        current.addRow(ofSource, row.here);
        const bool isLastOfTarget =
            y + 1 == image.height() || rows[static_cast<size_t>(y) + 1].target > row.target;
        if (isLastOfTarget) {
            next.addRow(ofSource, row.next);
            current.writePixels(scaled.scanLine(row.target));
            std::swap(current, next);
            next.clear();
        }
    }
    return scaled;
}

} // namespace Platform

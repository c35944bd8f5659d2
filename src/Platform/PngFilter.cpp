#include "Platform/PngFilter.h"

#include <algorithm>
#include <cstdlib>

namespace Platform {

namespace {

/// Signed 16 bits are enough, and let the compiler take eight bytes at a time.
qint16 paeth(qint16 left, qint16 above, qint16 corner)
{
    const auto toLeft = static_cast<qint16>(std::abs(above - corner));
    const auto toAbove = static_cast<qint16>(std::abs(left - corner));
    const auto toCorner = static_cast<qint16>(std::abs(left + above - 2 * corner));
    const auto upright = toAbove <= toCorner ? above : corner;
    const auto nearest = std::min(toAbove, toCorner);
    return toLeft <= nearest ? left : upright;
}

/// Calls @p use with what tells a byte from those to the left, above, and left above.
template <typename Use>
bool withPredictor(PngFilter filter, Use use)
{
    switch (filter) {
    case PngFilter::none:
        use([](auto, auto, auto) { return 0; });
        return true;
    case PngFilter::sub:
        use([](auto left, auto, auto) { return left; });
        return true;
    case PngFilter::up:
        use([](auto, auto above, auto) { return above; });
        return true;
    case PngFilter::average:
        use([](auto left, auto above, auto) { return (left + above) / 2; });
        return true;
    case PngFilter::paeth:
        use(paeth);
        return true;
    }
    return false;
}

template <typename Predict>
void subtract(uchar* __restrict out, const uchar* __restrict row, const uchar* __restrict above,
    size_t channels, size_t size, Predict predict)
{
    for (size_t i = 0; i < channels; ++i)
        out[i] = static_cast<uchar>(row[i] - predict(0, above[i], 0));
    for (size_t i = channels; i < size; ++i)
        out[i] =
            static_cast<uchar>(row[i] - predict(row[i - channels], above[i], above[i - channels]));
}

/// Keeps what the next pixel is told from out of the memory, where it would wait for it.
template <size_t channels, typename Predict>
void add(std::span<uchar> row, const uchar* __restrict above, Predict predict)
{
    std::array<qint16, channels> left{};
    std::array<qint16, channels> corner{};
    for (size_t i = 0; i < row.size(); i += channels) {
        for (size_t channel = 0; channel < channels; ++channel) {
            auto& byte = row[i + channel];
            const qint16 up = above[i + channel];
            byte = static_cast<uchar>(byte + predict(left[channel], up, corner[channel]));
            left[channel] = byte;
            corner[channel] = up;
        }
    }
}

} // namespace

void filterPngRow(
    std::span<uchar> out, const uchar* row, const uchar* above, size_t channels, PngFilter filter)
{
    withPredictor(filter,
        [&](auto predict) { subtract(out.data(), row, above, channels, out.size(), predict); });
}

bool unfilterPngRow(std::span<uchar> row, const uchar* above, PngFilter filter)
{
    constexpr size_t channels = 3;
    return withPredictor(filter, [&](auto predict) { add<channels>(row, above, predict); });
}

} // namespace Platform

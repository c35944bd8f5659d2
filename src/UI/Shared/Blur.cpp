#include "UI/Shared/Blur.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <vector>

namespace Lumenote {

namespace {

constexpr int passes = 3;
constexpr qsizetype channels = 4;

/// Three boxes of this half width have the variance of a Gaussian of @p sigma: a box of n pixels
/// has (n² - 1) / 12.
int boxRadius(double sigma)
{
    const auto width = std::sqrt(12 * sigma * sigma / passes + 1);
    return std::max(static_cast<int>(std::lround((width - 1) / 2)), 0);
}

/// One pass over a row or column of @p count pixels that lie @p stride bytes apart.
void boxPass(uchar* first, int count, qsizetype stride, int radius, std::vector<uchar>& line)
{
    const int width = 2 * radius + 1;
    line.resize(static_cast<std::size_t>(count) * channels);
    for (int i = 0; i < count; ++i)
        std::copy_n(first + i * stride, channels, line.data() + i * channels);
    std::array<int, channels> sums{};
    const auto at = [&](int index, qsizetype channel) {
        return int{line[static_cast<std::size_t>(std::clamp(index, 0, count - 1)) * channels
            + static_cast<std::size_t>(channel)]};
    };
    for (qsizetype channel = 0; channel < channels; ++channel) {
        int& sum = sums[static_cast<std::size_t>(channel)];
        for (int i = -radius; i <= radius; ++i)
            sum += at(i, channel);
        for (int i = 0; i < count; ++i) {
            first[i * stride + channel] = static_cast<uchar>((sum + radius) / width);
            sum += at(i + radius + 1, channel) - at(i - radius, channel);
        }
    }
}

} // namespace

QImage blurred(const QImage& image, double sigma)
{
    auto result = image.convertToFormat(QImage::Format_ARGB32_Premultiplied);
    const auto radius = boxRadius(sigma);
    if (radius == 0 || result.isNull())
        return result;
    std::vector<uchar> line;
    const auto stride = result.bytesPerLine();
    auto* const bits = result.bits();
    for (int pass = 0; pass < passes; ++pass) {
        for (int y = 0; y < result.height(); ++y)
            boxPass(bits + y * stride, result.width(), channels, radius, line);
        for (int x = 0; x < result.width(); ++x)
            boxPass(bits + x * channels, result.height(), stride, radius, line);
    }
    return result;
}

} // namespace Lumenote

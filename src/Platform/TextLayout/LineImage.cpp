#include "Platform/TextLayout/LineImage.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <functional>
#include <numeric>

namespace Platform {

namespace {

/// From ascender to descender, in pixels of the prepared line.
constexpr double preparedHeight = 26;
constexpr int padding = 4; // Pixels of the prepared line.
constexpr double ascenderShare = 0.78; // Of the letter height.
constexpr int margin = 2; // Pixels of the picture, for the fringes of the letters.
// A prepared line beyond these is shrunk; no text is.
constexpr int widestLine = 8000;
constexpr int tallestLine = 200;

/// Letters within this many letter heights of each other are of one contrast.
constexpr double contrastReach = 1.0;
/// A line is drawn without grey levels where this share of its ink has one of so few values.
constexpr double aliasedShare = 0.9;
constexpr int aliasedValues = 4;

/// The strongest ink near each of the line's components, which stand from left to right: what
/// black is there. Words of a line may be of different colours.
std::vector<int> localPeaks(const Components& components, const TextLine& line)
{
    const auto count = std::ptrdiff_t(line.components.size());
    const auto item = [&](std::ptrdiff_t index) -> const Component& {
        return components.items[std::size_t(line.components[std::size_t(index)])];
    };
    const int reach = int(contrastReach * line.letterHeight);
    std::vector<int> peaks;
    peaks.reserve(line.components.size());
    for (std::ptrdiff_t index = 0; index < count; ++index) {
        int peak = item(index).peak;
        const int left = item(index).box.x() - reach;
        const int right = item(index).box.x() + item(index).box.width() + reach;
        for (std::ptrdiff_t other = index - 1; other >= 0 && index - other < 32; --other)
            if (item(other).box.x() + item(other).box.width() >= left)
                peak = std::max(peak, item(other).peak);
        for (std::ptrdiff_t other = index + 1; other < count && item(other).box.x() <= right;
             ++other)
            peak = std::max(peak, item(other).peak);
        peaks.push_back(peak);
    }
    return peaks;
}

/// The line's components in full contrast, dark on white, with the fringe of a pixel around them.
QImage contrastedCrop(
    const InkImage& ink, const Components& components, const TextLine& line, const QRect& area)
{
    QImage crop(area.size(), QImage::Format_Grayscale8);
    crop.fill(255);
    const std::vector<int> peaks = localPeaks(components, line);
    for (std::size_t index = 0; index < peaks.size(); ++index) {
        const Component& component = components.items[std::size_t(line.components[index])];
        std::array<uchar, 256> shade{};
        for (int value = 0; value < 256; ++value)
            shade[std::size_t(value)] = uchar(255 - std::min(255, value * 255 / peaks[index]));
        for (const InkRun& run : components.runsOf(component)) {
            const int left = std::max(run.left - 1, area.x());
            const int right = std::min(run.right + 1, area.x() + area.width());
            const int top = std::max(run.y - 1, area.y());
            const int bottom = std::min(run.y + 1, area.y() + area.height() - 1);
            for (int y = top; y <= bottom; ++y) {
                const std::uint8_t* from = ink.row(y);
                uchar* to = crop.scanLine(y - area.y());
                for (int x = left; x < right; ++x)
                    to[x - area.x()] = shade[from[x]];
            }
        }
    }
    return crop;
}

/// Whether @p crop was drawn without anti-aliasing.
bool isAliased(const QImage& crop)
{
    std::array<int, 256> histogram{};
    int inked = 0;
    for (int y = 0; y < crop.height(); ++y) {
        for (int x = 0; x < crop.width(); ++x) {
            const uchar value = crop.constScanLine(y)[x];
            ++histogram[value];
            inked += value < 255;
        }
    }
    histogram[255] = 0;
    std::partial_sort(
        histogram.begin(), histogram.begin() + aliasedValues, histogram.end(), std::greater<>());
    const int most = std::accumulate(histogram.begin(), histogram.begin() + aliasedValues, 0);
    return most >= aliasedShare * inked;
}

/// Each pixel with a share of its neighbours: takes the edge off steps.
QImage softened(const QImage& crop)
{
    QImage soft(crop.size(), QImage::Format_Grayscale8);
    const auto at = [&](int x, int y) -> int {
        return crop.constScanLine(
            std::clamp(y, 0, crop.height() - 1))[std::clamp(x, 0, crop.width() - 1)];
    };
    for (int y = 0; y < crop.height(); ++y)
        for (int x = 0; x < crop.width(); ++x)
            soft.scanLine(y)[x] = uchar(
                (4 * at(x, y) + at(x - 1, y) + at(x + 1, y) + at(x, y - 1) + at(x, y + 1)) / 8);
    return soft;
}

/// The share of its natural width that a line of this length, in letter heights, is given.
double narrowing(double length)
{
    constexpr double shortLine = 8;
    constexpr double longLine = 22;
    constexpr double narrowest = 0.8;
    const double share = std::clamp((length - shortLine) / (longLine - shortLine), 0.0, 1.0);
    return 1 - share * (1 - narrowest);
}

} // namespace

LineImage lineImageOf(
    const InkImage& ink, const Components& components, const TextLine& line, LetterWidth width)
{
    const QRect area = line.box.adjusted(-margin, -margin, margin, margin).intersected(ink.rect());
    QImage crop = contrastedCrop(ink, components, line, area);
    if (isAliased(crop))
        crop = softened(crop);

    const double letterHeight = std::max(1.0, line.letterHeight);
    const double narrowed =
        width == LetterWidth::byLength ? narrowing(line.box.width() / letterHeight) : 1;
    const double down =
        std::min(preparedHeight / letterHeight, double(tallestLine) / crop.height());
    const double across = std::min(down * narrowed, double(widestLine) / crop.width());
    const QSize size(std::max(1, int(std::lround(crop.width() * across))),
        std::max(1, int(std::lround(crop.height() * down))));
    const QImage scaled = crop.scaled(size, Qt::IgnoreAspectRatio, Qt::SmoothTransformation)
                              .convertToFormat(QImage::Format_Grayscale8);

    // The same room from ascender to descender, whether or not the line has any.
    const double ascender = line.baseline - ascenderShare * line.letterHeight;
    const double descender = ascender + line.letterHeight;
    const double missingAbove = (area.y() - ascender) * down;
    const double missingBelow = (descender - area.y() - area.height()) * down;
    const int above = padding + std::max(0, int(std::lround(missingAbove)));
    const int below = padding + std::max(0, int(std::lround(missingBelow)));
    QImage padded(
        size.width() + 2 * padding, size.height() + above + below, QImage::Format_Grayscale8);
    padded.fill(255);
    for (int y = 0; y < scaled.height(); ++y)
        std::copy_n(scaled.constScanLine(y), scaled.width(), padded.scanLine(y + above) + padding);
    return {padded, across, area.x() - padding / across};
}

} // namespace Platform

#include "Platform/TextLayout/LineImage.h"

#include <algorithm>
#include <array>
#include <cmath>

namespace Platform {

namespace {

constexpr int paddingAbove = 12; // Pixels of the prepared line.
constexpr int paddingBeside = 16;
constexpr int margin = 2; // Pixels of the picture, for the fringes of the letters.
constexpr int widestLine = 6000; // Prepared; a wider one is shrunk. Nothing real is wider.

/// The share of the line's ink that is stretched to black.
constexpr double blackShare = 0.995;

int strongInkOf(const std::array<int, 256>& histogram)
{
    int total = 0;
    for (int ink = 1; ink < 256; ++ink)
        total += histogram[std::size_t(ink)];
    int left = int(std::lround(total * (1 - blackShare)));
    int ink = 255;
    while (ink > 1 && (left -= histogram[std::size_t(ink)]) >= 0)
        --ink;
    return ink;
}

/// Copies the ink of the line's components, with the fringe of a pixel around them.
QImage maskedInk(
    const InkImage& ink, const Components& components, const TextLine& line, const QRect& area)
{
    QImage crop(area.size(), QImage::Format_Grayscale8);
    crop.fill(0);
    for (const int member : line.components) {
        for (const InkRun& run : components.runsOf(components.items[std::size_t(member)])) {
            const int left = std::max(run.left - 1, area.x());
            const int right = std::min(run.right + 1, area.x() + area.width());
            const int top = std::max(run.y - 1, area.y());
            const int bottom = std::min(run.y + 1, area.y() + area.height() - 1);
            for (int y = top; y <= bottom; ++y)
                std::copy(ink.row(y) + left, ink.row(y) + right,
                    crop.scanLine(y - area.y()) + (left - area.x()));
        }
    }
    return crop;
}

/// Full contrast, dark on white.
void stretch(QImage& crop)
{
    std::array<int, 256> histogram{};
    for (int y = 0; y < crop.height(); ++y)
        for (int x = 0; x < crop.width(); ++x)
            ++histogram[crop.constScanLine(y)[x]];
    const int strong = strongInkOf(histogram);
    std::array<uchar, 256> shade{};
    for (int value = 0; value < 256; ++value)
        shade[std::size_t(value)] = uchar(255 - std::min(255, value * 255 / strong));
    for (int y = 0; y < crop.height(); ++y) {
        uchar* row = crop.scanLine(y);
        for (int x = 0; x < crop.width(); ++x)
            row[x] = shade[row[x]];
    }
}

} // namespace

QImage lineImageOf(
    const InkImage& ink, const Components& components, const TextLine& line, const LineScale& scale)
{
    const QRect area = line.box.adjusted(-margin, -margin, margin, margin).intersected(ink.rect());
    QImage crop = maskedInk(ink, components, line, area);
    stretch(crop);

    const double factor = std::min(
        scale.letterHeight / std::max(1.0, line.letterHeight), double(widestLine) / crop.width());
    const QSize size(std::max(1, int(std::lround(crop.width() * factor))),
        std::max(1, int(std::lround(crop.height() * factor))));
    const QImage scaled = crop.scaled(size, Qt::IgnoreAspectRatio, Qt::SmoothTransformation)
                              .convertToFormat(QImage::Format_Grayscale8);

    QImage padded(size.width() + 2 * paddingBeside, size.height() + 2 * paddingAbove,
        QImage::Format_Grayscale8);
    padded.fill(255);
    for (int y = 0; y < scaled.height(); ++y)
        std::copy_n(scaled.constScanLine(y), scaled.width(),
            padded.scanLine(y + paddingAbove) + paddingBeside);
    return padded;
}

} // namespace Platform

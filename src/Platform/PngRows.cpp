#include "Platform/PngRows.h"

#include <QtEndian>

#include <algorithm>
#include <new>

namespace Platform {

namespace {

/// A part of @p image that shares its memory.
QImage rowsOf(const QImage& image, int first, int count)
{
    QImage rows(
        image.constScanLine(first), image.width(), count, image.bytesPerLine(), image.format());
    rows.setColorTable(image.colorTable());
    return rows;
}

const QRgb* pixelsOf(const QImage& image, int y)
{
    return reinterpret_cast<const QRgb*>(image.constScanLine(y));
}

QImage converted(const QImage& image, QImage::Format format)
{
    auto result = image.convertToFormat(format);
    if (result.isNull())
        throw std::bad_alloc();
    return result;
}

bool areOpaque(const QRgb* pixels, int count)
{
    QRgb common = ~QRgb{0};
    for (int x = 0; x < count; ++x)
        common &= pixels[x];
    return qAlpha(common) == 0xff;
}

/// Some rows at a time, so that what is converted needs little memory.
constexpr int rowsAtOnce = 16;

bool isOpaque(const QImage& image)
{
    if (!image.hasAlphaChannel())
        return true;
    const bool isDirect = image.format() == QImage::Format_ARGB32_Premultiplied;
    for (int first = 0; first < image.height(); first += rowsAtOnce) {
        auto rows = rowsOf(image, first, std::min(rowsAtOnce, image.height() - first));
        if (!isDirect)
            rows = converted(rows, QImage::Format_ARGB32);
        for (int y = 0; y < rows.height(); ++y) {
            if (!areOpaque(pixelsOf(rows, y), rows.width()))
                return false;
        }
    }
    return true;
}

void packOpaque(uchar* out, const QRgb* pixels, int width)
{
    int x = 0;
    // Eight bytes are written for six, as long as there is room for them: half the work.
    for (; x + 4 <= width; x += 2, out += 6) {
        const quint64 first = qbswap(pixels[x]) >> 8;
        const quint64 second = qbswap(pixels[x + 1]) >> 8;
        qToLittleEndian(first | second << 24, out);
    }
    for (; x < width; ++x) {
        *out++ = static_cast<uchar>(qRed(pixels[x]));
        *out++ = static_cast<uchar>(qGreen(pixels[x]));
        *out++ = static_cast<uchar>(qBlue(pixels[x]));
    }
}

void packTransparent(uchar* out, const QRgb* pixels, int width)
{
    for (int x = 0; x < width; ++x, out += 4)
        qToBigEndian((pixels[x] << 8) | (pixels[x] >> 24), out);
}

quint32 changedBytes(const uchar* row, const uchar* above, size_t channels, size_t size)
{
    quint32 changed = 0;
    for (size_t i = channels; i < size; ++i)
        changed += (row[i] != row[i - channels]) & (row[i] != above[i]);
    return changed;
}

/// The filtered bytes are differences modulo 256.
quint32 sumOfDifferences(Bytes filtered)
{
    quint32 sum = 0;
    for (const auto byte : filtered)
        sum += std::min<uchar>(byte, static_cast<uchar>(-byte));
    return sum;
}

} // namespace

PngRows::PngRows(const QImage& image)
    : m_image(image)
    , m_isOpaque(Platform::isOpaque(image))
    , m_channels(m_isOpaque ? 3 : 4)
{
}

size_t PngRows::rowBytes() const
{
    return 1 + static_cast<size_t>(m_image.width()) * m_channels;
}

void PngRows::pack(int first, int count)
{
    if (first == m_first && count == m_count)
        return;
    m_first = first;
    m_count = count;
    const auto size = rowBytes() - 1;
    m_packed.resize(static_cast<size_t>(count + 1) * size);
    const int above = std::max(0, first - 1);
    auto* out = m_packed.data();
    if (first == 0) {
        std::fill_n(out, size, uchar{0});
        out += size;
    }
    const auto rows = converted(rowsOf(m_image, above, first + count - above),
        m_isOpaque ? QImage::Format_RGB32 : QImage::Format_ARGB32);
    for (int y = 0; y < rows.height(); ++y, out += size)
        (m_isOpaque ? packOpaque : packTransparent)(out, pixelsOf(rows, y), rows.width());
}

Bytes PngRows::filtered(int first, int count, PngFilter filter)
{
    pack(first, count);
    const auto size = rowBytes() - 1;
    m_filtered.resize(static_cast<size_t>(count) * rowBytes());
    auto* out = m_filtered.data();
    const auto* above = m_packed.data();
    for (int y = 0; y < count; ++y, above += size, out += size) {
        *out++ = static_cast<uchar>(filter);
        filterPngRow({out, size}, above + size, above, m_channels, filter);
    }
    return m_filtered;
}

PngSample PngRows::sample(int first, int count)
{
    pack(first, count);
    const auto size = rowBytes() - 1;
    PngSample sample{.bytes = static_cast<size_t>(count) * size};
    for (int y = 0; y < count; ++y) {
        const auto* above = m_packed.data() + static_cast<size_t>(y) * size;
        sample.changedBytes += changedBytes(above + size, above, m_channels, size);
    }
    for (size_t i = 0; i < pngDifferenceFilters.size(); ++i)
        sample.differences.at(i) =
            sumOfDifferences(filtered(first, count, pngDifferenceFilters.at(i)));
    return sample;
}

} // namespace Platform

#include "Platform/PngEncoder.h"

#include <QColorSpace>
#include <QtEndian>

#include <algorithm>
#include <cmath>
#include <libdeflate.h>
#include <memory>
#include <new>
#include <vector>

namespace Platform {

namespace {

constexpr int compressionLevel = 1;
constexpr qsizetype chunkOverhead = 12; ///< Length, name and checksum.
constexpr size_t largestChunk = 0x7fff'ffff;

struct Failure {
    const char* reason;
};

/// The pixels as rows are written from: RGB32 where all are opaque, else ARGB32.
struct Source {
    QImage image;
    bool isOpaque = true;

    int channels() const { return isOpaque ? 3 : 4; }
    size_t rowBytes() const
    {
        return static_cast<size_t>(image.width()) * static_cast<size_t>(channels());
    }
    const QRgb* row(int y) const { return reinterpret_cast<const QRgb*>(image.constScanLine(y)); }
};

bool isOpaque(const Source& source)
{
    for (int y = 0; y < source.image.height(); ++y) {
        const auto* pixels = source.row(y);
        QRgb common = ~QRgb{0};
        for (int x = 0; x < source.image.width(); ++x)
            common &= pixels[x];
        if (qAlpha(common) != 0xff)
            return false;
    }
    return true;
}

QImage converted(const QImage& image, QImage::Format format)
{
    auto result = image.convertToFormat(format);
    if (result.isNull())
        throw std::bad_alloc();
    return result;
}

/// The profile of a grey image doesn't fit to red, green and blue.
bool fitsColours(const QByteArray& profile)
{
    constexpr qsizetype modelOffset = 16; // Of the colour model in the profile's header.
    return profile.isEmpty() || profile.mid(modelOffset, 4) == "RGB ";
}

Source prepared(QImage image)
{
    if (!fitsColours(image.colorSpace().iccProfile()))
        image.convertToColorSpace(QColorSpace::SRgb);
    if (!image.hasAlphaChannel())
        return {.image = converted(image, QImage::Format_RGB32)};
    // Where all is opaque, premultiplied pixels are the same as others.
    if (image.format() != QImage::Format_ARGB32_Premultiplied)
        image = converted(image, QImage::Format_ARGB32);
    Source source{.image = image};
    source.isOpaque = isOpaque(source);
    if (!source.isOpaque)
        source.image = converted(image, QImage::Format_ARGB32);
    return source;
}

/// Unfiltered bytes of one row, as the file orders them.
void packRow(uchar* out, const QRgb* pixels, int width, int channels)
{
    if (channels == 4) {
        for (int x = 0; x < width; ++x)
            qToBigEndian((pixels[x] << 8) | (pixels[x] >> 24), out + 4 * qsizetype{x});
        return;
    }
    for (int x = 0; x < width; ++x) {
        *out++ = static_cast<uchar>(qRed(pixels[x]));
        *out++ = static_cast<uchar>(qGreen(pixels[x]));
        *out++ = static_cast<uchar>(qBlue(pixels[x]));
    }
}

enum class Filter : uchar { none = 0, up = 2 };

/// Surfaces of one colour compress best as they are; where neighbours differ, their differences
/// do. A few rows tell.
Filter bestFilter(const Source& source)
{
    constexpr int sampledRows = 64;
    const int width = source.image.width();
    const int height = source.image.height();
    qsizetype same = 0;
    qsizetype all = 0;
    const int step = std::max(1, height / sampledRows);
    for (int y = step / 2; y < height; y += step) {
        const auto* pixels = source.row(y);
        for (int x = 1; x < width; ++x)
            same += pixels[x] == pixels[x - 1] ? 1 : 0;
        all += width - 1;
    }
    return same * 2 >= all ? Filter::none : Filter::up;
}

using Bytes = std::unique_ptr<uchar[]>;

Bytes filteredRows(const Source& source)
{
    const int width = source.image.width();
    const int height = source.image.height();
    const auto rowBytes = source.rowBytes();
    Bytes rows(new uchar[static_cast<size_t>(height) * (rowBytes + 1)]);
    const auto filter = bestFilter(source);
    std::vector<uchar> above(rowBytes);
    std::vector<uchar> current(rowBytes);
    auto* out = rows.get();
    for (int y = 0; y < height; ++y) {
        *out++ = static_cast<uchar>(filter);
        if (filter == Filter::none) {
            packRow(out, source.row(y), width, source.channels());
        } else {
            packRow(current.data(), source.row(y), width, source.channels());
            for (size_t i = 0; i < rowBytes; ++i)
                out[i] = static_cast<uchar>(current[i] - above[i]);
            current.swap(above);
        }
        out += rowBytes;
    }
    return rows;
}

struct CompressorDeleter {
    void operator()(libdeflate_compressor* compressor) const
    {
        libdeflate_free_compressor(compressor);
    }
};
using Compressor = std::unique_ptr<libdeflate_compressor, CompressorDeleter>;

Compressor makeCompressor()
{
    Compressor compressor(libdeflate_alloc_compressor(compressionLevel));
    if (!compressor)
        throw std::bad_alloc();
    return compressor;
}

/// A PNG file in the making.
class PngWriter {
public:
    PngWriter() { m_file.append("\x89PNG\r\n\x1a\n", 8); }

    void appendChunk(const char* name, const QByteArray& content)
    {
        const auto start = beginChunk(name);
        m_file.append(content);
        endChunk(start);
    }

    /// @p prefix as it is, and then the zlib stream of the @p size bytes at @p data.
    void appendCompressed(
        const char* name, const QByteArray& prefix, const uchar* data, size_t size)
    {
        const auto compressor = makeCompressor();
        const auto start = beginChunk(name);
        m_file.append(prefix);
        const auto offset = m_file.size();
        const auto bound = libdeflate_zlib_compress_bound(compressor.get(), size);
        m_file.resize(offset + static_cast<qsizetype>(bound));
        const auto length =
            libdeflate_zlib_compress(compressor.get(), data, size, m_file.data() + offset, bound);
        if (length == 0)
            throw Failure{"the compressor failed"};
        m_file.resize(offset + static_cast<qsizetype>(length));
        endChunk(start);
    }

    QByteArray takeFile()
    {
        m_file.squeeze();
        return std::move(m_file);
    }

private:
    qsizetype beginChunk(const char* name)
    {
        const auto start = m_file.size();
        m_file.append(4, '\0').append(name, 4);
        return start;
    }

    void endChunk(qsizetype start)
    {
        const auto named = static_cast<size_t>(m_file.size() - start) - 4;
        if (named - 4 > largestChunk)
            throw Failure{"more bytes than a PNG can hold"};
        qToBigEndian(static_cast<quint32>(named - 4), m_file.data() + start);
        const auto checksum = libdeflate_crc32(0, m_file.constData() + start + 4, named);
        m_file.resize(m_file.size() + 4);
        qToBigEndian(checksum, m_file.data() + m_file.size() - 4);
    }

    QByteArray m_file;
};

QByteArray bigEndian(quint32 value)
{
    QByteArray bytes(4, Qt::Uninitialized);
    qToBigEndian(value, bytes.data());
    return bytes;
}

QByteArray header(const Source& source)
{
    const char colourType = source.isOpaque ? 2 : 6;
    return bigEndian(static_cast<quint32>(source.image.width()))
        + bigEndian(static_cast<quint32>(source.image.height())) + QByteArray(1, 8)
        + QByteArray(1, colourType) + QByteArray(3, '\0');
}

void appendColourSpace(PngWriter& writer, const QColorSpace& colourSpace)
{
    const auto profile = colourSpace.iccProfile();
    if (profile.isEmpty() || colourSpace == QColorSpace(QColorSpace::SRgb)) {
        writer.appendChunk("sRGB", QByteArray(1, '\0')); // To be shown as a picture.
        return;
    }
    writer.appendCompressed("iCCP", QByteArrayLiteral("ICC Profile\0\0"),
        reinterpret_cast<const uchar*>(profile.constData()), static_cast<size_t>(profile.size()));
}

void appendResolution(PngWriter& writer, double dotsPerInch)
{
    constexpr double inchesPerMetre = 1 / 0.0254;
    if (!std::isfinite(dotsPerInch) || dotsPerInch <= 0)
        return;
    const auto dotsPerMetre = static_cast<quint32>(
        std::clamp(std::round(dotsPerInch * inchesPerMetre), 1.0, double{largestChunk}));
    const QByteArray metre(1, 1);
    writer.appendChunk("pHYs", bigEndian(dotsPerMetre) + bigEndian(dotsPerMetre) + metre);
}

QByteArray encode(const QImage& image, double dotsPerInch)
{
    if (image.isNull())
        throw Failure{"no image"};
    const auto source = prepared(image);
    PngWriter writer;
    writer.appendChunk("IHDR", header(source));
    appendColourSpace(writer, source.image.colorSpace());
    appendResolution(writer, dotsPerInch);
    const auto rows = filteredRows(source);
    writer.appendCompressed("IDAT", {}, rows.get(),
        static_cast<size_t>(source.image.height()) * (source.rowBytes() + 1));
    writer.appendChunk("IEND", {});
    return writer.takeFile();
}

tl::unexpected<Error> failed(const char* reason)
{
    return tl::make_unexpected(
        Error{.kind = Error::Kind::failed, .message = QString::fromLatin1(reason)});
}

} // namespace

Result<QByteArray> encodePng(const QImage& image, double dotsPerInch)
try {
    return encode(image, dotsPerInch);
} catch (const Failure& failure) {
    return failed(failure.reason);
} catch (const std::bad_alloc&) {
    return failed("out of memory");
}

} // namespace Platform

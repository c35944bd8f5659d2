#include "Platform/PngEncoder.h"

#include "Platform/Compression.h"
#include "Platform/PngPlan.h"
#include "Platform/RgbColorSpace.h"

#include <QtEndian>

#include <algorithm>
#include <cmath>
#include <memory>
#include <new>

namespace Platform {

namespace {

constexpr size_t largestChunk = 0x7fff'ffff;

struct Failure {
    const char* reason;
};

/// A PNG file in the making.
class PngFile {
public:
    PngFile() { m_bytes.append("\x89PNG\r\n\x1a\n", 8); }

    /// @p fill appends the content.
    template <typename Fill>
    void appendChunk(const char* name, Fill fill)
    {
        const auto start = m_bytes.size();
        m_bytes.append(4, '\0').append(name, 4);
        fill(m_bytes);
        const auto named = Bytes(reinterpret_cast<const uchar*>(m_bytes.constData()),
            static_cast<size_t>(m_bytes.size()))
                               .subspan(static_cast<size_t>(start) + 4);
        const auto size = named.size() - 4;
        if (size > largestChunk)
            throw Failure{"more bytes than a PNG can hold"};
        const auto checksum = crc32(named);
        qToBigEndian(static_cast<quint32>(size), m_bytes.data() + start);
        m_bytes.append(bigEndian(checksum));
    }

    void appendChunk(const char* name, const QByteArray& content)
    {
        appendChunk(name, [&](QByteArray& bytes) { bytes.append(content); });
    }

    static QByteArray bigEndian(quint32 value)
    {
        QByteArray bytes(4, Qt::Uninitialized);
        qToBigEndian(value, bytes.data());
        return bytes;
    }

    QByteArray take()
    {
        m_bytes.squeeze();
        return std::move(m_bytes);
    }

private:
    QByteArray m_bytes;
};

void appendPixels(QByteArray& output, PngRows& rows)
{
    const auto plan = planPng(rows);
    const auto filtered = [&](const PngStrip& strip) {
        return rows.filtered(strip.first, strip.count, strip.filter);
    };
    if (!plan.isSmooth) {
        QuickZlibStream stream(output);
        for (const auto& strip : plan.strips)
            stream.write(filtered(strip));
        stream.finish();
        return;
    }
    const auto size = static_cast<size_t>(rows.height()) * rows.rowBytes();
    const std::unique_ptr<uchar[]> all(new uchar[size]);
    auto* out = all.get();
    for (const auto& strip : plan.strips)
        out = std::ranges::copy(filtered(strip), out).out;
    appendThoroughZlib(output, {all.get(), size});
}

QByteArray header(const QImage& image, bool isOpaque)
{
    constexpr char bitsOfChannel = 8;
    const char colourType = isOpaque ? 2 : 6;
    return PngFile::bigEndian(static_cast<quint32>(image.width()))
        + PngFile::bigEndian(static_cast<quint32>(image.height())) + QByteArray(1, bitsOfChannel)
        + QByteArray(1, colourType) + QByteArray(3, '\0');
}

/// The image with a colour space that its red, green and blue can be in, or with none.
QImage withFittingColours(QImage image)
{
    const auto space = image.colorSpace();
    if (!space.isValid())
        image.setColorSpace({});
    else if (!isRgb(space))
        image.convertToColorSpace(QColorSpace::SRgb);
    return image;
}

void appendColourSpace(PngFile& file, const QColorSpace& colourSpace)
{
    const auto profile = colourSpace.iccProfile();
    if (profile.isEmpty() || colourSpace == QColorSpace(QColorSpace::SRgb)) {
        file.appendChunk("sRGB", QByteArray(1, '\0')); // To be shown as a picture.
        return;
    }
    file.appendChunk("iCCP", [&](QByteArray& bytes) {
        bytes.append("ICC Profile\0\0", 13); // A name, its end, and the only compression.
        appendThoroughZlib(bytes,
            {reinterpret_cast<const uchar*>(profile.constData()),
                static_cast<size_t>(profile.size())});
    });
}

void appendResolution(PngFile& file, double dotsPerInch)
{
    constexpr double inchesPerMetre = 1 / 0.0254;
    if (!std::isfinite(dotsPerInch) || dotsPerInch <= 0)
        return;
    const auto dotsPerMetre = PngFile::bigEndian(static_cast<quint32>(
        std::clamp(std::round(dotsPerInch * inchesPerMetre), 1.0, double{largestChunk})));
    const QByteArray metre(1, 1);
    file.appendChunk("pHYs", dotsPerMetre + dotsPerMetre + metre);
}

QByteArray encode(const QImage& given, double dotsPerInch)
{
    if (given.isNull())
        throw Failure{"no image"};
    const auto image = withFittingColours(given);
    if (image.isNull())
        throw std::bad_alloc();
    PngRows rows(image);
    PngFile file;
    file.appendChunk("IHDR", header(image, rows.isOpaque()));
    appendColourSpace(file, image.colorSpace());
    appendResolution(file, dotsPerInch);
    file.appendChunk("IDAT", [&](QByteArray& bytes) { appendPixels(bytes, rows); });
    file.appendChunk("IEND", QByteArray());
    return file.take();
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

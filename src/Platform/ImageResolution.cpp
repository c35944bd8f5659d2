#include "Platform/ImageResolution.h"

#include "Platform/ExifTags.h"
#include "Platform/ImageHeader.h"
#include "Platform/JpegSegments.h"

namespace Platform {

namespace {

constexpr double metresPerInch = 0.0254;
constexpr double centimetresPerInch = 2.54;

/// The chunk "pHYs": dots per unit across and down, and whether the unit is the metre.
std::optional<double> pngDotsPerInch(const ByteSource& source)
{
    const auto chunk = findPngChunk(source, "pHYs");
    if (!chunk || source.bigEndian<quint8>(*chunk + 8) != quint8{1})
        return std::nullopt;
    return credibleDotsPerInch(source.bigEndian<quint32>(*chunk).value_or(0) * metresPerInch);
}

/// The segment "JFIF": version, unit, dots per unit across and down.
std::optional<double> jfifDotsPerInch(const ByteSource& source, const JpegSegment& segment)
{
    enum Unit : quint8 { inch = 1, centimetre = 2 };
    constexpr int unitPlace = 7;
    constexpr int densityPlace = 8;
    constexpr int endOfDensity = 10;
    const auto content = source.bytes(segment.start, std::min(segment.size, endOfDensity));
    if (content.size() < endOfDensity || !content.startsWith(QByteArrayView("JFIF\0", 5)))
        return std::nullopt;
    const auto density = qFromBigEndian<quint16>(content.constData() + densityPlace);
    switch (content[unitPlace]) {
    case inch:
        return credibleDotsPerInch(density);
    case centimetre:
        return credibleDotsPerInch(density * centimetresPerInch);
    default:
        return std::nullopt;
    }
}

std::optional<double> jpegDotsPerInch(const ByteSource& source)
{
    constexpr quint8 firstApplication = 0xE0;
    std::optional<double> dotsPerInch;
    visitJpegSegments(source, [&](const JpegSegment& segment) {
        if (segment.marker == firstApplication && !dotsPerInch)
            dotsPerInch = jfifDotsPerInch(source, segment);
        return !dotsPerInch;
    });
    return dotsPerInch;
}

/// The header with at least 40 bytes has dots per metre across.
std::optional<double> bmpDotsPerInch(const ByteSource& source)
{
    constexpr int headerSizePlace = 14;
    constexpr int dotsPlace = 38;
    constexpr quint32 leastHeader = 40;
    if (source.littleEndian<quint32>(headerSizePlace).value_or(0) < leastHeader)
        return std::nullopt;
    return credibleDotsPerInch(source.littleEndian<qint32>(dotsPlace).value_or(0) * metresPerInch);
}

std::optional<double> dotsPerInch(const ByteSource& source)
{
    std::optional<double> own;
    switch (fileKind(source)) {
    case FileKind::png:
        own = pngDotsPerInch(source);
        break;
    case FileKind::jpeg:
        own = jpegDotsPerInch(source);
        break;
    case FileKind::bmp:
        own = bmpDotsPerInch(source);
        break;
    default:
        break;
    }
    return own ? own : exifTags(source).dotsPerInch;
}

} // namespace

std::optional<double> imageDotsPerInch(QIODevice& file)
{
    const auto dots = dotsPerInch(ByteSource(file));
    file.seek(0);
    return dots;
}

} // namespace Platform

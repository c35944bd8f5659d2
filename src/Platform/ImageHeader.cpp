#include "Platform/ImageHeader.h"

#include "Platform/JpegSegments.h"

#include <algorithm>

namespace Platform {

namespace {

constexpr int mostChunks = 1000;

std::optional<qint64> findWebpChunk(const ByteSource& source, QByteArrayView type)
{
    qint64 place = 12;
    for (int count = 0; count < mostChunks; ++count) {
        const auto size = source.littleEndian<quint32>(place + 4);
        if (!size)
            return std::nullopt;
        if (source.bytes(place, 4) == type)
            return place + 8;
        place += 8 + qint64{*size} + (*size & 1);
    }
    return std::nullopt;
}

std::optional<qint64> behindExifMark(const ByteSource& source, qint64 place)
{
    constexpr QByteArrayView mark("Exif\0\0", 6);
    if (source.bytes(place, mark.size()) != mark)
        return std::nullopt;
    return place + mark.size();
}

std::optional<qint64> findJpegExif(const ByteSource& source)
{
    constexpr quint8 secondApplication = 0xE1;
    std::optional<qint64> place;
    visitJpegSegments(source, [&](const JpegSegment& segment) {
        if (segment.marker == secondApplication)
            place = behindExifMark(source, segment.start);
        return !place;
    });
    return place;
}

/// Written with and without the mark of JPEG files.
std::optional<qint64> findWebpExif(const ByteSource& source)
{
    const auto chunk = findWebpChunk(source, "EXIF");
    if (!chunk)
        return std::nullopt;
    return behindExifMark(source, *chunk).value_or(*chunk);
}

bool isSingleScan(const ByteSource& source)
{
    constexpr quint8 lastSequential = 0xC1;
    constexpr int componentsPlace = 5;
    std::optional<quint8> ofFrame;
    std::optional<quint8> ofScan;
    bool isSequential = false;
    visitJpegSegments(source, [&](const JpegSegment& segment) {
        if (segment.isFrame()) {
            ofFrame = source.bigEndian<quint8>(segment.start + componentsPlace);
            isSequential = segment.marker <= lastSequential;
        } else if (segment.isScan())
            ofScan = source.bigEndian<quint8>(segment.start);
        return true;
    });
    return isSequential && ofScan && ofScan == ofFrame;
}

} // namespace

FileKind fileKind(const ByteSource& source)
{
    const auto head = source.bytes(0, 4);
    if (head == QByteArrayView("\x89PNG"))
        return FileKind::png;
    if (head.startsWith(QByteArrayView("\xff\xd8")))
        return FileKind::jpeg;
    if (head == QByteArrayView("GIF8"))
        return FileKind::gif;
    if (head == QByteArrayView("II\x2a\0", 4) || head == QByteArrayView("MM\0\x2a", 4))
        return FileKind::tiff;
    if (head.startsWith("BM"))
        return FileKind::bmp;
    if (head == QByteArrayView("\0\0\1\0", 4) || head == QByteArrayView("\0\0\2\0", 4))
        return FileKind::ico;
    if (head == "RIFF" && source.bytes(8, 4) == "WEBP")
        return FileKind::webp;
    return FileKind::other;
}

std::optional<qint64> findPngChunk(const ByteSource& source, QByteArrayView type)
{
    qint64 place = 8;
    for (int count = 0; count < mostChunks; ++count) {
        const auto size = source.bigEndian<quint32>(place);
        const auto found = source.bytes(place + 4, 4);
        if (found == type)
            return place + 8;
        if (!size || found == "IDAT")
            return std::nullopt;
        place += 12 + qint64{*size};
    }
    return std::nullopt;
}

std::optional<qint64> findExif(const ByteSource& source)
{
    switch (fileKind(source)) {
    case FileKind::png:
        return findPngChunk(source, "eXIf");
    case FileKind::jpeg:
        return findJpegExif(source);
    case FileKind::webp:
        return findWebpExif(source);
    case FileKind::tiff:
        return 0;
    default:
        return std::nullopt;
    }
}

ExifTags exifTags(const ByteSource& source)
{
    const auto place = findExif(source);
    return place ? readExifTags(source.from(*place)) : ExifTags{};
}

QSize gifSize(const ByteSource& source)
{
    return {
        source.littleEndian<quint16>(6).value_or(0), source.littleEndian<quint16>(8).value_or(0)};
}

QSize icoPngSize(const ByteSource& source)
{
    constexpr int firstIconPlace = 18;
    if (fileKind(source) != FileKind::ico)
        return {};
    const auto png = source.from(source.littleEndian<quint32>(firstIconPlace).value_or(0));
    if (fileKind(png) != FileKind::png)
        return {};
    return {static_cast<int>(png.bigEndian<quint32>(16).value_or(0) & 0x7fffffff),
        static_cast<int>(png.bigEndian<quint32>(20).value_or(0) & 0x7fffffff)};
}

bool hasEndlessScans(const ByteSource& source)
{
    // Encoders write a dozen. Previews and profiles inside may hold the same two bytes.
    constexpr int most = 1000;
    constexpr qint64 chunk = 1 << 16;
    constexpr QByteArrayView startOfScan("\xff\xda");
    qsizetype count = 0;
    for (qint64 place = 0; place < source.size() && count <= most; place += chunk) {
        const auto size = std::min(chunk + 1, source.size() - place); // One may lie across.
        count += source.bytes(place, size).count(startOfScan);
    }
    return count > most;
}

bool comesRowByRow(const ByteSource& source)
{
    constexpr int interlacingPlace = 28;
    switch (fileKind(source)) {
    case FileKind::png:
        return source.bigEndian<quint8>(interlacingPlace) == quint8{0};
    case FileKind::jpeg:
        return isSingleScan(source);
    default:
        return false;
    }
}

} // namespace Platform

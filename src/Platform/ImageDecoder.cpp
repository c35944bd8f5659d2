#include "Platform/ImageDecoder.h"

#include "Platform/Heif.h"
#include "Platform/ImageHeader.h"
#include "Platform/ImageResolution.h"
#include "Platform/ImageScaler.h"
#include "Platform/ImageSource.h"

#include <QColorSpace>
#include <QImageIOHandler>
#include <QImageReader>
#include <QTransform>

#include <algorithm>
#include <array>
#include <cmath>
#include <exception>
#include <new>
#include <utility>

namespace Platform {

namespace {

constexpr int usualBits = 32;

tl::unexpected<Error> unreadable(const QString& message)
{
    return tl::make_unexpected(Error{.kind = Error::Kind::unreadable, .message = message});
}

tl::unexpected<Error> undecodable(const QString& message)
{
    return tl::make_unexpected(Error{.kind = Error::Kind::failed, .message = message});
}

qint64 pixelCount(const QSize& size)
{
    return qint64{size.width()} * size.height();
}

QSize scaledBy(const QSize& size, double factor)
{
    return {std::max(1, static_cast<int>(std::lround(size.width() * factor))),
        std::max(1, static_cast<int>(std::lround(size.height() * factor)))};
}

/// The largest size of the same shape within the limits.
QSize boundedSize(QSize size, const ImageLimits& limits)
{
    const auto longEdge = std::max(size.width(), size.height());
    if (limits.longEdge && longEdge > *limits.longEdge)
        size = scaledBy(size, static_cast<double>(*limits.longEdge) / longEdge);
    const auto pixels = pixelCount(size);
    if (pixels <= limits.pixels)
        return size;
    const auto factor = std::sqrt(static_cast<double>(limits.pixels) / static_cast<double>(pixels));
    return {std::max(1, static_cast<int>(size.width() * factor)),
        std::max(1, static_cast<int>(size.height() * factor))};
}

/// Drawings have no pixels of their own, need fonts, and can ask for work without an end. The
/// decoder of MNG films takes as much memory as a header claims: 4 GB for a file of some bytes.
bool isRefused(const QByteArray& format)
{
    return format.startsWith("svg") || format == "pdf" || format == "mng";
}

/// What a file tells before it is decoded.
struct Header {
    FileKind kind = FileKind::other;
    QSize size; ///< Invalid where it isn't told.
    int bits = 0; ///< Of a pixel once decoded; 0 where it isn't told.
    bool comesRowByRow = false;
    bool isEndless = false; ///< Whether it asks for work out of all proportion.
    QImageIOHandler::Transformations transformations; ///< What makes the picture upright.
};

/// Bits of a pixel once decoded; 0 where the header doesn't tell.
int decodedBits(const QImageReader& reader)
{
    const auto format = reader.imageFormat();
    return format == QImage::Format_Invalid ? 0 : QImage::toPixelFormat(format).bitsPerPixel();
}

QImageIOHandler::Transformations fromExif(int orientation)
{
    constexpr std::array inOrder{
        QImageIOHandler::TransformationNone,
        QImageIOHandler::TransformationMirror,
        QImageIOHandler::TransformationRotate180,
        QImageIOHandler::TransformationFlip,
        QImageIOHandler::TransformationFlipAndRotate90,
        QImageIOHandler::TransformationRotate90,
        QImageIOHandler::TransformationMirrorAndRotate90,
        QImageIOHandler::TransformationRotate270,
    };
    return inOrder.at(static_cast<size_t>(orientation - 1));
}

Header readHeader(QIODevice& file, const QImageReader& reader)
{
    const auto place = file.pos();
    const ByteSource source(file);
    Header header;
    header.kind = fileKind(source);
    header.comesRowByRow = comesRowByRow(source);
    header.isEndless =
        header.kind == FileKind::jpeg && !header.comesRowByRow && hasEndlessScans(source);
    const auto orientation = exifTags(source).orientation;
    // Qt's decoder of films would count their pictures to tell the size.
    if (header.kind == FileKind::gif)
        header.size = gifSize(source);
    const auto insideSize = icoPngSize(source);
    file.seek(place);
    if (header.kind != FileKind::gif) {
        header.size = reader.size();
        // Of a header that it could not read, the JPEG decoder tells whatever was in memory.
        header.bits = header.size.isValid() ? decodedBits(reader) : 0;
    }
    // What an icon's directory tells of a PNG file inside need not be true.
    if (insideSize.isValid())
        header.size = insideSize;
    header.transformations = reader.supportsOption(QImageIOHandler::ImageTransformation)
        ? reader.transformation()
        : fromExif(orientation);
    return header;
}

/// Whether the decoder scales as it goes, and so never holds the whole picture.
bool scalesWhileDecoding(const Header& header)
{
    return header.comesRowByRow
        && (header.kind == FileKind::jpeg
            || (header.kind == FileKind::png && header.bits == usualBits));
}

/// The most that the picture takes while it is decoded.
qint64 decodedBytes(const Header& header, const ImageLimits& limits)
{
    constexpr int jpegSteps = 8; // The decoder scales by eighths, and the rest is done behind it.
    constexpr int coefficientBits = 48; // Kept of all pixels where several scans tell them.
    auto bits = header.bits > 0 ? header.bits : usualBits;
    auto size = header.size;
    if (scalesWhileDecoding(header)) {
        const auto bounded = boundedSize(size, limits);
        if (bounded != size)
            size = header.kind == FileKind::jpeg ? bounded + size / jpegSteps : bounded;
    } else if (header.kind == FileKind::jpeg)
        bits += coefficientBits;
    return pixelCount(size) * bits / 8;
}

bool isWithin(const Header& header, const ImageLimits& limits)
{
    return !header.isEndless && pixelCount(header.size) <= limits.filePixels
        && decodedBytes(header, limits) <= limits.decodedBytes;
}

/// Qt's own guard, one for the whole process, for files that hold more than their header tells. It
/// takes every pixel for one of the usual depth.
void allowAllocations(const ImageLimits& limits)
{
    const auto bytes = std::max(limits.decodedBytes, limits.filePixels * usualBits / 8);
    const auto megabytes = static_cast<int>(bytes >> 20);
    if (QImageReader::allocationLimit() != megabytes)
        QImageReader::setAllocationLimit(megabytes);
}

/// Within the limits and with at most 8 bits a channel: nobody here looks at more.
QImage bounded(QImage image, const ImageLimits& limits)
{
    const auto size = boundedSize(image.size(), limits);
    if (size != image.size())
        return scaledDown(image, size);
    if (image.depth() > usualBits)
        image.convertTo(image.hasAlphaChannel() ? QImage::Format_ARGB32 : QImage::Format_RGB32);
    else if (image.format() == QImage::Format_Grayscale16)
        image.convertTo(QImage::Format_Grayscale8);
    return image;
}

/// As QImageReader would do it, but that loses the colour space of what it turns.
QImage upright(const QImage& image, QImageIOHandler::Transformations transformations)
{
    if (transformations == QImageIOHandler::TransformationNone)
        return image;
    auto turned = image.mirrored(transformations.testFlag(QImageIOHandler::TransformationMirror),
        transformations.testFlag(QImageIOHandler::TransformationFlip));
    if (transformations.testFlag(QImageIOHandler::TransformationRotate90))
        turned = turned.transformed(QTransform().rotate(90));
    turned.setColorSpace(image.colorSpace());
    return turned;
}

/// With Qt's decoders.
Result<DecodedImage> decodeUsual(QIODevice& file, const ImageLimits& limits)
{
    allowAllocations(limits);
    const auto dotsPerInch = imageDotsPerInch(file);
    QImageReader reader(&file);
    if (!reader.canRead() || isRefused(reader.format()))
        return unreadable(QStringLiteral("no picture of a known format"));
    const auto header = readHeader(file, reader);
    // Nothing is decoded unseen: for icons of ICNS, which tell no size, Qt asks for gigabytes.
    if (!header.size.isValid())
        return undecodable(QStringLiteral("the header tells no size"));
    if (!isWithin(header, limits))
        return undecodable(QStringLiteral("more pixels or scans than a picture may have"));
    const auto size = boundedSize(header.size, limits);
    if (size != header.size && scalesWhileDecoding(header))
        reader.setScaledSize(size);
    const auto image = reader.read();
    if (image.isNull())
        return undecodable(reader.errorString());
    return DecodedImage{.image = upright(bounded(image, limits), header.transformations),
        .fileSize = header.size,
        .dotsPerInch = dotsPerInch};
}

Result<DecodedImage> decode(const std::filesystem::path& path, const ImageLimits& limits)
{
    const auto source = openImageSource(path, limits);
    if (!source)
        return tl::make_unexpected(source.error());
    auto& file = **source;
    if (!isHeif(file))
        return decodeUsual(file, limits);
    auto decoded = decodeHeif(file, limits);
    if (decoded)
        decoded->image = bounded(decoded->image, limits);
    return decoded;
}

} // namespace

Result<DecodedImage> decodeImageFile(const std::filesystem::path& path, const ImageLimits& limits)
try {
    auto decoded = decode(path, limits);
    if (decoded && decoded->image.isNull())
        return undecodable(QStringLiteral("out of memory"));
    return decoded;
} catch (const std::bad_alloc&) {
    return undecodable(QStringLiteral("out of memory"));
} catch (const std::exception& exception) { // Of a decoder that is C++ inside.
    return undecodable(QString::fromUtf8(exception.what()));
}

} // namespace Platform

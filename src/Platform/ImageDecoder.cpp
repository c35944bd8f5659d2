#include "Platform/ImageDecoder.h"

#include "Platform/ImageHeader.h"
#include "Platform/ImageResolution.h"
#include "Platform/ImageSource.h"

#include <QColorSpace>
#include <QImageIOHandler>
#include <QImageReader>
#include <QTransform>

#include <algorithm>
#include <array>
#include <cmath>
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

tl::unexpected<Error> tooManyPixels()
{
    return undecodable(QStringLiteral("more pixels than a picture may have"));
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

/// Whether a picture of this size is, or can be scaled to be, within the limits.
bool canBound(const QSize& size, const ImageLimits& limits)
{
    // Longer sides overflow the fixed-point numbers of Qt's smooth scaling, which then takes a
    // minute for what it does in a second, if no worse.
    constexpr int longestScalableSide = (1 << 17) - 1;
    return boundedSize(size, limits) == size
        || std::max(size.width(), size.height()) <= longestScalableSide;
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
    QImageIOHandler::Transformations transformations; ///< What makes the picture upright.
};

/// Bits of a pixel once decoded, as the header tells; 0 where it doesn't.
int decodedBits(const QImageReader& reader)
{
    // The JPEG decoder answers with whatever was in memory when it could not read the header.
    const auto format = reader.imageFormat();
    if (format <= QImage::Format_Invalid || format >= QImage::NImageFormats)
        return 0;
    return QImage::toPixelFormat(format).bitsPerPixel();
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
    const auto orientation = exifTags(source).orientation;
    // Qt's decoder of films would count their pictures to tell the size.
    if (header.kind == FileKind::gif)
        header.size = gifSize(source);
    file.seek(place);
    if (header.kind != FileKind::gif) {
        header.size = reader.size();
        header.bits = decodedBits(reader);
    }
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
    // Scaling takes at least what the usual depth does, also for pictures that are flatter.
    auto bits = std::max(usualBits, header.bits);
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
    return pixelCount(header.size) <= limits.filePixels
        && decodedBytes(header, limits) <= limits.decodedBytes && canBound(header.size, limits);
}

/// Qt's own guard, one for the whole process, which also holds where a header tells nothing.
void allowAllocations(const ImageLimits& limits)
{
    const auto megabytes = static_cast<int>(limits.decodedBytes >> 20);
    if (QImageReader::allocationLimit() != megabytes)
        QImageReader::setAllocationLimit(megabytes);
}

/// Nobody here looks at more than 8 bits a channel, and scaling is the dearer the deeper.
QImage shallow(QImage image)
{
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

QImage bounded(const QImage& image, const ImageLimits& limits)
{
    const auto size = boundedSize(image.size(), limits);
    return size == image.size()
        ? image
        : image.scaled(size, Qt::IgnoreAspectRatio, Qt::SmoothTransformation);
}

Result<DecodedImage> decode(const std::filesystem::path& path, const ImageLimits& limits)
{
    const auto source = openImageSource(path, limits);
    if (!source)
        return tl::make_unexpected(source.error());
    auto& file = **source;
    allowAllocations(limits);
    const auto dotsPerInch = imageDotsPerInch(file);
    QImageReader reader(&file);
    if (!reader.canRead() || isRefused(reader.format()))
        return unreadable(QStringLiteral("no picture of a known format"));
    const auto header = readHeader(file, reader);
    if (header.size.isValid() && !isWithin(header, limits))
        return tooManyPixels();
    const auto size = boundedSize(header.size, limits);
    if (size != header.size && scalesWhileDecoding(header))
        reader.setScaledSize(size);
    const auto image = shallow(reader.read());
    if (image.isNull())
        return undecodable(reader.errorString());
    if (!canBound(image.size(), limits)) // Where the header didn't tell.
        return tooManyPixels();
    return DecodedImage{.image = upright(bounded(image, limits), header.transformations),
        .fileSize = header.size,
        .dotsPerInch = dotsPerInch};
}

} // namespace

Result<DecodedImage> decodeImageFile(const std::filesystem::path& path, const ImageLimits& limits)
try {
    return decode(path, limits);
} catch (const std::bad_alloc&) {
    return undecodable(QStringLiteral("out of memory"));
}

} // namespace Platform

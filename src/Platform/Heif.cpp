#include "Platform/Heif.h"

#include "Platform/ExifTags.h"
#include "Platform/HeifLibrary.h"

#include <QBuffer>
#include <QColorSpace>

#include <algorithm>
#include <array>
#include <memory>

namespace Platform {

namespace {

using Context = std::unique_ptr<heif_context, decltype(&heif_context_free)>;
using Handle = std::unique_ptr<heif_image_handle, decltype(&heif_image_handle_release)>;
using Image = std::unique_ptr<heif_image, decltype(&heif_image_release)>;
using CodedColours =
    std::unique_ptr<heif_color_profile_nclx, decltype(&heif_nclx_color_profile_free)>;

tl::unexpected<Error> undecodable(const char* message)
{
    return tl::make_unexpected(
        Error{.kind = Error::Kind::failed, .message = QString::fromUtf8(message)});
}

bool isGood(const heif_error& error)
{
    return error.code == heif_error_Ok;
}

/// The most that a pixel takes while it is decoded: the planes of the decoder, the same as the
/// picture is put together and turned, and their colours.
qint64 bytesOfPixel(int bits)
{
    return bits > 8 ? 16 : 10;
}

bool isWithin(const QSize& size, int bits, const ImageLimits& limits)
{
    const auto pixels = qint64{size.width()} * size.height();
    return pixels <= limits.filePixels && pixels * bytesOfPixel(bits) <= limits.decodedBytes;
}

QColorSpace::TransferFunction transferFunction(heif_transfer_characteristics coded)
{
    switch (coded) {
    case heif_transfer_characteristic_linear:
        return QColorSpace::TransferFunction::Linear;
    default: // What else screens are made for is close to it.
        return QColorSpace::TransferFunction::SRgb;
    }
}

/// An ICC profile counts before coded colours. Neither, or a broken one: no colour space.
QColorSpace colorSpace(const HeifLibrary& heif, const heif_image_handle* handle)
{
    constexpr size_t largestProfile = 16 << 20;
    const auto size = heif.profileSize(handle);
    if (size > 0 && size <= largestProfile) {
        QByteArray profile(static_cast<qsizetype>(size), '\0');
        if (isGood(heif.profile(handle, profile.data())))
            return QColorSpace::fromIccProfile(profile);
    }
    heif_color_profile_nclx* coded = nullptr;
    if (!isGood(heif.codedColours(handle, &coded)) || !coded)
        return {};
    const CodedColours colours(coded, heif.freeCodedColours);
    if (coded->color_primaries == heif_color_primaries_unspecified)
        return {};
    return {{coded->color_primary_white_x, coded->color_primary_white_y},
        {coded->color_primary_red_x, coded->color_primary_red_y},
        {coded->color_primary_green_x, coded->color_primary_green_y},
        {coded->color_primary_blue_x, coded->color_primary_blue_y},
        transferFunction(coded->transfer_characteristics)};
}

/// The EXIF block begins with four bytes that tell where in the rest its TIFF header is.
std::optional<double> dotsPerInch(const HeifLibrary& heif, const heif_image_handle* handle)
{
    constexpr size_t largestBlock = 1 << 20;
    heif_item_id id = 0;
    if (heif.metadata(handle, "Exif", &id, 1) != 1)
        return std::nullopt;
    const auto size = heif.metadataSize(handle, id);
    if (size == 0 || size > largestBlock)
        return std::nullopt;
    QBuffer block;
    block.setData(QByteArray(static_cast<qsizetype>(size), '\0'));
    block.open(QIODevice::ReadOnly);
    if (!isGood(heif.readMetadata(handle, id, block.buffer().data())))
        return std::nullopt;
    const ByteSource source(block);
    const auto place = source.bigEndian<quint32>(0);
    return place ? readExifTags(source.from(qint64{*place} + 4)).dotsPerInch : std::nullopt;
}

/// A copy, since the pixels are those of the library.
QImage copied(const HeifLibrary& heif, const heif_image* image, QImage::Format format)
{
    int rowBytes = 0;
    const auto* pixels = heif.pixels(image, heif_channel_interleaved, &rowBytes);
    const QSize size(heif.imageWidth(image, heif_channel_interleaved),
        heif.imageHeight(image, heif_channel_interleaved));
    if (!pixels || size.isEmpty())
        return {};
    const QImage foreign(pixels, size.width(), size.height(), rowBytes, format);
    return foreign.convertToFormat(
        foreign.hasAlphaChannel() ? QImage::Format_ARGB32 : QImage::Format_RGB32);
}

QImage decodedImage(const HeifLibrary& heif, const heif_image_handle* handle)
{
    const bool hasAlpha = heif.hasAlpha(handle) != 0;
    heif_image* decoded = nullptr;
    const auto error = heif.decode(handle, &decoded, heif_colorspace_RGB,
        hasAlpha ? heif_chroma_interleaved_RGBA : heif_chroma_interleaved_RGB, nullptr);
    const Image image(decoded, heif.releaseImage);
    if (!isGood(error) || !image)
        return {};
    if (!hasAlpha)
        return copied(heif, image.get(), QImage::Format_RGB888);
    return copied(heif, image.get(),
        heif.isPremultiplied(handle) ? QImage::Format_RGBA8888_Premultiplied
                                     : QImage::Format_RGBA8888);
}

} // namespace

bool isHeif(QIODevice& file)
{
    constexpr int headBytes = 64;
    constexpr std::array brands{
        "heic", "heix", "heim", "heis", "hevc", "hevx", "avif", "avis", "mif1"};
    const auto head = file.peek(headBytes);
    if (head.mid(4, 4) != "ftyp")
        return false;
    const auto box =
        head.left(std::min<qsizetype>(qFromBigEndian<quint32>(head.constData()), headBytes));
    return std::any_of(brands.begin(), brands.end(),
        [&box](const char* brand) { return box.indexOf(brand, 8) >= 0; });
}

Result<DecodedImage> decodeHeif(QIODevice& file, const ImageLimits& limits)
{
    const auto* heif = heifLibrary();
    if (!heif)
        return tl::make_unexpected(Error{
            .kind = Error::Kind::unreadable, .message = QStringLiteral("libheif is missing")});
    const auto bytes = file.readAll();
    const Context context(heif->allocateContext(), heif->freeContext);
    const auto opened =
        heif->read(context.get(), bytes.constData(), static_cast<size_t>(bytes.size()), nullptr);
    if (!isGood(opened))
        return undecodable(opened.message);
    heif_image_handle* primary = nullptr;
    if (const auto found = heif->primaryImage(context.get(), &primary); !isGood(found))
        return undecodable(found.message);
    const Handle handle(primary, heif->releaseHandle);
    const QSize uprightSize(heif->uprightWidth(primary), heif->uprightHeight(primary));
    const QSize fileSize(heif->fileWidth(primary), heif->fileHeight(primary));
    const auto bits = heif->bits(primary);
    if (!isWithin(uprightSize, bits, limits) || !isWithin(fileSize, bits, limits))
        return undecodable("more pixels than a picture may have");
    auto image = decodedImage(*heif, primary);
    if (image.isNull())
        return undecodable("the picture can't be decoded");
    image.setColorSpace(colorSpace(*heif, primary));
    return DecodedImage{
        .image = image, .fileSize = fileSize, .dotsPerInch = dotsPerInch(*heif, primary)};
}

} // namespace Platform

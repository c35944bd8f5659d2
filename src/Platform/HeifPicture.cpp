#include "Platform/HeifPicture.h"

#include <algorithm>
#include <memory>
#include <unistd.h>

namespace Platform {

namespace {

using Context = std::unique_ptr<heif_context, decltype(&heif_context_free)>;
using Handle = std::unique_ptr<heif_image_handle, decltype(&heif_image_handle_release)>;
using Image = std::unique_ptr<heif_image, decltype(&heif_image_release)>;
using CodedColours =
    std::unique_ptr<heif_color_profile_nclx, decltype(&heif_nclx_color_profile_free)>;

bool isGood(const heif_error& error)
{
    return error.code == heif_error_Ok;
}

bool writeAll(int descriptor, const void* bytes, qint64 size)
{
    const auto* rest = static_cast<const char*>(bytes);
    while (size > 0) {
        const auto count = write(descriptor, rest, static_cast<size_t>(size));
        if (count <= 0)
            return false;
        rest += count;
        size -= count;
    }
    return true;
}

QByteArray profile(const HeifLibrary& heif, const heif_image_handle* handle)
{
    constexpr size_t largest = 16 << 20;
    QByteArray profile(
        static_cast<qsizetype>(std::min(heif.profileSize(handle), largest + 1)), '\0');
    const bool isRead = profile.size() <= qsizetype{largest} && !profile.isEmpty()
        && isGood(heif.profile(handle, profile.data()));
    return isRead ? profile : QByteArray();
}

QByteArray exif(const HeifLibrary& heif, const heif_image_handle* handle)
{
    constexpr size_t largest = 1 << 20;
    heif_item_id id = 0;
    if (heif.metadata(handle, "Exif", &id, 1) != 1)
        return {};
    const auto size = heif.metadataSize(handle, id);
    if (size == 0 || size > largest)
        return {};
    QByteArray exif(static_cast<qsizetype>(size), '\0');
    return isGood(heif.readMetadata(handle, id, exif.data())) ? exif : QByteArray();
}

void readCodedColours(
    HeifPicture& picture, const HeifLibrary& heif, const heif_image_handle* handle)
{
    heif_color_profile_nclx* coded = nullptr;
    if (!isGood(heif.codedColours(handle, &coded)) || !coded)
        return;
    const CodedColours owner(coded, heif.freeCodedColours);
    picture.hasCodedColours = coded->color_primaries != heif_color_primaries_unspecified;
    picture.isLinear = coded->transfer_characteristics == heif_transfer_characteristic_linear;
    picture.colours = {coded->color_primary_white_x, coded->color_primary_white_y,
        coded->color_primary_red_x, coded->color_primary_red_y, coded->color_primary_green_x,
        coded->color_primary_green_y, coded->color_primary_blue_x, coded->color_primary_blue_y};
}

bool decodeInto(
    int descriptor, const HeifLibrary& heif, const heif_image_handle* handle, HeifPicture& picture)
{
    heif_image* decoded = nullptr;
    const auto error = heif.decode(handle, &decoded, heif_colorspace_RGB,
        picture.hasAlpha ? heif_chroma_interleaved_RGBA : heif_chroma_interleaved_RGB, nullptr);
    const Image image(decoded, heif.releaseImage);
    if (!isGood(error) || !image)
        return false;
    picture.width = heif.imageWidth(decoded, heif_channel_interleaved);
    picture.height = heif.imageHeight(decoded, heif_channel_interleaved);
    if (picture.width != heif.uprightWidth(handle)
        || picture.height != heif.uprightHeight(handle)) {
        // The file lies: what is coded inside has another size.
        picture.fileWidth = picture.width;
        picture.fileHeight = picture.height;
    }
    const auto* pixels = heif.pixels(decoded, heif_channel_interleaved, &picture.rowBytes);
    const auto colours = profile(heif, handle);
    const auto tags = exif(heif, handle);
    picture.profileSize = colours.size();
    picture.exifSize = tags.size();
    return pixels && writeAll(descriptor, &picture, sizeof(picture))
        && writeAll(descriptor, pixels, picture.pixelBytes())
        && writeAll(descriptor, colours.constData(), colours.size())
        && writeAll(descriptor, tags.constData(), tags.size());
}

} // namespace

bool decodeHeifInto(
    int descriptor, const HeifLibrary& heif, const QByteArray& bytes, qint64 mostPixels)
{
    const Context context(heif.allocateContext(), heif.freeContext);
    if (!isGood(heif.read(
            context.get(), bytes.constData(), static_cast<size_t>(bytes.size()), nullptr)))
        return false;
    heif_image_handle* primary = nullptr;
    if (!isGood(heif.primaryImage(context.get(), &primary)))
        return false;
    const Handle handle(primary, heif.releaseHandle);
    HeifPicture picture;
    picture.fileWidth = heif.fileWidth(primary);
    picture.fileHeight = heif.fileHeight(primary);
    picture.hasAlpha = heif.hasAlpha(primary) != 0;
    picture.isPremultiplied = heif.isPremultiplied(primary) != 0;
    readCodedColours(picture, heif, primary);
    if (qint64{heif.uprightWidth(primary)} * heif.uprightHeight(primary) > mostPixels
        || qint64{picture.fileWidth} * picture.fileHeight > mostPixels)
        return false;
    return decodeInto(descriptor, heif, primary, picture);
}

} // namespace Platform

#include "Platform/Heif.h"

#include "Platform/Confinement.h"
#include "Platform/ExifTags.h"
#include "Platform/HeifPicture.h"

#include <QBuffer>
#include <QColorSpace>
#include <QFile>

#include <algorithm>
#include <array>
#include <sys/mman.h>

namespace Platform {

namespace {

using namespace std::chrono_literals;

tl::unexpected<Error> failed(Error::Kind kind, const QString& message)
{
    return tl::make_unexpected(Error{.kind = kind, .message = message});
}

/// The most that a pixel takes while it is decoded: the planes of the decoder, the same as the
/// picture is put together and turned, and their colours.
constexpr qint64 bytesOfPixel = 10;

/// An ICC profile counts before coded colours. Neither, or a broken one: no colour space.
QColorSpace colorSpace(const HeifPicture& picture, const QByteArray& profile)
{
    if (!profile.isEmpty())
        return QColorSpace::fromIccProfile(profile);
    if (!picture.hasCodedColours)
        return {};
    const auto& c = picture.colours;
    return {{c[0], c[1]}, {c[2], c[3]}, {c[4], c[5]}, {c[6], c[7]},
        picture.isLinear ? QColorSpace::TransferFunction::Linear
                         : QColorSpace::TransferFunction::SRgb}; // Which others are close to.
}

/// The EXIF block begins with four bytes that tell where in the rest its TIFF header is.
std::optional<double> dotsPerInch(const QByteArray& exif)
{
    QBuffer block;
    block.setData(exif);
    block.open(QIODevice::ReadOnly);
    const ByteSource source(block);
    const auto place = source.bigEndian<quint32>(0);
    return place ? readExifTags(source.from(qint64{*place} + 4)).dotsPerInch : std::nullopt;
}

bool isWhole(const HeifPicture& picture, qint64 fileSize)
{
    const auto channels = picture.hasAlpha ? 4 : 3;
    return picture.width > 0 && picture.height > 0
        && picture.rowBytes >= qint64{picture.width} * channels
        && qint64{sizeof(picture)} + picture.pixelBytes() + picture.profileSize + picture.exifSize
        == fileSize;
}

QImage::Format formatOf(const HeifPicture& picture)
{
    if (!picture.hasAlpha)
        return QImage::Format_RGB888;
    return picture.isPremultiplied ? QImage::Format_RGBA8888_Premultiplied
                                   : QImage::Format_RGBA8888;
}

/// What the process of the decoder left in @p file.
std::optional<DecodedImage> readPicture(QFile& file)
{
    HeifPicture picture;
    const auto size = file.size();
    if (!file.seek(0)
        || file.read(reinterpret_cast<char*>(&picture), sizeof(picture)) != sizeof(picture)
        || !isWhole(picture, size))
        return std::nullopt;
    const auto* content = file.map(0, size);
    if (!content)
        return std::nullopt;
    const auto* pixels = content + sizeof(picture);
    const QImage foreign(
        pixels, picture.width, picture.height, picture.rowBytes, formatOf(picture));
    const auto behindPixels = qint64{sizeof(picture)} + picture.pixelBytes();
    file.seek(behindPixels);
    const auto profile = file.read(picture.profileSize);
    const auto exif = file.read(picture.exifSize);
    auto image =
        foreign.convertToFormat(picture.hasAlpha ? QImage::Format_ARGB32 : QImage::Format_RGB32);
    image.setColorSpace(colorSpace(picture, profile));
    return DecodedImage{.image = image,
        .fileSize = {picture.fileWidth, picture.fileHeight},
        .dotsPerInch = dotsPerInch(exif)};
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
        return failed(Error::Kind::unreadable, QStringLiteral("libheif is missing"));
    QFile output;
    const int descriptor = memfd_create("picture", MFD_CLOEXEC);
    if (!output.open(descriptor, QIODevice::ReadOnly, QFileDevice::AutoCloseHandle))
        return failed(Error::Kind::failed, output.errorString());
    const auto bytes = file.readAll();
    const auto decode = [&] {
        return decodeHeifInto(descriptor, *heif, bytes,
            std::min(limits.filePixels, limits.decodedBytes / bytesOfPixel));
    };
    const auto ended = runConfined(decode, {.bytes = limits.decodedBytes * 2, .time = 60s});
    if (!ended)
        return failed(Error::Kind::failed, ended.error().message);
    auto picture = readPicture(output);
    if (!picture)
        return failed(Error::Kind::failed, QStringLiteral("the picture isn't whole"));
    return *std::move(picture);
}

} // namespace Platform

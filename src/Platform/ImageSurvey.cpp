#include "Platform/ImageSurvey.h"

#include "Platform/ImageDecoder.h"
#include "Platform/ImageHeader.h"
#include "Platform/ImageResolution.h"
#include "Platform/ImageSource.h"
#include "Platform/PngThumbnail.h"

#include <QImageReader>

#include <algorithm>
#include <cmath>
#include <new>
#include <system_error>

namespace Platform {

namespace {

tl::unexpected<Error> unreadable(const QString& message)
{
    return tl::make_unexpected(Error{.kind = Error::Kind::unreadable, .message = message});
}

QSize thumbnailSize(const QSize& size, int longEdge)
{
    const auto longest = std::max(size.width(), size.height());
    if (longest <= longEdge)
        return size;
    const auto scaled = [&](int side) {
        return std::max(
            1, static_cast<int>(std::lround(static_cast<double>(side) * longEdge / longest)));
    };
    return {scaled(size.width()), scaled(size.height())};
}

/// Whether whole pixels are fine enough to take means of.
bool canShrink(const QSize& size, const QSize& thumbnail)
{
    constexpr int least = 4;
    const auto isBetween = [](int whole, int part) {
        return whole >= qint64{part} * least && whole <= qint64{part} * largestPngReduction;
    };
    return isBetween(size.width(), thumbnail.width())
        && isBetween(size.height(), thumbnail.height());
}

/// Of a plain PNG file that is much larger than its thumbnail.
std::optional<ImageSurvey> surveyPlainPng(QIODevice& file, int longEdge)
{
    const auto png = readPlainPng(file);
    if (!png)
        return std::nullopt;
    const auto size = thumbnailSize(png->size, longEdge);
    const bool isWithin =
        qint64{png->size.width()} * png->size.height() <= ImageLimits{}.filePixels;
    if (!isWithin || !canShrink(png->size, size))
        return std::nullopt;
    return ImageSurvey{.pixelSize = png->size,
        .dotsPerInch = imageDotsPerInch(file),
        .thumbnail = shrunkPng(file, *png, size)};
}

/// Without decoding. Invalid where it isn't told.
QSize headerSize(QIODevice& file)
{
    const ByteSource source(file);
    const auto kind = fileKind(source);
    if (kind == FileKind::gif)
        return gifSize(source);
    file.seek(0);
    return kind == FileKind::other ? QSize() : QImageReader(&file).size();
}

Result<ImageSurvey> surveyAny(const std::filesystem::path& path, QIODevice& file, int longEdge)
{
    const auto decoded = decodeImageFile(path, {.longEdge = longEdge});
    if (decoded && !decoded->fileSize.isEmpty())
        return ImageSurvey{.pixelSize = decoded->fileSize,
            .dotsPerInch = decoded->dotsPerInch,
            .thumbnail = decoded->image};
    const auto size = headerSize(file);
    if (size.isEmpty())
        return decoded ? unreadable(QStringLiteral("no size in the header"))
                       : tl::make_unexpected(decoded.error());
    file.seek(0);
    return ImageSurvey{.pixelSize = size, .dotsPerInch = imageDotsPerInch(file), .thumbnail = {}};
}

Result<ImageSurvey> survey(const std::filesystem::path& path, int longEdge)
{
    std::error_code error;
    if (!std::filesystem::is_regular_file(path, error))
        return unreadable(QStringLiteral("no file"));
    const auto file = openImageSource(path);
    if (!file)
        return tl::make_unexpected(file.error());
    if (auto plain = surveyPlainPng(**file, longEdge))
        return *std::move(plain);
    return surveyAny(path, **file, longEdge);
}

} // namespace

Result<ImageSurvey> surveyImageFile(const std::filesystem::path& path, int thumbnailLongEdge)
try {
    return survey(path, thumbnailLongEdge);
} catch (const std::bad_alloc&) {
    return tl::make_unexpected(
        Error{.kind = Error::Kind::failed, .message = QStringLiteral("out of memory")});
}

} // namespace Platform

#include "Encoders.h"

#include "Platform/PngEncoder.h"

#include <QBuffer>

#include <cstdlib>
#include <memory>
#include <png.h>
#include <spng.h>

namespace Lumenote::Bench {

namespace {

constexpr double dotsPerInch = 72;
constexpr int levelOfTheLibrary = -1;

void append(png_structp png, png_bytep bytes, size_t size)
{
    static_cast<QByteArray*>(png_get_io_ptr(png))
        ->append(reinterpret_cast<const char*>(bytes), qsizetype(size));
}

QByteArray withLibpngAt(const QImage& image, int level)
{
    QByteArray file;
    png_structp png = png_create_write_struct(PNG_LIBPNG_VER_STRING, nullptr, nullptr, nullptr);
    png_infop info = png_create_info_struct(png);
    png_set_write_fn(png, &file, append, nullptr);
    png_set_IHDR(png, info, png_uint_32(image.width()), png_uint_32(image.height()), 8,
        PNG_COLOR_TYPE_RGB, PNG_INTERLACE_NONE, PNG_COMPRESSION_TYPE_BASE, PNG_FILTER_TYPE_BASE);
    if (level != levelOfTheLibrary)
        png_set_compression_level(png, level);
    png_write_info(png, info);
    png_set_bgr(png);
    png_set_filler(png, 0, PNG_FILLER_AFTER);
    for (int y = 0; y < image.height(); ++y)
        png_write_row(png, image.constScanLine(y));
    png_write_end(png, info);
    png_destroy_write_struct(&png, &info);
    return file;
}

} // namespace

QByteArray withLumenote(const QImage& image)
{
    return Platform::encodePng(image, dotsPerInch).value();
}

QByteArray withQImageSave(const QImage& image)
{
    QByteArray file;
    QBuffer buffer(&file);
    buffer.open(QIODevice::WriteOnly);
    image.save(&buffer, "png");
    return file;
}

QByteArray withLibpng(const QImage& image)
{
    return withLibpngAt(image, levelOfTheLibrary);
}

QByteArray withLibpngLevel1(const QImage& image)
{
    return withLibpngAt(image, 1);
}

QByteArray withLibspng(const QImage& image)
{
    const QImage packed = image.convertToFormat(QImage::Format_RGB888); // Rows of 11520 bytes.
    const std::unique_ptr<spng_ctx, decltype(&spng_ctx_free)> context(
        spng_ctx_new(SPNG_CTX_ENCODER), spng_ctx_free);
    spng_set_option(context.get(), SPNG_ENCODE_TO_BUFFER, 1);
    spng_ihdr header{};
    header.width = uint32_t(image.width());
    header.height = uint32_t(image.height());
    header.color_type = SPNG_COLOR_TYPE_TRUECOLOR;
    header.bit_depth = 8;
    spng_set_ihdr(context.get(), &header);
    spng_encode_image(context.get(), packed.constBits(), size_t(packed.sizeInBytes()), SPNG_FMT_PNG,
        SPNG_ENCODE_FINALIZE);
    size_t size = 0;
    int error = 0;
    const std::unique_ptr<void, decltype(&std::free)> buffer(
        spng_get_png_buffer(context.get(), &size, &error), std::free);
    return {static_cast<const char*>(buffer.get()), qsizetype(size)};
}

} // namespace Lumenote::Bench

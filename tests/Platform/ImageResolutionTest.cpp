#include "Platform/ImageResolution.h"

#include <QBuffer>
#include <QImage>

#include <cmath>
#include <gtest/gtest.h>

namespace {

/// What Qt writes; the resolution of the screen unless the picture is told another.
QByteArray encoded(const char* format, std::optional<double> dotsPerInch)
{
    constexpr double metresPerInch = 0.0254;
    QImage image(24, 16, QImage::Format_RGB32);
    image.fill(Qt::red);
    image.setDotsPerMeterX(static_cast<int>(std::lround(dotsPerInch.value_or(0) / metresPerInch)));
    QBuffer buffer;
    buffer.open(QIODevice::WriteOnly);
    EXPECT_TRUE(image.save(&buffer, format)) << format;
    return buffer.data();
}

QByteArray hex(const char* text)
{
    return QByteArray::fromHex(text);
}

QByteArray png(const QByteArray& chunk)
{
    return encoded("png", 300).insert(33, chunk);
}

QByteArray physical(const char* content)
{
    return hex("00000009") + "pHYs" + hex(content) + "crc.";
}

/// A directory with a resolution of 300 and this unit, in either order of bytes.
const QByteArray exifBig =
    hex("4d4d002a00000008 0002 011a000500000001 00000026 012800030000000100020000 00000000"
        "0000012c00000001");
const QByteArray exifLittle =
    hex("49492a0008000000 0200 1a01050001000000 26000000 280103000100000003000000 00000000"
        "2c01000001000000");

QByteArray jpeg(const QByteArray& segments)
{
    return hex("ffd8") + segments + hex("ffda0003");
}

QByteArray jfif(const char* unitAndDensity)
{
    return hex("ffe00010") + QByteArray("JFIF\0", 5) + hex("0102") + hex(unitAndDensity)
        + hex("0000");
}

QByteArray exifSegment(const QByteArray& exif)
{
    return hex("ffe1002e") + QByteArray("Exif\0\0", 6) + exif;
}

TEST(ImageResolutionTest, whatTheFileTellsIsReadAndNothingElse)
{
    auto negativeBmp = encoded("bmp", 144);
    negativeBmp.replace(38, 4, hex("ffffff80"));
    const auto check = [&](const char* name, const QByteArray& bytes, double dotsPerInch = 0) {
        SCOPED_TRACE(name);
        QBuffer file;
        file.setData(bytes);
        ASSERT_TRUE(file.open(QIODevice::ReadOnly));
        EXPECT_NEAR(Platform::imageDotsPerInch(file).value_or(0), dotsPerInch, 0.02);
        EXPECT_EQ(file.pos(), 0);
    };
    check("png", encoded("png", 144), 144);
    check("pngOfNoUnit", png(physical("00000b1300000b1300")));
    check("pngOfNone", png(physical("000000000000000001")));
    check("pngAbsurd", png(physical("ffffffffffffffff01")));
    check("pngInExif", png(hex("0000002e") + "eXIf" + exifBig + "crc."), 300);
    check("jpeg", encoded("jpeg", 144), 144);
    check("jpegPerCentimetre", jpeg(jfif("0200760076")), 118 * 2.54);
    check("jpegOfNoUnit", jpeg(jfif("0000010001")));
    check("jpegOfBoth", jpeg(jfif("0100900090") + exifSegment(exifBig)), 144);
    check("jpegExifPerCentimetre", jpeg(exifSegment(exifLittle)), 300 * 2.54);
    check("jpegBehindItsPixels", hex("ffd8ffda0002") + jfif("0100900090"));
    check("tiff", encoded("tiff", 144), 144);
    check("tiffDividedByNone", QByteArray(exifBig).replace(42, 4, hex("00000000")));
    check("tiffOfNoUnit", QByteArray(exifBig).replace(30, 2, hex("0001")));
    check("tiffPointingOut", QByteArray(exifBig).replace(18, 4, hex("fffffff0")));
    check("tiffWithoutEnd", hex("4d4d002a00000008ffff"));
    check("bmp", encoded("bmp", 144), 144);
    check("bmpOfLessThanNone", negativeBmp);
    check("webpWithExif",
        "RIFF____WEBPVP8X" + hex("01000000aa00") + "EXIF" + hex("2e000000") + exifBig, 300);
    check("empty", {});
}

} // namespace

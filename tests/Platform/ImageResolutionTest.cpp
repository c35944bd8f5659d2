#include "Platform/ImageResolution.h"

#include <QBuffer>
#include <QImage>

#include <array>
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
    struct Row {
        const char* name;
        QByteArray bytes;
        double dotsPerInch = 0; // None.
    };
    auto plainBmp = encoded("bmp", 144);
    plainBmp.replace(38, 4, hex("00000000"));
    auto negativeBmp = encoded("bmp", 144);
    negativeBmp.replace(38, 4, hex("ffffff80"));
    const std::array rows{
        Row{"png", encoded("png", 144), 144},
        Row{"pngOfTheUsualScreen", encoded("png", 96), 96},
        Row{"pngOfNoUnit", png(physical("00000b1300000b1300"))},
        Row{"pngOfNone", png(physical("000000000000000001"))},
        Row{"pngAbsurd", png(physical("ffffffffffffffff01"))},
        Row{"pngInExif", png(hex("0000002e") + "eXIf" + exifBig + "crc."), 300},
        Row{"pngTextOnly", "\x89PNG\r\n\x1a\n"},
        Row{"jpeg", encoded("jpeg", 144), 144},
        Row{"jpegPerCentimetre", jpeg(jfif("0200760076")), 118 * 2.54},
        Row{"jpegOfNoUnit", jpeg(jfif("0000010001"))},
        Row{"jpegOfNoUnitWithExif", jpeg(jfif("0000010001") + exifSegment(exifBig)), 300},
        Row{"jpegOfBoth", jpeg(jfif("0100900090") + exifSegment(exifBig)), 144},
        Row{"jpegExifPerCentimetre", jpeg(exifSegment(exifLittle)), 300 * 2.54},
        Row{"jpegBehindItsPixels", hex("ffd8ffda0002") + jfif("0100900090")},
        Row{"tiff", encoded("tiff", 144), 144},
        Row{"tiffBig", exifBig, 300},
        Row{"tiffDividedByNone", QByteArray(exifBig).replace(42, 4, hex("00000000"))},
        Row{"tiffOfNoUnit", QByteArray(exifBig).replace(30, 2, hex("0001"))},
        Row{"tiffPointingOut", QByteArray(exifBig).replace(18, 4, hex("fffffff0"))},
        Row{"tiffWithoutEnd", hex("4d4d002a00000008ffff")},
        Row{"bmp", encoded("bmp", 144), 144},
        Row{"bmpOfNone", plainBmp},
        Row{"bmpOfLessThanNone", negativeBmp},
        Row{"webp", encoded("webp", 144)},
        Row{"webpWithExif",
            "RIFF____WEBPVP8X" + hex("01000000aa00") + "EXIF" + hex("2e000000") + exifBig, 300},
        Row{"gif", "GIF89a" + hex("18001000")},
        Row{"empty", {}},
    };
    for (const auto& row : rows) {
        QBuffer file;
        file.setData(row.bytes);
        ASSERT_TRUE(file.open(QIODevice::ReadOnly));
        EXPECT_NEAR(Platform::imageDotsPerInch(file).value_or(0), row.dotsPerInch, 0.02)
            << row.name;
        EXPECT_EQ(file.pos(), 0) << row.name;
    }
}

} // namespace

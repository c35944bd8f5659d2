#include "Platform/PngEncoder.h"

#include "Harness/IccProfile.h"

#include <QBuffer>
#include <QColorSpace>
#include <QImageReader>
#include <QPainter>

#include <gtest/gtest.h>
#include <limits>
#include <random>
#include <sys/resource.h>

using Platform::encodePng;

namespace {

enum class Opacity { opaque, mixed };
enum class Content { flat, smooth, noise };

QRgb nextPixel(Content content, QRgb last, int x, int y, std::mt19937& random)
{
    switch (content) {
    case Content::flat:
        return random() % 16 == 0 ? static_cast<QRgb>(random()) : last;
    case Content::smooth:
        return qRgba(x / 3 % 256, y / 2 % 256, (x + y) / 5 % 256 ^ static_cast<int>(random() % 2),
            200 + x % 50);
    case Content::noise:
        break;
    }
    return static_cast<QRgb>(random());
}

/// What the encoder treats in different ways; the same for the same seed.
QImage drawn(const QSize& size, Content content, Opacity opacity, quint32 seed = 1)
{
    std::mt19937 random(seed);
    QImage image(size, QImage::Format_ARGB32);
    QRgb colour = 0;
    for (int y = 0; y < size.height(); ++y)
        for (int x = 0; x < size.width(); ++x) {
            colour = nextPixel(content, colour, x, y, random);
            image.setPixel(x, y, opacity == Opacity::opaque ? colour | 0xff000000U : colour);
        }
    return image;
}

QImage decoded(const QByteArray& png)
{
    QBuffer buffer;
    buffer.setData(png);
    buffer.open(QIODevice::ReadOnly);
    QImageReader reader(&buffer, "png");
    auto image = reader.read();
    EXPECT_FALSE(image.isNull()) << reader.errorString().toStdString();
    return image;
}

QImage with8Bits(const QImage& image)
{
    // Not at once: Qt's conversion would take the filling bits of some formats for alpha.
    auto plain =
        image
            .convertToFormat(image.hasAlphaChannel() ? QImage::Format_ARGB32 : QImage::Format_RGB32)
            .convertToFormat(QImage::Format_ARGB32);
    plain.setColorSpace({});
    return plain;
}

bool isSame(const QImage& image, const QImage& other)
{
    return with8Bits(image) == with8Bits(other);
}

int colourType(const QByteArray& png)
{
    return png.at(25);
}

constexpr int withoutAlpha = 2;
constexpr int withAlpha = 6;

TEST(PngEncoderTest, everyFormatComesBackPixelByPixel)
{
    const auto picture = drawn({61, 37}, Content::noise, Opacity::mixed);
    for (int i = QImage::Format_Mono; i < QImage::NImageFormats; ++i) {
        const auto image = picture.convertToFormat(static_cast<QImage::Format>(i));
        const auto png = encodePng(image, 72);
        ASSERT_TRUE(png) << "format " << i << ": " << png.error().message.toStdString();
        EXPECT_TRUE(isSame(image, decoded(*png))) << "format " << i;
        EXPECT_EQ(colourType(*png), image.hasAlphaChannel() ? withAlpha : withoutAlpha)
            << "format " << i;
    }
}

TEST(PngEncoderTest, opaquePixelsTakeNoAlphaChannel)
{
    const auto opaque = drawn({61, 37}, Content::flat, Opacity::opaque);
    auto almost = opaque;
    almost.setPixel(60, 36, 0xfe808080);
    for (const auto format : {QImage::Format_ARGB32, QImage::Format_ARGB32_Premultiplied,
             QImage::Format_RGBA8888, QImage::Format_RGBA64})
        for (const auto& [picture, type] :
            {std::pair(opaque, withoutAlpha), std::pair(almost, withAlpha)}) {
            const auto image = picture.convertToFormat(format);
            const auto png = *encodePng(image, 72);
            EXPECT_EQ(colourType(png), type) << format;
            EXPECT_TRUE(isSame(image, decoded(png))) << format;
        }
}

TEST(PngEncoderTest, everySizeComesBackPixelByPixel)
{
    std::vector<QSize> sizes{{1, 1}, {3000, 1}, {1, 3000}, {2, 2}, {3, 5}, {1921, 181}};
    std::mt19937 random(7);
    while (sizes.size() < 60)
        sizes.emplace_back(1 + random() % 90, 1 + random() % 40);
    quint32 seed = 0;
    for (const auto& size : sizes)
        for (const auto content : {Content::flat, Content::smooth, Content::noise})
            for (const auto opacity : {Opacity::opaque, Opacity::mixed}) {
                const auto image = drawn(size, content, opacity, ++seed);
                const auto png = encodePng(image, 72);
                ASSERT_TRUE(png) << png.error().message.toStdString();
                ASSERT_TRUE(isSame(image, decoded(*png)))
                    << size.width() << 'x' << size.height() << ", seed " << seed;
            }
}

TEST(PngEncoderTest, aPictureOfManyKindsComesBackPixelByPixel)
{
    QImage image(900, 700, QImage::Format_RGB32);
    image.fill(Qt::white);
    QPainter painter(&image);
    int part = 0;
    for (const auto content : {Content::smooth, Content::flat, Content::noise, Content::smooth})
        painter.drawImage(40, ++part * 140, drawn({800, 130}, content, Opacity::opaque));
    painter.end();
    EXPECT_TRUE(isSame(image, decoded(*encodePng(image, 72))));
}

TEST(PngEncoderTest, aPartOfAnotherImagesMemoryIsEnough)
{
    const auto whole = drawn({40, 30}, Content::noise, Opacity::opaque);
    const QImage part(whole.constScanLine(5) + qsizetype{4} * 7, 20, 10, whole.bytesPerLine(),
        QImage::Format_RGB32);
    EXPECT_TRUE(isSame(whole.copy(7, 5, 20, 10), decoded(*encodePng(part, 72))));
}

TEST(PngEncoderTest, theColourSpaceIsKept)
{
    const QColorSpace wide(QColorSpace::Primaries::ProPhotoRgb, 1.4F);
    const auto check = [&](const char* name, const QColorSpace& colourSpace,
                           const QColorSpace& expected) {
        SCOPED_TRACE(name);
        auto image = drawn({5, 4}, Content::noise, Opacity::mixed);
        image.setColorSpace(colourSpace);
        const auto back = decoded(*encodePng(image, 72));
        EXPECT_EQ(back.colorSpace(), expected);
        EXPECT_TRUE(isSame(image, back));
    };
    check("none", {}, QColorSpace::SRgb);
    check("sRgb", QColorSpace::SRgb, QColorSpace::SRgb);
    check("displayP3", QColorSpace::DisplayP3, QColorSpace::DisplayP3);
    check("adobeRgb", QColorSpace::AdobeRgb, QColorSpace::AdobeRgb);
    check("ofItsOwn", wide, wide);
    check("unusable", QColorSpace::fromIccProfile(Harness::iccProfile("CMYK")), QColorSpace::SRgb);
}

TEST(PngEncoderTest, greysAreWrittenAsColours)
{
    QImage image(5, 4, QImage::Format_RGB32);
    image.fill(QColor(180, 180, 180));
    image.setColorSpace(QColorSpace::fromIccProfile(Harness::iccProfile("GRAY")));
    ASSERT_TRUE(image.colorSpace().isValid());
    const auto back = decoded(*encodePng(image, 72));
    EXPECT_EQ(back.colorSpace(), QColorSpace(QColorSpace::SRgb));
    EXPECT_NEAR(qGreen(back.pixel(2, 2)), 180, 2);
}

TEST(PngEncoderTest, theResolutionIsKept)
{
    const int noneTold = decoded(*encodePng(drawn({1, 1}, Content::flat, Opacity::opaque), 0))
                             .dotsPerMeterX(); // What the decoder has to go by.
    constexpr auto infinity = std::numeric_limits<double>::infinity();
    const auto check = [&](double written, int dotsPerMetre) {
        auto image = drawn({5, 4}, Content::flat, Opacity::opaque);
        image.setDotsPerMeterX(1234);
        const auto back = decoded(*encodePng(image, written));
        EXPECT_EQ(back.dotsPerMeterX(), dotsPerMetre) << written;
        EXPECT_EQ(back.dotsPerMeterY(), dotsPerMetre) << written;
    };
    check(72, 2835);
    check(144, 5669);
    check(0.72, 28);
    check(0.001, 1);
    check(1e300, 0x7fff'ffff);
    check(0, noneTold);
    check(-72, noneTold);
    check(infinity, noneTold);
    check(std::numeric_limits<double>::quiet_NaN(), noneTold);
}

TEST(PngEncoderTest, noImageIsAFailure)
{
    const auto png = encodePng({}, 72);
    ASSERT_FALSE(png);
    EXPECT_EQ(png.error().kind, Platform::Error::Kind::failed);
}

#if !defined(__SANITIZE_ADDRESS__) && !defined(__SANITIZE_THREAD__)
// The sanitizers end a program that gets no memory, and need more of it than the limit lets them.
TEST(PngEncoderTest, noMemoryIsAFailure)
{
    rlimit before{};
    getrlimit(RLIMIT_AS, &before);
    for (const auto content : {Content::smooth, Content::noise}) {
        // More than the C library would keep back for later.
        const auto image = drawn({4000, 3000}, content, Opacity::mixed);
        auto limited = before;
        limited.rlim_cur = 1; // What is there already stays.
        setrlimit(RLIMIT_AS, &limited);
        const auto png = encodePng(image, 72);
        setrlimit(RLIMIT_AS, &before);
        ASSERT_FALSE(png);
        EXPECT_EQ(png.error().kind, Platform::Error::Kind::failed);
    }
}
#endif

} // namespace

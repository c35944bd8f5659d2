#include "Platform/ImageDecoder.h"

#include "Harness/Folder.h"
#include "Harness/Pictures.h"

#include <QBuffer>
#include <QColorSpace>
#include <QImageWriter>

#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <thread>
#include <unistd.h>

using namespace Harness;
using Platform::DecodedImage;
using Platform::decodeImageFile;
using Platform::Error;
using Platform::ImageLimits;
using namespace std::chrono_literals;

namespace {

/// Red at the left, white at the right.
QImage halves(const QSize& size = {24, 16})
{
    QImage image(size, QImage::Format_RGB32);
    image.fill(Qt::white);
    image.setColorSpace(QColorSpace::DisplayP3);
    for (int y = 0; y < size.height(); ++y)
        for (int x = 0; x < size.width() / 2; ++x)
            image.setPixelColor(x, y, QColor(200, 30, 30));
    return image;
}

QByteArray repeatedScan(const QByteArray& jpeg, int count)
{
    const auto end = jpeg.size() - 2;
    const auto last = jpeg.lastIndexOf(QByteArray::fromHex("ffda"));
    return jpeg.left(end) + jpeg.mid(last, end - last).repeated(count) + jpeg.mid(end);
}

QByteArray progressiveJpeg()
{
    QBuffer buffer;
    QImageWriter writer(&buffer, "jpeg");
    writer.setProgressiveScanWrite(true);
    EXPECT_TRUE(writer.write(halves()));
    return buffer.data();
}

class ImageDecoderTest : public testing::Test {
protected:
    std::filesystem::path pipe() const
    {
        auto path = folder.pathOf("pipe");
        EXPECT_EQ(mkfifo(path.c_str(), 0600), 0);
        return path;
    }

public:
    const Folder folder;
};

TEST_F(ImageDecoderTest, picturesOfManyKindsComeUprightAndDisplayable)
{
    auto transparent = halves().convertToFormat(QImage::Format_ARGB32);
    transparent.setPixelColor(20, 8, Qt::transparent);
    auto plain = halves();
    plain.setColorSpace({});

    const QSize size(24, 16);
    const QColor gray(104, 104, 104);
    const auto distance = [](const QColor& a, const QColor& b) {
        return std::max({std::abs(a.red() - b.red()), std::abs(a.green() - b.green()),
            std::abs(a.blue() - b.blue()), std::abs(a.alpha() - b.alpha())});
    };
    constexpr int tolerance = 12; // Some formats lose a little.
    const auto check = [&](const char* name, const QByteArray& bytes,
                           const QColor& left = {200, 30, 30}, const QColor& right = {Qt::white},
                           QSize fileSize = {24, 16}) {
        SCOPED_TRACE(name);
        const auto image = decodeImageFile(folder.fileWith(bytes));
        ASSERT_TRUE(image) << image.error().message.toStdString();
        EXPECT_EQ(image->image.size(), size);
        EXPECT_EQ(image->fileSize, fileSize);
        EXPECT_LE(image->image.depth(), 32);
        EXPECT_LE(distance(image->image.pixelColor(2, 8), left), tolerance);
        EXPECT_LE(distance(image->image.pixelColor(20, 8), right), tolerance);
    };
    check("png", encoded(halves(), "png"));
    check("pngPalette", encoded(halves().convertToFormat(QImage::Format_Indexed8), "png"));
    check("pngGray", encoded(halves().convertToFormat(QImage::Format_Grayscale8), "png"), gray);
    check(
        "pngDeepGray", encoded(halves().convertToFormat(QImage::Format_Grayscale16), "png"), gray);
    check("pngOneBit",
        encoded(halves().convertToFormat(QImage::Format_Mono, Qt::ThresholdDither), "png"),
        Qt::black);
    check("pngTransparent", encoded(transparent, "png"), {200, 30, 30}, Qt::transparent);
    check("jpeg", encoded(halves(), "jpeg"));
    check("jpegProgressive", progressiveJpeg());
    check("jpegOfManyScans", repeatedScan(progressiveJpeg(), 50));
    check("jpegInInks", pictureFile("cmyk.jpg"));
    check("gifFirstOfTwo", pictureFile("animated.gif"));
    check("bmp", encoded(halves(), "bmp"));
    check("tiff", encoded(halves(), "tiff"));
    check("tiffDeep", encoded(halves().convertToFormat(QImage::Format_RGBX64), "tiff"));
    check("webp", encoded(halves(), "webp"));
    check("ico", encoded(halves(), "ico"));
    check("heic", pictureFile("photo.heic"));
    check("heicDeep", pictureFile("deep.heic"));
    check("heicTurned", pictureFile("lying.heic"), {200, 30, 30}, Qt::white, {16, 24});
    check("avif", pictureFile("photo.avif"));
    check("avifTransparent", pictureFile("transparent.avif"), {200, 30, 30}, Qt::transparent);
    check("avifWithCodedColours", pictureFile("coded-colours.avif"));
    check("pngWithBrokenProfile",
        withPngChunk(encoded(plain, "png"), pngChunk("iCCP", QByteArray("p\0\0?", 4))));
    check("pngWithProfileOfNothing",
        withPngChunk(encoded(plain, "png"),
            pngChunk("iCCP", QByteArray("p\0\0", 3) + qCompress(QByteArray(9, 'x')).mid(4))));
    check("jpegWithBrokenProfile",
        withJpegSegment(encoded(plain, "jpeg"), 0xE2, QByteArray("ICC_PROFILE\0\1\1?", 15)));
}

/// A different colour in each corner, which cornersOf() calls a to d.
QImage fourCorners()
{
    QImage image(48, 32, QImage::Format_RGB32);
    for (int y = 0; y < 32; ++y)
        for (int x = 0; x < 48; ++x)
            image.setPixelColor(x, y, QColor(x < 24 ? 250 : 5, y < 16 ? 250 : 5, 128));
    return image;
}

/// As a person reads them.
std::string cornersOf(const QImage& image)
{
    std::string letters;
    for (const int y : {3, image.height() - 4})
        for (const int x : {3, image.width() - 4}) {
            const auto colour = image.pixelColor(x, y);
            letters += static_cast<char>(
                'a' + (colour.red() < 128 ? 1 : 0) + (colour.green() < 128 ? 2 : 0));
        }
    return letters;
}

TEST_F(ImageDecoderTest, theOrientationTagTurnsPictures)
{
    const auto stored = fourCorners();
    const auto tiffTag = QByteArray::fromHex("12010300010000000100");
    const auto check = [&](quint16 orientation, const char* corners) {
        SCOPED_TRACE(orientation);
        const auto exif = exifOrientation(orientation);
        auto tiff = encoded(stored, "tiff");
        ASSERT_EQ(tiff.count(tiffTag), 1);
        tiff[tiff.indexOf(tiffTag) + 8] = static_cast<char>(orientation);
        for (const auto& file :
            {withJpegSegment(encoded(stored, "jpeg"), 0xE1, QByteArray("Exif\0\0", 6) + exif),
                withPngChunk(encoded(stored, "png"), pngChunk("eXIf", exif)),
                withWebpExif(encoded(stored, "webp"), stored.size(), exif), tiff}) {
            const auto decoded = decodeImageFile(folder.fileWith(file));
            ASSERT_TRUE(decoded) << file.left(4).toStdString();
            EXPECT_EQ(decoded->fileSize, stored.size());
            EXPECT_EQ(decoded->image.size(),
                orientation > 4 ? stored.size().transposed() : stored.size());
            EXPECT_EQ(cornersOf(decoded->image), corners) << file.left(4).toStdString();
        }
    };
    quint16 orientation = 0;
    for (const auto* corners : {"abcd", "badc", "dcba", "cdab", "acbd", "cadb", "dbca", "bdac"})
        check(++orientation, corners);
}

TEST_F(ImageDecoderTest, badPicturesFailWithoutTakingMemory)
{
    const auto png = encoded(halves({400, 300}), "png");
    auto bmp = encoded(halves(), "bmp");
    bmp.replace(18, 8, QByteArray::fromHex("60ea000060ea0000"));
    auto gif = pictureFile("animated.gif");
    gif.replace(6, 4, QByteArray::fromHex("ffffffff"));
    // Making these takes memory as well.
    const auto scans = repeatedScan(progressiveJpeg(), 20'000);
    const auto bomb = blackPng(60'000, 60'000, PngColour::grayBits);
    const auto icon = QByteArray::fromHex("000001000100181000000100200000002000 16000000")
        + blackPng(30'000, 30'000, PngColour::rgb);

    const auto peakBefore = peakMegabytes();
    const auto check = [&](const char* name, const QByteArray& bytes,
                           Error::Kind kind = Error::Kind::failed) {
        SCOPED_TRACE(name);
        const auto image = decodeImageFile(folder.fileWith(bytes));
        ASSERT_FALSE(image);
        EXPECT_EQ(image.error().kind, kind);
    };
    check("empty", {}, Error::Kind::unreadable);
    check("text", "Not a picture.\n", Error::Kind::unreadable);
    check("drawing",
        "<svg xmlns='http://www.w3.org/2000/svg' width='9' height='9'><text>x</text></svg>",
        Error::Kind::unreadable);
    check("film",
        QByteArray::fromHex("8a4d4e470d0a1a0a0000001c4d4844520000ea600000ea60") + "cut short",
        Error::Kind::unreadable);
    check("pngCutInHeader", png.left(24));
    check("pngCutInPixels", png.left(png.size() / 2));
    check("jpegCutInHeader", encoded(halves(), "jpeg").left(100));
    check("gifCutShort", pictureFile("animated.gif").left(60));
    check("pngClaimsMuch", pngClaiming(encoded(halves(), "png"), 60'000, 60'000));
    check("pngClaimsNothing", pngClaiming(encoded(halves(), "png"), 0, 16));
    check("jpegClaimsMuch", jpegClaiming(encoded(halves(), "jpeg"), 60'000, 60'000));
    check("jpegOfEndlessScans", scans);
    check("heicCodedLargerThanItTells", pictureFile("coded-larger.heic"));
    check("heicCutShort", pictureFile("photo.heic").left(700));
    check("avifCutShort", pictureFile("photo.avif").left(600));
    check("bmpClaimsMuch", bmp);
    check("gifClaimsMuch", gif);
    check("iconHoldsABomb", icon);
    check("bomb", bomb);
    check("ppmClaimsMuch", "P6 60000 60000 255\nshort");
    check("bitmapClaimsMuch", "P4 600000 600000\nshort");
    EXPECT_LT(peakMegabytes() - peakBefore, 100);
}

TEST_F(ImageDecoderTest, onlyFilesAndPipesAreOpened)
{
    const auto png = encoded(halves(), "png");
    const auto locked = folder.fileWith(png, "locked");
    chmod(locked.c_str(), 0);

    const auto check = [&](const char* name, const std::filesystem::path& path,
                           bool isReadable = false) {
        SCOPED_TRACE(name);
        const auto image = decodeImageFile(path);
        EXPECT_EQ(image.has_value(), isReadable);
        if (!image) {
            EXPECT_EQ(image.error().kind, Error::Kind::unreadable);
        }
    };
    check("missing", folder.pathOf("nothing here"));
    check("noPath", "");
    check("folder", folder.path());
    check("endlessDevice", "/dev/zero");
    check("pipeThatNobodyWritesTo", pipe());
    check("locked", locked, geteuid() == 0);
    check("nameThatIsNoText", folder.fileWith(png, "caf\xe9 \xff\n.png"), true);
}

TEST_F(ImageDecoderTest, aPipeIsReadToItsEnd)
{
    const auto path = pipe();
    const auto png = encoded(halves(), "png");
    // Keeps what is written, should the writer be done before the decoder opens the pipe.
    const int keeper = open(path.c_str(), O_RDONLY | O_NONBLOCK | O_CLOEXEC);
    const int descriptor = open(path.c_str(), O_WRONLY | O_CLOEXEC);
    const std::jthread writer([&] {
        for (const char byte : png)
            EXPECT_EQ(write(descriptor, &byte, 1), 1);
        close(descriptor);
    });
    const auto image = decodeImageFile(path);
    close(keeper);
    ASSERT_TRUE(image);
    EXPECT_EQ(image->image, halves());
}

TEST_F(ImageDecoderTest, aPipeThatIsSilentOrEndlessIsLeft)
{
    const auto path = pipe();
    const int descriptor = open(path.c_str(), O_RDWR | O_CLOEXEC);
    EXPECT_EQ(decodeImageFile(path, {.pipeSilence = 20ms}).error().kind, Error::Kind::unreadable);
    const QByteArray bytes(10'000, 'x');
    EXPECT_EQ(
        write(descriptor, bytes.constData(), static_cast<size_t>(bytes.size())), bytes.size());
    EXPECT_EQ(decodeImageFile(path, {.fileBytes = 1000, .pipeSilence = 1h}).error().kind,
        Error::Kind::unreadable);
    close(descriptor);
}

TEST_F(ImageDecoderTest, heicAndAvifTellColoursAndResolution)
{
    const auto decoded = [this](const char* name) {
        return decodeImageFile(folder.fileWith(pictureFile(name))).value_or(DecodedImage{});
    };
    const QColorSpace wide(QColorSpace::DisplayP3);
    EXPECT_EQ(decoded("photo.heic").image.colorSpace(), wide);
    EXPECT_EQ(decoded("photo.avif").image.colorSpace(), wide);
    EXPECT_EQ(decoded("coded-colours.avif").image.colorSpace(), wide);
    EXPECT_EQ(decoded("photo.heic").dotsPerInch, std::nullopt);
    EXPECT_EQ(decoded("lying.heic").dotsPerInch, 144);
}

TEST_F(ImageDecoderTest, largePicturesAreScaledAndLargerOnesRefused)
{
    const auto flat = encoded(halves({400, 100}), "png");
    const auto deep = encoded(halves({400, 100}).convertToFormat(QImage::Format_RGBA64), "png");

    const auto check = [&](const char* name, const QByteArray& bytes, const ImageLimits& limits,
                           const std::optional<QSize>& size) {
        SCOPED_TRACE(name);
        const auto image = decodeImageFile(folder.fileWith(bytes), limits);
        EXPECT_EQ(image.has_value(), size.has_value());
        if (image && size) {
            EXPECT_EQ(image->image.size(), *size);
            EXPECT_EQ(image->image.colorSpace(), QColorSpace(QColorSpace::DisplayP3));
        }
    };
    check("heic", pictureFile("photo.heic"), {.longEdge = 12}, QSize(12, 8));
    check("heicTooLarge", pictureFile("photo.heic"), {.decodedBytes = 3000}, std::nullopt);
    check("aboveIt", flat, {.pixels = 10'000}, QSize(200, 50));
    check("deepAboveIt", deep, {.pixels = 10'000}, QSize(200, 50));
    check("narrow", encoded(halves({2, 4000}), "png"), {.pixels = 2000}, QSize(1, 2000));
    check("veryLong", encoded(halves({2, 140'000}), "tiff"), {.pixels = 70'000}, QSize(1, 70'000));
    check("longButFits", encoded(halves({2, 140'000}), "png"), {}, QSize(2, 140'000));
    check("beyondTheLongEdge", flat, {.longEdge = 399}, QSize(399, 100));
    check("beyondBoth", flat, {.pixels = 2500, .longEdge = 200}, QSize(100, 25));
    check("tallJpeg", encoded(halves({100, 400}), "jpeg"), {.longEdge = 64}, QSize(16, 64));
    check("tooLarge", encoded(halves({800, 400}), "png"), {.decodedBytes = 1 << 20}, std::nullopt);
    check("deepTooLarge", encoded(halves({500, 300}).convertToFormat(QImage::Format_RGBA64), "png"),
        {.decodedBytes = 1 << 20}, std::nullopt);
    check("tooManyBytes", flat, {.fileBytes = flat.size() - 1}, std::nullopt);
}

} // namespace

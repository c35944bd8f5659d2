#include "Platform/ImageDecoder.h"

#include "Harness/Folder.h"
#include "Harness/Pictures.h"

#include <QBuffer>
#include <QColorSpace>
#include <QImageWriter>

#include <array>
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
    struct Row {
        const char* name;
        QByteArray bytes;
        QColor left{200, 30, 30};
        QColor right{Qt::white};
        QSize fileSize{24, 16};
    };
    const QSize size(24, 16);
    const QColor gray(104, 104, 104);
    const std::array rows{
        Row{"png", encoded(halves(), "png")},
        Row{"pngDeep", encoded(halves().convertToFormat(QImage::Format_RGBA64), "png")},
        Row{"pngPalette", encoded(halves().convertToFormat(QImage::Format_Indexed8), "png")},
        Row{"pngGray", encoded(halves().convertToFormat(QImage::Format_Grayscale8), "png"), gray},
        Row{"pngDeepGray", encoded(halves().convertToFormat(QImage::Format_Grayscale16), "png"),
            gray},
        Row{"pngOneBit",
            encoded(halves().convertToFormat(QImage::Format_Mono, Qt::ThresholdDither), "png"),
            Qt::black},
        Row{"pngTransparent", encoded(transparent, "png"), {200, 30, 30}, Qt::transparent},
        Row{"jpeg", encoded(halves(), "jpeg")},
        Row{"jpegProgressive", progressiveJpeg()},
        Row{"jpegOfManyScans", repeatedScan(progressiveJpeg(), 50)},
        Row{"jpegInInks", pictureFile("cmyk.jpg")},
        Row{"gifFirstOfTwo", pictureFile("animated.gif")},
        Row{"bmp", encoded(halves(), "bmp")},
        Row{"ppm", encoded(halves(), "ppm")},
        Row{"tiff", encoded(halves(), "tiff")},
        Row{"tiffDeep", encoded(halves().convertToFormat(QImage::Format_RGBX64), "tiff")},
        Row{"webp", encoded(halves(), "webp")},
        Row{"ico", encoded(halves(), "ico")},
        Row{"xpm", encoded(halves(), "xpm")},
        Row{"heic", pictureFile("photo.heic")},
        Row{"heicDeep", pictureFile("deep.heic")},
        Row{"heicTurned", pictureFile("lying.heic"), {200, 30, 30}, Qt::white, {16, 24}},
        Row{"avif", pictureFile("photo.avif")},
        Row{"avifTransparent", pictureFile("transparent.avif"), {200, 30, 30}, Qt::transparent},
        Row{"avifWithCodedColours", pictureFile("coded-colours.avif")},
        Row{"pngWithBrokenProfile",
            withPngChunk(encoded(plain, "png"), pngChunk("iCCP", QByteArray("p\0\0?", 4)))},
        Row{"pngWithProfileOfNothing",
            withPngChunk(encoded(plain, "png"),
                pngChunk("iCCP", QByteArray("p\0\0", 3) + qCompress(QByteArray(9, 'x')).mid(4)))},
        Row{"jpegWithBrokenProfile",
            withJpegSegment(encoded(plain, "jpeg"), 0xE2, QByteArray("ICC_PROFILE\0\1\1?", 15))},
    };
    const auto distance = [](const QColor& a, const QColor& b) {
        return std::max({std::abs(a.red() - b.red()), std::abs(a.green() - b.green()),
            std::abs(a.blue() - b.blue()), std::abs(a.alpha() - b.alpha())});
    };
    constexpr int tolerance = 12; // Some formats lose a little.
    for (const auto& row : rows) {
        const auto image = decodeImageFile(folder.fileWith(row.bytes));
        ASSERT_TRUE(image) << row.name << ": " << image.error().message.toStdString();
        EXPECT_EQ(image->image.size(), size) << row.name;
        EXPECT_EQ(image->fileSize, row.fileSize) << row.name;
        EXPECT_LE(image->image.depth(), 32) << row.name;
        const auto left = image->image.pixelColor(2, 8);
        const auto right = image->image.pixelColor(20, 8);
        EXPECT_LE(distance(left, row.left), tolerance)
            << row.name << ' ' << left.name().toStdString();
        EXPECT_LE(distance(right, row.right), tolerance)
            << row.name << ' ' << right.name().toStdString();
    }
}

/// A different colour in each corner.
QImage fourCorners()
{
    QImage image(48, 32, QImage::Format_RGB32);
    for (int y = 0; y < 32; ++y)
        for (int x = 0; x < 48; ++x)
            image.setPixelColor(x, y, QColor(x < 24 ? 250 : 5, y < 16 ? 250 : 5, 128));
    return image;
}

TEST_F(ImageDecoderTest, theOrientationTagTurnsPictures)
{
    enum Corner { topLeft, topRight, bottomLeft, bottomRight };
    struct Row {
        quint16 orientation;
        Corner firstPixel; ///< Where the first pixel of the file is to be seen,
        Corner endOfFirstRow; ///< and the last of the file's first row.
    };
    const std::array rows{
        Row{1, topLeft, topRight},
        Row{2, topRight, topLeft},
        Row{3, bottomRight, bottomLeft},
        Row{4, bottomLeft, bottomRight},
        Row{5, topLeft, bottomLeft},
        Row{6, topRight, bottomRight},
        Row{7, bottomRight, topRight},
        Row{8, bottomLeft, topLeft},
    };
    const auto stored = fourCorners();
    const auto isAt = [&stored](const QImage& image, Corner corner, const QPoint& storedPoint) {
        const QPoint point(corner == topRight || corner == bottomRight ? image.width() - 4 : 3,
            corner == bottomLeft || corner == bottomRight ? image.height() - 4 : 3);
        const auto found = image.pixelColor(point);
        const auto wanted = stored.pixelColor(storedPoint);
        return std::abs(found.red() - wanted.red()) < 60
            && std::abs(found.green() - wanted.green()) < 60;
    };
    const auto tiffTag = QByteArray::fromHex("12010300010000000100");
    for (const auto& row : rows) {
        const auto exif = exifOrientation(row.orientation);
        auto tiff = encoded(stored, "tiff");
        ASSERT_EQ(tiff.count(tiffTag), 1);
        tiff[tiff.indexOf(tiffTag) + 8] = static_cast<char>(row.orientation);
        const std::array files{
            withJpegSegment(encoded(stored, "jpeg"), 0xE1, QByteArray("Exif\0\0", 6) + exif),
            withPngChunk(encoded(stored, "png"), pngChunk("eXIf", exif)),
            withWebpExif(encoded(stored, "webp"), stored.size(), exif),
            tiff,
        };
        for (size_t i = 0; i < files.size(); ++i) {
            const auto decoded = decodeImageFile(folder.fileWith(files[i]));
            ASSERT_TRUE(decoded) << row.orientation << ' ' << i;
            EXPECT_EQ(decoded->fileSize, stored.size());
            const auto& image = decoded->image;
            EXPECT_EQ(
                image.size(), row.orientation > 4 ? stored.size().transposed() : stored.size());
            EXPECT_TRUE(isAt(image, row.firstPixel, {0, 0})) << row.orientation << ' ' << i;
            EXPECT_TRUE(isAt(image, row.endOfFirstRow, {47, 0})) << row.orientation << ' ' << i;
        }
    }
}

TEST_F(ImageDecoderTest, badPicturesFailWithoutTakingMemory)
{
    const auto png = encoded(halves({400, 300}), "png");
    auto bmp = encoded(halves(), "bmp");
    bmp.replace(18, 8, QByteArray::fromHex("60ea000060ea0000"));
    auto gif = pictureFile("animated.gif");
    gif.replace(6, 4, QByteArray::fromHex("ffffffff"));
    struct Row {
        const char* name;
        QByteArray bytes;
        Error::Kind kind = Error::Kind::failed;
    };
    const std::array rows{
        Row{"empty", {}, Error::Kind::unreadable},
        Row{"text", "Not a picture.\n", Error::Kind::unreadable},
        Row{"zeros", QByteArray(4096, '\0'), Error::Kind::unreadable},
        Row{"drawing",
            "<svg xmlns='http://www.w3.org/2000/svg' width='9' height='9'><text>x</text></svg>",
            Error::Kind::unreadable},
        Row{"film",
            QByteArray::fromHex("8a4d4e470d0a1a0a0000001c4d4844520000ea600000ea60") + "cut short",
            Error::Kind::unreadable},
        Row{"pngCutInHeader", png.left(24)},
        Row{"pngCutInPixels", png.left(png.size() / 2)},
        Row{"jpegCutInHeader", encoded(halves(), "jpeg").left(100)},
        Row{"gifCutShort", pictureFile("animated.gif").left(60)},
        Row{"pngClaimsMuch", pngClaiming(encoded(halves(), "png"), 60'000, 60'000)},
        Row{"pngClaimsAll", pngClaiming(encoded(halves(), "png"), 0x7fffffff, 0x7fffffff)},
        Row{"pngClaimsNothing", pngClaiming(encoded(halves(), "png"), 0, 16)},
        Row{"jpegClaimsMuch", jpegClaiming(encoded(halves(), "jpeg"), 60'000, 60'000)},
        Row{"progressiveJpegClaimsMuch", jpegClaiming(progressiveJpeg(), 60'000, 60'000)},
        Row{"jpegOfEndlessScans", repeatedScan(progressiveJpeg(), 20'000)},
        Row{"heicCodedLargerThanItTells", pictureFile("coded-larger.heic")},
        Row{"heicCutShort", pictureFile("photo.heic").left(700)},
        Row{"avifCutShort", pictureFile("photo.avif").left(600)},
        Row{"bmpClaimsMuch", bmp},
        Row{"gifClaimsMuch", gif},
        Row{"iconHoldsABomb",
            QByteArray::fromHex("000001000100181000000100200000002000 16000000")
                + blackPng(30'000, 30'000, PngColour::rgb)},
        Row{"ppmClaimsMuch", "P6 60000 60000 255\nshort"},
        Row{"bitmapClaimsMuch", "P4 600000 600000\nshort"},
    };
    const auto peakBefore = peakMegabytes();
    for (const auto& row : rows) {
        const auto image = decodeImageFile(folder.fileWith(row.bytes));
        ASSERT_FALSE(image) << row.name;
        EXPECT_EQ(image.error().kind, row.kind) << row.name;
    }
    EXPECT_LT(peakMegabytes() - peakBefore, 100);
}

TEST_F(ImageDecoderTest, onlyFilesAndPipesAreOpened)
{
    const auto png = encoded(halves(), "png");
    const auto locked = folder.fileWith(png, "locked");
    chmod(locked.c_str(), 0);
    struct Row {
        const char* name;
        std::filesystem::path path;
        bool isReadable = false;
    };
    const std::array rows{
        Row{"missing", folder.pathOf("nothing here")},
        Row{"noPath", ""},
        Row{"folder", folder.path()},
        Row{"endlessDevice", "/dev/zero"},
        Row{"emptyDevice", "/dev/null"},
        Row{"pipeThatNobodyWritesTo", pipe()},
        Row{"locked", locked, geteuid() == 0},
        Row{"nameThatIsNoText", folder.fileWith(png, "caf\xe9 \xff\n.png"), true},
        Row{"wrongSuffix", folder.fileWith(png, "picture.jpg"), true},
    };
    for (const auto& row : rows) {
        const auto image = decodeImageFile(row.path);
        EXPECT_EQ(image.has_value(), row.isReadable) << row.name;
        if (!image) {
            EXPECT_EQ(image.error().kind, Error::Kind::unreadable) << row.name;
        }
    }
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
    struct Row {
        const char* name;
        QByteArray bytes;
        ImageLimits limits;
        std::optional<QSize> size;
    };
    const std::array rows{
        Row{"heic", pictureFile("photo.heic"), {.longEdge = 12}, QSize(12, 8)},
        Row{"heicTooLarge", pictureFile("photo.heic"), {.decodedBytes = 3000}, std::nullopt},
        Row{"atTheLimit", flat, {.pixels = 40'000}, QSize(400, 100)},
        Row{"aboveIt", flat, {.pixels = 10'000}, QSize(200, 50)},
        Row{"deepAboveIt", deep, {.pixels = 10'000}, QSize(200, 50)},
        Row{"narrow", encoded(halves({2, 4000}), "png"), {.pixels = 2000}, QSize(1, 2000)},
        Row{"veryLong", encoded(halves({2, 140'000}), "tiff"), {.pixels = 70'000},
            QSize(1, 70'000)},
        Row{"longButFits", encoded(halves({2, 140'000}), "png"), {}, QSize(2, 140'000)},
        Row{"atTheLongEdge", flat, {.longEdge = 400}, QSize(400, 100)},
        Row{"beyondTheLongEdge", flat, {.longEdge = 399}, QSize(399, 100)},
        Row{"beyondBoth", flat, {.pixels = 2500, .longEdge = 200}, QSize(100, 25)},
        Row{"tallJpeg", encoded(halves({100, 400}), "jpeg"), {.longEdge = 64}, QSize(16, 64)},
        Row{"tooLarge", encoded(halves({800, 400}), "png"), {.decodedBytes = 1 << 20},
            std::nullopt},
        Row{"deepTooLarge",
            encoded(halves({500, 300}).convertToFormat(QImage::Format_RGBA64), "png"),
            {.decodedBytes = 1 << 20}, std::nullopt},
        Row{"flatNotTooLarge", encoded(halves({500, 300}), "png"), {.decodedBytes = 1 << 20},
            QSize(500, 300)},
        Row{"tooManyBytes", flat, {.fileBytes = flat.size() - 1}, std::nullopt},
    };
    for (const auto& row : rows) {
        const auto image = decodeImageFile(folder.fileWith(row.bytes), row.limits);
        EXPECT_EQ(image.has_value(), row.size.has_value()) << row.name;
        if (image && row.size) {
            EXPECT_EQ(image->image.size(), *row.size) << row.name;
            EXPECT_EQ(image->image.colorSpace(), QColorSpace(QColorSpace::DisplayP3)) << row.name;
        }
    }
}

} // namespace

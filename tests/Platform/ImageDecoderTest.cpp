#include "Platform/ImageDecoder.h"

#include <QBuffer>
#include <QColorSpace>
#include <QFile>
#include <QImageWriter>
#include <QTemporaryDir>
#include <QtEndian>

#include <array>
#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <thread>
#include <unistd.h>

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

QByteArray encoded(const QImage& image, const char* format)
{
    QBuffer buffer;
    QImageWriter writer(&buffer, format);
    EXPECT_TRUE(writer.write(image)) << format;
    return buffer.data();
}

/// Stored lying on its side, with a tag that says how to turn it.
QByteArray turnedJpeg()
{
    auto jpeg = encoded(halves().transformed(QTransform().rotate(-90)), "jpeg");
    return jpeg.insert(2,
        QByteArray::fromHex("ffe10022457869660000"
                            "4d4d002a00000008000101120003000000010006000000000000"));
}

QByteArray progressiveJpeg()
{
    QBuffer buffer;
    QImageWriter writer(&buffer, "jpeg");
    writer.setProgressiveScanWrite(true);
    EXPECT_TRUE(writer.write(halves()));
    return buffer.data();
}

QByteArray fixture(const char* name)
{
    QFile file(QStringLiteral(LUMENOTE_PICTURES "/") + QString::fromUtf8(name));
    EXPECT_TRUE(file.open(QIODevice::ReadOnly)) << name;
    return file.readAll();
}

quint32 crc32(const QByteArray& bytes)
{
    quint32 crc = ~0U;
    for (const char byte : bytes) {
        crc ^= static_cast<quint8>(byte);
        for (int bit = 0; bit < 8; ++bit)
            crc = (crc >> 1) ^ ((crc & 1) != 0 ? 0xEDB88320U : 0U);
    }
    return ~crc;
}

QByteArray bigEndian(quint32 value)
{
    QByteArray bytes(4, '\0');
    qToBigEndian(value, bytes.data());
    return bytes;
}

/// A good PNG whose header claims another size.
QByteArray pngClaiming(quint32 width, quint32 height)
{
    auto png = encoded(halves(), "png");
    png.replace(16, 8, bigEndian(width) + bigEndian(height));
    png.replace(29, 4, bigEndian(crc32(png.mid(12, 17))));
    return png;
}

/// A good JPEG whose frame header, which @p marker starts, claims 60000 by 60000.
QByteArray jpegClaiming(QByteArray jpeg, const QByteArray& marker)
{
    const auto frame = jpeg.indexOf(marker);
    EXPECT_GT(frame, 0);
    return jpeg.replace(frame + 5, 4, QByteArray::fromHex("ea60ea60"));
}

class ImageDecoderTest : public testing::Test {
protected:
    std::filesystem::path folderPath() const { return folder.path().toStdString(); }
    std::filesystem::path pathOf(const std::string& name) const { return folderPath() / name; }

    std::filesystem::path fileWith(
        const QByteArray& bytes, const std::string& name = "picture") const
    {
        auto path = pathOf(name);
        const int descriptor = open(path.c_str(), O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC, 0600);
        EXPECT_EQ(
            write(descriptor, bytes.constData(), static_cast<size_t>(bytes.size())), bytes.size());
        close(descriptor);
        return path;
    }

    std::filesystem::path pipe() const
    {
        auto path = pathOf("pipe");
        EXPECT_EQ(mkfifo(path.c_str(), 0600), 0);
        return path;
    }

public:
    const QTemporaryDir folder;
};

TEST_F(ImageDecoderTest, picturesOfManyKindsComeUprightAndDisplayable)
{
    auto transparent = halves().convertToFormat(QImage::Format_ARGB32);
    transparent.setPixelColor(20, 8, Qt::transparent);
    struct Row {
        const char* name;
        QByteArray bytes;
        QColor left{200, 30, 30};
        QColor right{Qt::white};
        QSize size{24, 16};
    };
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
        Row{"jpegInInks", fixture("cmyk.jpg")},
        Row{"jpegTurned", turnedJpeg()},
        Row{"gifFirstOfTwo", fixture("animated.gif")},
        Row{"bmp", encoded(halves(), "bmp")},
        Row{"ppm", encoded(halves(), "ppm")},
        Row{"tiff", encoded(halves(), "tiff")},
        Row{"webp", encoded(halves(), "webp")},
    };
    const auto distance = [](const QColor& a, const QColor& b) {
        return std::max({std::abs(a.red() - b.red()), std::abs(a.green() - b.green()),
            std::abs(a.blue() - b.blue()), std::abs(a.alpha() - b.alpha())});
    };
    constexpr int tolerance = 12; // Some formats lose a little.
    for (const auto& row : rows) {
        const auto image = decodeImageFile(fileWith(row.bytes));
        ASSERT_TRUE(image) << row.name << ": " << image.error().message.toStdString();
        EXPECT_EQ(image->image.size(), row.size) << row.name;
        EXPECT_LE(image->image.depth(), 32) << row.name;
        const auto left = image->image.pixelColor(2, 8);
        const auto right = image->image.pixelColor(20, 8);
        EXPECT_LE(distance(left, row.left), tolerance)
            << row.name << ' ' << left.name().toStdString();
        EXPECT_LE(distance(right, row.right), tolerance)
            << row.name << ' ' << right.name().toStdString();
    }
}

TEST_F(ImageDecoderTest, badPicturesFailWithoutTakingMemory)
{
    const auto png = encoded(halves({400, 300}), "png");
    auto bmp = encoded(halves(), "bmp");
    bmp.replace(18, 8, QByteArray::fromHex("60ea000060ea0000"));
    auto gif = fixture("animated.gif");
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
        Row{"gifCutShort", fixture("animated.gif").left(60)},
        Row{"pngClaimsMuch", pngClaiming(60'000, 60'000)},
        Row{"pngClaimsAll", pngClaiming(0x7fffffff, 0x7fffffff)},
        Row{"pngClaimsNothing", pngClaiming(0, 16)},
        Row{"jpegClaimsMuch", jpegClaiming(encoded(halves(), "jpeg"), QByteArray::fromHex("ffc0"))},
        Row{"progressiveJpegClaimsMuch",
            jpegClaiming(progressiveJpeg(), QByteArray::fromHex("ffc2"))},
        Row{"bmpClaimsMuch", bmp},
        Row{"gifClaimsMuch", gif},
        Row{"ppmClaimsMuch", "P6 60000 60000 255\nshort"},
        Row{"bitmapClaimsMuch", "P4 600000 600000\nshort"},
    };
    const auto peak = [] {
        rusage usage{};
        getrusage(RUSAGE_SELF, &usage);
        return usage.ru_maxrss;
    };
    const auto peakBefore = peak();
    for (const auto& row : rows) {
        const auto image = decodeImageFile(fileWith(row.bytes));
        ASSERT_FALSE(image) << row.name;
        EXPECT_EQ(image.error().kind, row.kind) << row.name;
    }
    constexpr long mostKilobytes = 100'000;
    EXPECT_LT(peak() - peakBefore, mostKilobytes);
}

TEST_F(ImageDecoderTest, onlyFilesAndPipesAreOpened)
{
    const auto png = encoded(halves(), "png");
    const auto locked = fileWith(png, "locked");
    chmod(locked.c_str(), 0);
    struct Row {
        const char* name;
        std::filesystem::path path;
        bool isReadable = false;
    };
    const std::array rows{
        Row{"missing", pathOf("nothing here")},
        Row{"noPath", ""},
        Row{"folder", folderPath()},
        Row{"endlessDevice", "/dev/zero"},
        Row{"emptyDevice", "/dev/null"},
        Row{"pipeThatNobodyWritesTo", pipe()},
        Row{"locked", locked, geteuid() == 0},
        Row{"nameThatIsNoText", fileWith(png, "caf\xe9 \xff\n.png"), true},
        Row{"wrongSuffix", fileWith(png, "picture.jpg"), true},
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
        Row{"atTheLimit", flat, {.pixels = 40'000}, QSize(400, 100)},
        Row{"aboveIt", flat, {.pixels = 10'000}, QSize(200, 50)},
        Row{"deepAboveIt", deep, {.pixels = 10'000}, QSize(200, 50)},
        Row{"narrow", encoded(halves({2, 4000}), "png"), {.pixels = 2000}, QSize(1, 2000)},
        Row{"tooLongToScale", encoded(halves({2, 140'000}), "tiff"), {.pixels = 100'000},
            std::nullopt},
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
        const auto image = decodeImageFile(fileWith(row.bytes), row.limits);
        EXPECT_EQ(image.has_value(), row.size.has_value()) << row.name;
        if (image && row.size) {
            EXPECT_EQ(image->image.size(), *row.size) << row.name;
            EXPECT_EQ(image->image.colorSpace(), QColorSpace(QColorSpace::DisplayP3)) << row.name;
        }
    }
}

} // namespace

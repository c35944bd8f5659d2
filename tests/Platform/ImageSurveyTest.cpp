#include "Platform/ImageSurvey.h"

#include "Harness/Folder.h"
#include "Harness/Pictures.h"
#include "Platform/ImageScaler.h"
#include "Platform/PngEncoder.h"

#include <QColorSpace>

#include <random>
#include <sys/stat.h>

using namespace Harness;
using Platform::encodePng;
using Platform::surveyImageFile;

namespace {

constexpr int longEdge = 200;

/// Text-like at the top, gentle below, with noise of this strength all over.
QImage screen(const QSize& size, int noise)
{
    std::mt19937 random(3);
    QImage image(size, QImage::Format_RGB32);
    for (int y = 0; y < size.height(); ++y)
        for (int x = 0; x < size.width(); ++x) {
            const int value = y < size.height() / 2 ? (random() % 6 == 0 ? 20 : 230) : x / 8 % 200;
            const auto noisy = [&](int level) {
                return std::min(255, level + static_cast<int>(random()) % (noise + 1));
            };
            image.setPixel(x, y, qRgb(noisy(value), noisy(value / 2), noisy(y / 7 % 200)));
        }
    return image;
}

int largestDifference(const QImage& a, const QImage& b)
{
    int largest = 0;
    for (int y = 0; y < a.height(); ++y)
        for (int x = 0; x < a.width(); ++x) {
            const auto one = a.pixelColor(x, y);
            const auto other = b.pixelColor(x, y);
            largest = std::max({largest, std::abs(one.red() - other.red()),
                std::abs(one.green() - other.green()), std::abs(one.blue() - other.blue())});
        }
    return largest;
}

class ImageSurveyTest : public testing::Test {
public:
    const Folder folder;
};

TEST_F(ImageSurveyTest, theThumbnailIsTheMeanOfThePixels)
{
    // Pixels on the border of two of the thumbnail count for one of them.
    const auto check = [&](const char* name, QSize size, int noise, int tolerance = 1) {
        SCOPED_TRACE(name);
        const auto image = screen(size, noise);
        const auto survey = surveyImageFile(folder.fileWith(*encodePng(image, 144)), longEdge);
        ASSERT_TRUE(survey);
        ASSERT_FALSE(survey->thumbnail.isNull());
        const auto expected = Platform::scaledDown(image, survey->thumbnail.size());
        EXPECT_LE(largestDifference(survey->thumbnail, expected), tolerance);
        EXPECT_EQ(survey->pixelSize, size);
        EXPECT_NEAR(survey->dotsPerInch.value_or(0), 144, 0.02);
    };
    check("flat", {1600, 1200}, 0);
    check("smooth", {1600, 1200}, 2);
    check("noisy", {1600, 1200}, 90);
    check("wide", {16'000, 160}, 2);
    check("tall", {160, 16'000}, 2);
    check("uneven", {1537, 1111}, 2, 30);
    check("small", {500, 400}, 2, 2);
}

TEST_F(ImageSurveyTest, theThumbnailsSize)
{
    const auto check = [&](QSize picture, QSize thumbnail) {
        QImage image(picture, QImage::Format_RGB32);
        image.fill(Qt::darkCyan);
        const auto survey = surveyImageFile(folder.fileWith(*encodePng(image, 72)), longEdge);
        ASSERT_TRUE(survey);
        EXPECT_EQ(survey->thumbnail.size(), thumbnail)
            << picture.width() << 'x' << picture.height();
        EXPECT_EQ(survey->thumbnail.pixelColor(0, 0), QColor(Qt::darkCyan));
    };
    check({3840, 2160}, {200, 113});
    check({2160, 3840}, {113, 200});
    check({3000, 1}, {200, 1});
    check({1, 3000}, {1, 200});
    check({1000, 999}, {200, 200});
    check({1000, 997}, {200, 199});
    check({201, 100}, {200, 100});
    check({200, 50}, {200, 50});
    check({7, 3}, {7, 3});
    check({60'000, 3}, {200, 1});
}

TEST_F(ImageSurveyTest, theColourSpaceIsKept)
{
    for (const auto& colourSpace : {QColorSpace(QColorSpace::SRgb),
             QColorSpace(QColorSpace::DisplayP3), QColorSpace(QColorSpace::AdobeRgb)}) {
        auto image = screen({1000, 800}, 0);
        image.setColorSpace(colourSpace);
        const auto survey = surveyImageFile(folder.fileWith(*encodePng(image, 72)), longEdge);
        EXPECT_EQ(survey->thumbnail.colorSpace(), colourSpace)
            << colourSpace.description().toStdString();
    }
}

TEST_F(ImageSurveyTest, filesOfOtherKinds)
{
    const auto image = screen({1000, 800}, 0);
    auto transparent = image.convertToFormat(QImage::Format_ARGB32);
    transparent.fill(QColor(10, 200, 30, 100));

    const auto lying = exifOrientation(6);
    const auto check = [&](const char* name, const QByteArray& bytes,
                           QSize thumbnail = {200, 160}) {
        SCOPED_TRACE(name);
        const auto survey = surveyImageFile(folder.fileWith(bytes, "capture.png"), longEdge);
        ASSERT_TRUE(survey);
        EXPECT_EQ(survey->pixelSize, image.size());
        EXPECT_EQ(survey->thumbnail.size(), thumbnail);
    };
    check("renamedJpeg", encoded(image, "jpeg"));
    check("turnedJpeg",
        withJpegSegment(encoded(image, "jpeg"), 0xE1, QByteArray("Exif\0\0", 6) + lying),
        {160, 200});
    check("turnedPng", withPngChunk(*encodePng(image, 72), pngChunk("eXIf", lying)), {160, 200});
    check("transparent", *encodePng(transparent, 72));
    check("palette", encoded(image.convertToFormat(QImage::Format_Indexed8), "png"));
    check("deep", encoded(image.convertToFormat(QImage::Format_RGBX64), "png"));
}

TEST_F(ImageSurveyTest, aHeaderIsEnough)
{
    const auto png = *encodePng(screen({1000, 800}, 2), 144);
    auto damaged = png;
    for (auto place = damaged.size() / 2; place < damaged.size() / 2 + 64; ++place)
        damaged[place] = '\xa5';

    const auto peakBefore = peakMegabytes();
    const auto check = [&](const char* name, const QByteArray& bytes, QSize pixelSize) {
        SCOPED_TRACE(name);
        const auto survey = surveyImageFile(folder.fileWith(bytes), longEdge);
        ASSERT_TRUE(survey);
        EXPECT_EQ(survey->pixelSize, pixelSize);
    };
    check("cutInPixels", png.left(png.size() / 2), {1000, 800});
    check("cutBehindTheHeader", png.left(90), {1000, 800});
    check("damaged", damaged, {1000, 800});
    check("claimsMore", pngClaiming(png, 1000, 900), {1000, 900});
    check("claimsMuch", pngClaiming(png, 60'000, 60'000), {60'000, 60'000});
    check("jpegCut", encoded(screen({1000, 800}, 2), "jpeg").left(2000), {1000, 800});
    check("jpegClaimsMuch", jpegClaiming(encoded(screen({100, 80}, 2), "jpeg"), 60'000, 60'000),
        {60'000, 60'000});
    EXPECT_LT(peakMegabytes() - peakBefore, 100);
}

TEST_F(ImageSurveyTest, largePicturesTakeLittleMemory)
{
    const auto peakBefore = peakMegabytes();
    const auto path = folder.fileWith(blackPng(20'000, 10'000, PngColour::rgb));
    const auto survey = surveyImageFile(path, longEdge);
    EXPECT_EQ(survey->thumbnail.size(), QSize(200, 100));
    EXPECT_LT(peakMegabytes() - peakBefore, 100);
}

TEST_F(ImageSurveyTest, withoutAHeaderThereIsNothing)
{
    const auto png = *encodePng(screen({1000, 800}, 2), 144);
    const auto pipe = folder.pathOf("pipe");
    EXPECT_EQ(mkfifo(pipe.c_str(), 0600), 0);

    const auto check = [&](const char* name, const std::filesystem::path& path) {
        EXPECT_FALSE(surveyImageFile(path, longEdge)) << name;
    };
    check("pipe", pipe);
    check("text", folder.fileWith("Not a picture.\n", "text"));
    check("cutInHeader", folder.fileWith(png.left(20), "cut"));
    check("endless", folder.fileWith(pngClaiming(png, 0x7fffffff, 1), "endless"));
    check("noWidth", folder.fileWith(pngClaiming(png, 0, 800), "noWidth"));
}

TEST_F(ImageSurveyTest, noDamageDoesHarm)
{
    const auto png = *encodePng(screen({900, 820}, 2), 144);
    std::mt19937 random(11);
    for (int round = 0; round < 200; ++round) {
        auto bytes = png;
        const auto end = round % 2 == 0 ? 200 : bytes.size(); // The first half of them in front.
        for (int count = 0; count < 3; ++count)
            bytes[static_cast<qsizetype>(random() % static_cast<quint32>(end))] =
                static_cast<char>(random());
        const auto survey = surveyImageFile(folder.fileWith(bytes), longEdge);
        if (survey) {
            EXPECT_FALSE(survey->pixelSize.isEmpty()) << "round " << round;
            EXPECT_LE(std::max(survey->thumbnail.width(), survey->thumbnail.height()), longEdge)
                << "round " << round;
        }
    }
}

} // namespace

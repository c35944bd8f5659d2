#include "Model/ImageFile.h"

#include "Harness/Folder.h"
#include "Harness/Pictures.h"
#include "Model/PointSize.h"

#include <QColorSpace>

#include <cmath>
#include <limits>

using namespace Harness;
using namespace Lumenote;

namespace {

QImage blank(int width, int height, double dotsPerInch = 72)
{
    QImage image(width, height, QImage::Format_RGB32);
    image.fill(QColor(40, 90, 200));
    image.setColorSpace(QColorSpace::DisplayP3);
    image.setDotsPerMeterX(static_cast<int>(std::lround(dotsPerInch / 0.0254)));
    return image;
}

/// As no writer of Qt's can be brought to write it.
QByteArray withoutResolution(QByteArray png)
{
    return png.remove(png.indexOf("pHYs") - 4, 9 + 12);
}

TEST(ImageFileTest, theLongEdgeIsBoundedAndThePointsFollow)
{
    const Folder folder;
    const auto check = [&](const char* name, const QByteArray& bytes, QSize size, QSizeF pointSize,
                           bool wasDownscaled = false) {
        SCOPED_TRACE(name);
        const auto loaded = ImageFile::load(folder.fileWith(bytes));
        ASSERT_TRUE(loaded);
        EXPECT_EQ(loaded->image.size(), size);
        EXPECT_EQ(loaded->pointSize, pointSize);
        EXPECT_EQ(loaded->wasDownscaled, wasDownscaled);
        EXPECT_EQ(loaded->image.colorSpace(), QColorSpace(QColorSpace::DisplayP3));
    };
    check("noResolution", withoutResolution(encoded(blank(60, 40), "png")), {60, 40}, {60, 40});
    check("twoPixelsAPoint", encoded(blank(60, 40, 144), "png"), {60, 40}, {30, 20});
    check("usualScreen", encoded(blank(60, 40, 96), "png"), {60, 40}, QSizeF(60, 40) / 1.33);
    check("atTheLimit", encoded(blank(8192, 16), "png"), {8192, 16}, {8192, 16});
    check("oneBeyond", encoded(blank(8193, 32, 144), "png"), {8192, 32}, {4096, 16}, true);
    check("palette", encoded(blank(16384, 4).convertToFormat(QImage::Format_Indexed8), "png"),
        {8192, 2}, {8192, 2}, true);
    check("turned",
        withJpegSegment(encoded(blank(60, 40, 144), "jpeg"), 0xE1,
            QByteArray("Exif\0\0", 6) + exifOrientation(6)),
        {40, 60}, {20, 30});
    check("turnedAndBeyond",
        withJpegSegment(encoded(blank(9000, 90, 72), "jpeg"), 0xE1,
            QByteArray("Exif\0\0", 6) + exifOrientation(8)),
        {82, 8192}, {82, 8192}, true);
}

TEST(ImageFileTest, whatIsNoPictureYieldsNothing)
{
    const Folder folder;
    EXPECT_FALSE(ImageFile::load(folder.pathOf("missing")));
    EXPECT_FALSE(ImageFile::load(folder.fileWith(encoded(blank(16, 16), "icns"))))
        << "its size is untold";
}

TEST(ImageFileTest, anyNameWillDo)
{
    const Folder folder;
    const auto png = encoded(blank(60, 40), "png");
    std::filesystem::create_symlink(folder.fileWith(png, "target"), folder.pathOf("link"));
    EXPECT_TRUE(ImageFile::load(folder.pathOf("link")));
    for (const auto* name : {":", "~"})
        std::filesystem::create_directory(folder.pathOf(name));
    for (const auto* name : {"100%20%n.png", "\xF0\x9F\x93\xB7.png", "caf\xE9\xFF.png",
             "line\nbreak", "-n", "file:x", ":/resource", "~/picture", "a#b?c.png"})
        EXPECT_TRUE(ImageFile::load(folder.fileWith(png, name))) << name;
}

/// What this process asked the system to read so far.
double bytesRead()
{
    std::ifstream file("/proc/self/io");
    std::string label;
    double count = -1;
    file >> label >> count;
    EXPECT_EQ(label, "rchar:");
    return count;
}

TEST(ImageFileTest, aFilmCostsNoMoreThanItsFirstPicture)
{
    const Folder folder;
    const auto gif = pictureFile("animated.gif");
    const auto cost = [&](int frames) {
        const auto film = folder.fileWith(repeatedGif(gif, frames));
        const auto before = bytesRead();
        EXPECT_TRUE(ImageFile::load(film));
        return bytesRead() - before;
    };
    cost(1); // The first picture of all loads the decoders.
    constexpr double ofTheCountItself = 100;
    EXPECT_NEAR(cost(10'000), cost(1000), ofTheCountItself);
}

TEST(ImageFileTest, hugePicturesAreScaledWhileTheyAreDecoded)
{
    const auto png = blackPng(20'000, 20'000, PngColour::rgb);
    const auto jpeg = jpegClaiming(encoded(blank(16, 16), "jpeg"), 20'000, 20'000);
    const Folder folder;
    const auto peakBefore = peakMegabytes();
    const auto bits = blackPng(20'000, 20'000, PngColour::grayBits);
    for (const auto& bytes : {png, jpeg, bits}) {
        const auto loaded = ImageFile::load(folder.fileWith(bytes));
        ASSERT_TRUE(loaded);
        EXPECT_EQ(loaded->image.size(), QSize(8192, 8192));
        EXPECT_TRUE(loaded->wasDownscaled);
    }
    EXPECT_LT(peakMegabytes() - peakBefore, 1000); // All the pixels would be 1600.
}

TEST(PointSizeTest, onlyACredibleResolutionCounts)
{
    constexpr auto infinity = std::numeric_limits<double>::infinity();
    constexpr auto largest = std::numeric_limits<double>::max();

    const auto check = [&](std::optional<double> dotsPerInch, QSizeF points) {
        EXPECT_EQ(pointSize({300, 150}, dotsPerInch), points) << dotsPerInch.value_or(0);
    };
    check(std::nullopt, {300, 150});
    check(72, {300, 150});
    check(143.99, {150, 75});
    check(0.72, {30'000, 15'000});
    check(0.3, {300, 150}); // Rounds to no scale at all.
    check(0, {300, 150});
    check(-144, {300, 150});
    check(infinity, {300, 150});
    check(-infinity, {300, 150});
    check(std::nan(""), {300, 150});
    check(largest, {300, 150});
}

} // namespace

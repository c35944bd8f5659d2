#include "Model/ImageFile.h"

#include "Harness/Folder.h"
#include "Harness/Pictures.h"
#include "Model/PointSize.h"

#include <QColorSpace>

#include <array>
#include <cmath>
#include <limits>
#include <sys/stat.h>

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
    struct Row {
        const char* name;
        QByteArray bytes;
        QSize size;
        QSizeF pointSize;
        bool wasDownscaled = false;
    };
    const std::array rows{
        Row{"noResolution", withoutResolution(encoded(blank(60, 40), "png")), {60, 40}, {60, 40}},
        Row{"points", encoded(blank(60, 40, 72), "png"), {60, 40}, {60, 40}},
        Row{"twoPixelsAPoint", encoded(blank(60, 40, 144), "png"), {60, 40}, {30, 20}},
        Row{"usualScreen", encoded(blank(60, 40, 96), "png"), {60, 40}, QSizeF(60, 40) / 1.33},
        Row{"atTheLimit", encoded(blank(8192, 16), "png"), {8192, 16}, {8192, 16}},
        Row{"oneBeyond", encoded(blank(8193, 32, 144), "png"), {8192, 32}, {4096, 16}, true},
        Row{"tall", encoded(blank(100, 16384), "png"), {50, 8192}, {50, 8192}, true},
        Row{"palette", encoded(blank(16384, 4).convertToFormat(QImage::Format_Indexed8), "png"),
            {8192, 2}, {8192, 2}, true},
        Row{"jpeg", encoded(blank(9000, 90), "jpeg"), {8192, 82}, {8192, 82}, true},
        Row{"turned",
            withJpegSegment(encoded(blank(60, 40, 144), "jpeg"), 0xE1,
                QByteArray("Exif\0\0", 6) + exifOrientation(6)),
            {40, 60}, {20, 30}},
        Row{"turnedAndBeyond",
            withJpegSegment(encoded(blank(9000, 90, 72), "jpeg"), 0xE1,
                QByteArray("Exif\0\0", 6) + exifOrientation(8)),
            {82, 8192}, {82, 8192}, true},
    };
    const Folder folder;
    for (const auto& row : rows) {
        const auto loaded = ImageFile::load(folder.fileWith(row.bytes));
        ASSERT_TRUE(loaded) << row.name;
        EXPECT_EQ(loaded->image.size(), row.size) << row.name;
        EXPECT_EQ(loaded->pointSize, row.pointSize) << row.name;
        EXPECT_EQ(loaded->wasDownscaled, row.wasDownscaled) << row.name;
        EXPECT_EQ(loaded->image.colorSpace(), QColorSpace(QColorSpace::DisplayP3)) << row.name;
    }
}

TEST(ImageFileTest, whatIsNoPictureYieldsNothing)
{
    const Folder folder;
    const auto png = encoded(blank(60, 40), "png");
    const auto pipe = folder.pathOf("pipe");
    ASSERT_EQ(mkfifo(pipe.c_str(), 0600), 0);
    std::filesystem::create_symlink("nowhere", folder.pathOf("dangling"));
    struct Row {
        const char* name;
        std::filesystem::path path;
    };
    const std::array rows{
        Row{"missing", folder.pathOf("missing")},
        Row{"dangling", folder.pathOf("dangling")},
        Row{"folder", folder.path()},
        Row{"pipe", pipe},
        Row{"empty", folder.fileWith({}, "empty.png")},
        Row{"text", folder.fileWith("no picture", "renamed.png")},
        Row{"cutShort", folder.fileWith(png.left(png.size() / 2), "short.png")},
        Row{"sizeOfNothing", folder.fileWith(pngClaiming(png, 0, 40), "none.png")},
        Row{"claim", folder.fileWith(pngClaiming(png, 60'000, 60'000), "claim.png")},
        Row{"bomb", folder.fileWith(blackPng(60'000, 60'000, PngColour::grayBits), "bomb.png")},
        Row{"sizeUntold", folder.fileWith(encoded(blank(16, 16), "icns"), "untold.icns")},
    };
    const auto peakBefore = peakMegabytes();
    for (const auto& row : rows)
        EXPECT_FALSE(ImageFile::load(row.path)) << row.name;
    EXPECT_LT(peakMegabytes() - peakBefore, 60);
}

TEST(ImageFileTest, anyNameWillDo)
{
    const Folder folder;
    const auto png = encoded(blank(60, 40), "png");
    std::filesystem::create_symlink(folder.fileWith(png, "target"), folder.pathOf("link"));
    for (const auto* name : {"a folder", ":", "~"})
        std::filesystem::create_directory(folder.pathOf(name));
    for (const auto* name : {"picture.png", "link", "a folder/my picture.png", "100%20%n.png",
             "\xF0\x9F\x93\xB7.png", "caf\xE9\xFF.png", "line\nbreak", "-n", "picture.jpg",
             "file:x", ":/resource", "~/picture", "a#b?c.png"}) {
        const auto path =
            std::string(name) == "link" ? folder.pathOf("link") : folder.fileWith(png, name);
        EXPECT_TRUE(ImageFile::load(path)) << name;
    }
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
    struct Row {
        std::optional<double> dotsPerInch;
        QSizeF points;
    };
    const std::array rows{
        Row{std::nullopt, {300, 150}},
        Row{72, {300, 150}},
        Row{143.99, {150, 75}},
        Row{0.72, {30'000, 15'000}},
        Row{0.3, {300, 150}}, // Rounds to no scale at all.
        Row{0, {300, 150}},
        Row{-144, {300, 150}},
        Row{infinity, {300, 150}},
        Row{-infinity, {300, 150}},
        Row{std::nan(""), {300, 150}},
        Row{largest, {300, 150}},
    };
    for (const auto& row : rows)
        EXPECT_EQ(pointSize({300, 150}, row.dotsPerInch), row.points)
            << row.dotsPerInch.value_or(0);
}

} // namespace

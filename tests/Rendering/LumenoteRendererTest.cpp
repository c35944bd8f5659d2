#include "Rendering/LumenoteRenderer.h"

#include "Harness/IccProfile.h"
#include "Rendering/PixelReference.h"

#include <QColorSpace>

#include <algorithm>
#include <array>
#include <cmath>
#include <gtest/gtest.h>
#include <limits>
#include <random>
#include <vector>

using namespace Lumenote;

namespace {

using Tool = AnnotationTool;
constexpr auto opaque = QImage::Format_RGB32;
constexpr auto translucent = QImage::Format_ARGB32_Premultiplied;

class Dice {
public:
    explicit Dice(unsigned seed)
        : m_generator(seed)
    {
    }

    double between(double low, double high)
    {
        return low + (high - low) * (number() / 4294967296.0);
    }
    int below(int count) { return static_cast<int>(number() % static_cast<quint32>(count)); }

    /// In and around the image, on whole pixels, near the last one, or far away.
    QPointF point(QSize image, double farAway)
    {
        switch (below(8)) {
        case 0:
            m_last = {between(-farAway, farAway), between(0, image.height())};
            break;
        case 1:
            m_last = {between(-farAway, farAway), between(-farAway, farAway)};
            break;
        case 2:
            m_last += QPointF(below(3) - 1, below(3) - 1);
            break;
        case 3:
            m_last = {double(below(image.width() + 1)), double(below(image.height() + 1))};
            break;
        default:
            m_last = {between(-20, image.width() + 20), between(-20, image.height() + 20)};
        }
        return m_last;
    }

    Annotation annotation(Tool tool, QSize image, double farAway)
    {
        const auto start = point(image, farAway);
        return {.tool = tool, .start = start, .end = point(image, farAway)};
    }

    std::vector<Annotation> annotations(std::size_t count, QSize image, double farAway)
    {
        std::vector<Annotation> result(count);
        for (auto& each : result)
            each = annotation(AnnotationTools::allCases[below(5)], image, farAway);
        return result;
    }

    /// A picture of noise.
    QImage picture(QSize size, QImage::Format format)
    {
        QImage image(size, format);
        for (int y = 0; y < size.height(); ++y)
            for (auto& pixel : row(image, y))
                pixel = format == opaque ? 0xff000000 | number() : qPremultiply(number());
        return image;
    }

    static std::span<QRgb> row(QImage& image, int y)
    {
        return {reinterpret_cast<QRgb*>(image.scanLine(y)), static_cast<size_t>(image.width())};
    }

private:
    quint32 number() { return static_cast<quint32>(m_generator()); }

    std::mt19937 m_generator;
    QPointF m_last;
};

QImage rendered(const QImage& image, std::span<const Annotation> annotations)
{
    return LumenoteRenderer::render(image, image.size(), annotations);
}

testing::AssertionResult isAsExpected(
    const QImage& drawn, const PixelReference::Pixel& expected, int x, int y)
{
    const auto bits = PixelReference::bitsAt(drawn, x, y);
    const std::array channels{qRed(bits), qGreen(bits), qBlue(bits), qAlpha(bits)};
    for (std::size_t i = 0; i < 4; ++i)
        if (std::abs(channels[i] - expected.channels[i]) > expected.tolerance + 0.5)
            return testing::AssertionFailure()
                << "channel " << i << " at " << x << ", " << y << " is " << channels[i] << ", not "
                << expected.channels[i] << " ± " << expected.tolerance;
    return testing::AssertionSuccess();
}

TEST(LumenoteRendererTest, pixelsAreWhatTheArithmeticSays)
{
    const QColorSpace sRgb(QColorSpace::SRgb);
    const PixelReference::Colors p3{{235, 78, 61}, {247, 206, 70, 102}};
    const PixelReference::Colors adobe{{221, 61, 52}, {241, 203, 48, 102}};
    Dice dice(44);
    const auto check = [&](const char* name, QSize size, QImage::Format format, double farAway,
                           const QColorSpace& space, const PixelReference::Colors& colors) {
        for (int round = 0; round < 8; ++round) {
            SCOPED_TRACE(testing::Message() << name << " " << round);
            auto image = dice.picture(size, format);
            image.setColorSpace(space);
            const auto annotations = dice.annotations(7, size, farAway);
            const auto drawn = rendered(image, annotations);
            ASSERT_EQ(drawn.format(), format);
            ASSERT_EQ(drawn.colorSpace(), space);
            for (int y = 0; y < size.height(); ++y)
                for (int x = 0; x < size.width(); ++x)
                    ASSERT_TRUE(isAsExpected(
                        drawn, PixelReference::expected(image, annotations, colors, x, y), x, y));
        }
    };
    check("small", {97, 61}, opaque, 200, sRgb, {});
    check("lines wider than corners", {2100, 40}, opaque, 3000, sRgb, {});
    check("reaching far out", {120, 80}, opaque, 1e9, sRgb, {});
    check("one pixel", {1, 1}, opaque, 100, sRgb, {});
    check("one row", {3000, 1}, translucent, 4000, sRgb, {});
    check("wide gamut", {97, 61}, opaque, 200, QColorSpace::DisplayP3, p3);
    check("translucent wide gamut", {61, 97}, translucent, 200, QColorSpace::DisplayP3, p3);
    check("another gamma", {97, 61}, translucent, 200, QColorSpace::AdobeRgb, adobe);
}

TEST(LumenoteRendererTest, theLargestCaptureIsRenderedInFull)
{
    QImage image(8192, 8192, opaque);
    image.fill(0xff204060);
    Dice dice(8192);
    const auto annotations = dice.annotations(40, image.size(), 20000);
    const auto drawn = rendered(image, annotations);
    for (int i = 0; i < 10000; ++i) {
        const int x = dice.below(8192);
        const int y = dice.below(8192);
        ASSERT_TRUE(
            isAsExpected(drawn, PixelReference::expected(image, annotations, {}, x, y), x, y));
    }
}

/// The pixels, of @p count, that a censor dragged from @p a to @p b covers: first and beyond last.
std::pair<int, int> coveredPixels(double a, double b, int count)
{
    const auto held = [&](double position) {
        return static_cast<int>(std::clamp(position, 0.0, double(count)));
    };
    return {held(std::floor(std::min(a, b) - 2)), held(std::ceil(std::max(a, b) + 2))};
}

TEST(LumenoteRendererTest, nothingOfWhatACensorCoversIsLeftAndNothingElseIsLost)
{
    constexpr std::array reaches{1e-300, 100.0, 1e9, 1e300};
    constexpr QSize size(90, 70);
    Dice dice(7);
    for (int round = 0; round < 80; ++round) {
        SCOPED_TRACE(round);
        const auto reach = reaches[round / 2 % 4];
        const auto censor = dice.annotation(AnnotationTools::censor[dice.below(2)], size, reach);
        const auto [left, right] = coveredPixels(censor.start.x(), censor.end.x(), size.width());
        const auto [top, bottom] = coveredPixels(censor.start.y(), censor.end.y(), size.height());
        auto expected = dice.picture(size, round % 2 == 0 ? opaque : translucent);
        const auto drawn = rendered(expected, {&censor, 1});
        for (int y = top; y < bottom; ++y)
            std::ranges::fill(Dice::row(expected, y).subspan(left, right - left),
                censor.tool == Tool::blackout ? 0xff000000 : 0xffffffff);
        expected.setColorSpace(QColorSpace::SRgb);
        ASSERT_EQ(drawn, expected);
        const QRect covered(left, top, right - left, bottom - top);
        if (reach < 1e10 && !covered.isEmpty()) {
            ASSERT_EQ(censor.hitRect().toRect() & QRect({}, size), covered);
        }
    }
}

TEST(LumenoteRendererTest, extremeNumbersAreHarmless)
{
    constexpr auto most = std::numeric_limits<double>::max();
    constexpr auto least = std::numeric_limits<double>::denorm_min();
    constexpr std::array numbers{-most, -1e200, -1e17, -least, 0.0, least, 50.0, 1e10, most};
    Dice dice(1);
    const auto number = [&] { return numbers[dice.below(numbers.size())]; };
    std::vector<Annotation> annotations(2000);
    for (auto& annotation : annotations)
        annotation = {.tool = AnnotationTools::drawing[dice.below(3)],
            .start = {number(), number()},
            .end = {number(), number()}};
    // Whatever they drew is painted over.
    annotations.back() = {.tool = Tool::whiteout, .start = {-most, most}, .end = {most, -most}};
    const auto drawn = rendered(dice.picture({100, 80}, opaque), annotations);
    auto white = drawn.copy();
    white.fill(Qt::white);
    EXPECT_EQ(drawn, white);
}

TEST(LumenoteRendererTest, imagesWithoutColoursOfTheirOwnBecomeSRgb)
{
    const QColorSpace none;
    const QColorSpace sRgb(QColorSpace::SRgb);
    const QColorSpace p3(QColorSpace::DisplayP3);
    const auto grey = QColorSpace::fromIccProfile(Harness::iccProfile("GRAY"));
    ASSERT_TRUE(grey.isValid());

    const auto check = [&](const char* name, QImage::Format format, const QColorSpace& space,
                           const QList<QColorSpace>& expected) {
        SCOPED_TRACE(name);
        QImage image(20, 20, opaque);
        image.fill(QColor(180, 180, 180));
        image.convertTo(format);
        image.setColorSpace(space);
        EXPECT_EQ(LumenoteRenderer::exportColorSpaces(image), expected);
        const auto drawn = rendered(image, {});
        EXPECT_EQ(drawn.colorSpace(), expected.first());
        EXPECT_NEAR(qGreen(drawn.pixel(9, 9)), 180, 2) << "neutral colours stay what they are";
    };
    check("capture", opaque, p3, {p3, p3, sRgb, none});
    check("other order of bytes", QImage::Format_BGR888, p3, {p3, p3, sRgb, none});
    check("no space", QImage::Format_ARGB32, none, {sRgb, none});
    check("grey profile", opaque, grey, {sRgb, none});
    check("grey pixels", QImage::Format_Grayscale8, sRgb, {sRgb, none});
    check("palette", QImage::Format_Indexed8, p3, {sRgb, none});
}

TEST(LumenoteRendererTest, aCaptureSharesItsPixelsUntilItIsDrawnOn)
{
    Dice dice(5);
    for (const auto format : {opaque, translucent}) {
        auto image = dice.picture({40, 30}, format);
        image.setColorSpace(QColorSpace::DisplayP3);
        EXPECT_EQ(rendered(image, {}).constBits(), image.constBits());
        const auto before = image.copy();
        const Annotation mark{.start = {2, 2}, .end = {30, 20}};
        EXPECT_NE(rendered(image, {&mark, 1}), image);
        EXPECT_EQ(image, before);
    }
}

TEST(LumenoteRendererTest, theSizeAskedForIsRenderedInWholePixels)
{
    QImage image(40, 30, opaque);
    image.fill(Qt::darkGreen);
    image.setDevicePixelRatio(2);
    const Annotation censor{.tool = Tool::whiteout, .start = {50, 40}, .end = {60, 50}};
    const auto drawn = LumenoteRenderer::render(image, {80.9, 60.5}, {&censor, 1});
    EXPECT_EQ(drawn.size(), QSize(80, 60));
    EXPECT_EQ(drawn.devicePixelRatio(), 1);
    EXPECT_EQ(drawn.pixelColor(10, 10), QColor(Qt::darkGreen));
    EXPECT_EQ(drawn.pixelColor(48, 38), QColor(Qt::white));

    constexpr auto endless = std::numeric_limits<double>::infinity();
    for (const QSizeF size : {QSizeF(0.9, 30), QSizeF(40, 0), QSizeF(-40, -30), QSizeF(endless, 30),
             QSizeF(40, std::nan(""))})
        EXPECT_TRUE(LumenoteRenderer::render(image, size, {}).isNull()) << size.width();
    EXPECT_TRUE(LumenoteRenderer::render({}, {40, 30}, {}).isNull());
}

} // namespace

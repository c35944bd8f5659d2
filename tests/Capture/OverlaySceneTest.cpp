#include "Capture/OverlayScene.h"

#include "Capture/OverlayDrawing.h"

#include <QPainter>

#include <cmath>
#include <gtest/gtest.h>

using namespace Lumenote;

namespace {

constexpr QRectF frame(100, 50, 400, 300);
const QColor accent(0, 100, 200);

const auto hint = u"Drag a region · space: pick a window · esc: cancel"_qs;
const auto windowHint = u"Click a window · space: drag a region · esc: cancel"_qs;

OverlayScene sceneOf(const SelectionState& state, double scale = 1)
{
    return overlayScene(state, frame, scale, accent);
}

QStringList texts(const OverlayScene& scene)
{
    QStringList texts;
    for (const auto& pill : scene.pills)
        texts.append(pill.text);
    return texts;
}

SelectionState hovering(const QRectF& windowFrame)
{
    return {.mode = SelectionMode::window,
        .hoveredWindow = CapturableWindow{
            .id = 1, .frame = windowFrame, .title = u"Grüße"_qs, .application = u"Editor"_qs}};
}

/// @p scene on a display of that scale, over what an earlier picture left.
QImage drawn(const OverlayScene& scene, double scale, const QImage& backdrop = {})
{
    QImage image((frame.size() * scale).toSize(), QImage::Format_ARGB32_Premultiplied);
    image.setDevicePixelRatio(scale);
    image.fill(Qt::red);
    QPainter painter(&image);
    drawOverlay(painter, {{}, frame.size()}, scene, backdrop);
    return image;
}

/// Black as transparent as the dimming.
constexpr QRgb dimmed = 0x59000000;

TEST(OverlaySceneTest, theHintGoesWhereTheSelectionIsAndStaysInWindowMode)
{
    EXPECT_EQ(texts(sceneOf({})), QStringList(hint));
    EXPECT_EQ(texts(sceneOf({.selection = QRectF(600, 60, 50, 50)})), QStringList(hint));
    EXPECT_EQ(texts(sceneOf({.selection = QRectF(110, 60, 50, 40)})), QStringList(u"50 × 40"_qs));
    EXPECT_EQ(texts(sceneOf({.mode = SelectionMode::window})), QStringList(windowHint));
    EXPECT_EQ(texts(sceneOf(hovering({0, 0, 200, 200}))),
        QStringList({u"Editor — Grüße"_qs, windowHint}));
    EXPECT_EQ(texts(sceneOf(hovering({0, 0, 90, 200}))), QStringList(windowHint));
}

TEST(OverlaySceneTest, theReadoutIsOfTheWholeSelectionInPixelsOfThisDisplay)
{
    const auto readout = [](QSizeF size, double scale) {
        return texts(sceneOf({.selection = QRectF({-100, 60}, size)}, scale)).value(0);
    };
    EXPECT_EQ(readout({400, 50}, 1), u"400 × 50"_qs);
    EXPECT_EQ(readout({400, 50}, 2), u"800 × 100"_qs);
    EXPECT_EQ(readout({401.9, 50.99}, 1), u"401 × 50"_qs);
    for (int pixels = 301; pixels < 400; ++pixels)
        EXPECT_EQ(readout({pixels / 1.5, pixels / 1.5}, 1.5), u"%1 × %1"_qs.arg(pixels));
}

TEST(OverlaySceneTest, onlyWhatLooksDifferentHasChanged)
{
    const auto before = sceneOf({.selection = QRectF(150, 150, 200, 100)});
    EXPECT_TRUE(changedArea(before, before).isEmpty());

    const auto after = sceneOf({.selection = QRectF(150, 150, 210, 120)});
    const auto changed = changedArea(before, after);
    auto pieced = drawn(before, 1);
    QPainter painter(&pieced);
    painter.setClipRegion(changed);
    drawOverlay(painter, {{}, frame.size()}, after, {});
    EXPECT_EQ(pieced, drawn(after, 1));
    EXPECT_FALSE(changed.contains(QPoint(100, 150))) << "inside of both";
    EXPECT_FALSE(changed.contains(QPoint(10, 10))) << "outside of both";
}

class OverlayDrawingAtScale : public testing::TestWithParam<double> { };

TEST_P(OverlayDrawingAtScale, dimsEverythingAndCutsTheSelectionOut)
{
    const double scale = GetParam();
    const auto image = drawn(sceneOf({.selection = QRectF(160, 100, 80, 60)}), scale);
    const auto pixel = [&](double x, double y) {
        return image.pixel(static_cast<int>(x * scale), static_cast<int>(y * scale));
    };
    EXPECT_EQ(pixel(5, 5), dimmed);
    EXPECT_EQ(pixel(399, 299), dimmed);
    EXPECT_EQ(pixel(60, 50), 0U) << "the first of the hole";
    EXPECT_EQ(image.pixel(qRound(140 * scale) - 1, qRound(110 * scale) - 1), 0U) << "the last";
}

/// How much light the frame left of a hole adds along a row, in points.
double frameWidth(const OverlayScene& scene, double scale, QRgb ink)
{
    const auto image = drawn(scene, scale);
    const int row = static_cast<int>(80 * scale);
    int sum = 0;
    for (int x = static_cast<int>(50 * scale); x < static_cast<int>(60 * scale); ++x)
        sum += qBlue(image.pixel(x, row)); // Premultiplied.
    return sum / static_cast<double>(qBlue(ink)) / scale;
}

TEST_P(OverlayDrawingAtScale, framesAreAsWideAsMeasuredAndOutside)
{
    const double scale = GetParam();
    const auto region = sceneOf({.selection = QRectF(160, 100, 80, 60)});
    EXPECT_NEAR(frameWidth(region, scale, qRgb(255, 255, 255)), 1 * 0.9, 0.02);
    const auto window = sceneOf(hovering({160, 100, 80, 60}));
    EXPECT_NEAR(frameWidth(window, scale, accent.rgb()), 2 * 0.95, 0.03);

    const auto image = drawn(window, scale);
    const auto corner = image.pixelColor(
        static_cast<int>(std::ceil(58 * scale)), static_cast<int>(std::ceil(48 * scale)));
    EXPECT_NEAR(corner.green(), accent.green(), 3) << "corners are not cut";
}

TEST_P(OverlayDrawingAtScale, aBackdropLooksLikeTheDisplayBelow)
{
    const double scale = GetParam();
    QImage display((frame.size() * scale).toSize(), QImage::Format_RGB32);
    display.fill(QColor(200, 100, 40));
    display.setPixelColor(3, 3, Qt::white);
    display.setDevicePixelRatio(scale);
    const auto scene = sceneOf({.selection = QRectF(160, 100, 80, 60)});

    auto composed = display.convertToFormat(QImage::Format_ARGB32_Premultiplied);
    auto overlay = drawn(scene, scale);
    composed.setDevicePixelRatio(1);
    overlay.setDevicePixelRatio(1);
    QPainter(&composed).drawImage(0, 0, overlay);
    auto opaque = drawn(scene, scale, display);
    opaque.setDevicePixelRatio(1);
    ASSERT_EQ(opaque.size(), composed.size());
    int furthest = 0;
    for (int y = 0; y < opaque.height(); ++y)
        for (int x = 0; x < opaque.width(); ++x) {
            const auto a = opaque.pixelColor(x, y);
            const auto b = composed.pixelColor(x, y);
            EXPECT_EQ(a.alpha(), 255);
            furthest = std::max({furthest, std::abs(a.red() - b.red()),
                std::abs(a.green() - b.green()), std::abs(a.blue() - b.blue())});
        }
    EXPECT_LE(furthest, 2) << "but for rounding";
}

INSTANTIATE_TEST_SUITE_P(, OverlayDrawingAtScale, testing::Values(1.0, 1.5, 2.0),
    [](const auto& row) { return "scale" + std::to_string(static_cast<int>(row.param * 100)); });

} // namespace

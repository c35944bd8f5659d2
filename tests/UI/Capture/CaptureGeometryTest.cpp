#include "UI/Capture/CaptureGeometry.h"

#include "UI/Capture/AnnotationCanvas.h"
#include "UI/Capture/LiveTextLayer.h"

#include <gtest/gtest.h>

using namespace Lumenote;
using CaptureGeometry::fit;
using CaptureGeometry::fittedRect;

namespace {

TEST(CaptureGeometryTest, imagesAreFittedWholeAndNeverEnlarged)
{
    EXPECT_EQ(fittedRect({400, 300}, {800, 400}, 1), QRectF(200, 50, 400, 300));
    EXPECT_EQ(fittedRect({4000, 3000}, {800, 400}, 1), QRectF(400 - 800.0 / 3, 0, 1600.0 / 3, 400));
    EXPECT_EQ(fittedRect({400, 300}, {800, 400}, 0.5), QRectF(300, 125, 200, 150));
    EXPECT_TRUE(fittedRect({0, 300}, {800, 400}, 1).isEmpty());
    EXPECT_TRUE(fittedRect({400, 300}, {800, 0}, 1).isEmpty());
}

TEST(CaptureGeometryTest, anImageBeginsOnAWholePixelOfTheDevice)
{
    const auto odd = fit({301, 201}, {301, 201}, {680, 380}, 1);
    EXPECT_EQ(odd.rect.topLeft(), QPointF(189, 89));
    const auto dense = fit({301, 201}, {150.5, 100.5}, {680, 380}, 2);
    EXPECT_EQ(dense.rect.topLeft(), QPointF(264.5, 139.5));
    EXPECT_EQ(dense.scale, 0.5);
    EXPECT_EQ(dense.toImage(dense.toView(QPointF(17, 4))), QPointF(17, 4));
}

TEST(CaptureGeometryTest, linesFollowTheZoomButNeverVanish)
{
    EXPECT_EQ(AnnotationCanvas::lineWidth(3500, 1), 10);
    EXPECT_EQ(AnnotationCanvas::lineWidth(1000, 0.25), 1.5);
}

TEST(CaptureGeometryTest, theWaveGoesFromTheFirstLineToTheLast)
{
    EXPECT_EQ(LiveTextLayer::revealLevel(0, 1, 0), 0);
    EXPECT_EQ(LiveTextLayer::revealLevel(0, 1, 220), 1);
    EXPECT_EQ(LiveTextLayer::revealLevel(9, 10, 350), 0);
    EXPECT_EQ(LiveTextLayer::revealLevel(9, 10, 570), 1);
    EXPECT_GT(LiveTextLayer::revealLevel(2, 10, 200), LiveTextLayer::revealLevel(3, 10, 200));
}

} // namespace

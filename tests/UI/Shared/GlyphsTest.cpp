#include "UI/Shared/Glyphs.h"

#include <QImage>
#include <QPainter>

#include <gtest/gtest.h>

using namespace Lumenote;

namespace {

constexpr int side = 30;

QImage drawing(const QString& name, double ratio, const QColor& color = Qt::white)
{
    QImage image(QSize(side, side) * ratio, QImage::Format_ARGB32_Premultiplied);
    image.setDevicePixelRatio(ratio);
    image.fill(Qt::transparent);
    QPainter painter(&image);
    Glyphs::paint(painter, name, QRectF(0, 0, side, side), color);
    painter.end();
    return image;
}

/// How much of @p rect, in pixels, is covered.
double ink(const QImage& image, const QRect& rect)
{
    double sum = 0;
    for (int y = rect.top(); y <= rect.bottom(); ++y)
        for (int x = rect.left(); x <= rect.right(); ++x)
            sum += qAlpha(image.pixel(x, y)) / 255.0;
    return sum / (rect.width() * rect.height());
}

TEST(GlyphsTest, eachIsThereInOneWeightAndInsideItsBox)
{
    ASSERT_EQ(Glyphs::names().size(), 21);
    for (const auto& name : Glyphs::names())
        for (const auto ratio : {1.0, 1.25, 2.0}) {
            SCOPED_TRACE(qPrintable(name));
            const auto image = drawing(name, ratio);
            const auto margin = static_cast<int>(5 * ratio);
            const auto middle = image.rect().adjusted(margin, margin, -margin, -margin);
            EXPECT_GT(ink(image, middle), 0.04);
            EXPECT_LT(ink(image, middle), name == u"xmark.circle.fill" ? 0.6 : 0.32);
            EXPECT_NEAR(ink(image, image.rect()) * image.width() * image.height(),
                ink(image, middle) * middle.width() * middle.height(), 1e-6)
                << "something is drawn outside of the middle";
        }
}

TEST(GlyphsTest, theColourChangesNothingElse)
{
    const auto white = drawing(QStringLiteral("trash"), 2);
    const auto red = drawing(QStringLiteral("trash"), 2, Qt::red);
    EXPECT_EQ(
        white.convertToFormat(QImage::Format_Alpha8), red.convertToFormat(QImage::Format_Alpha8));
    EXPECT_NE(white, red);
}

} // namespace

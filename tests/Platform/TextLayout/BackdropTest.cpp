#include "Platform/TextLayout/Backdrop.h"

#include "Platform/TextLayout/Canvas.h"

#include <gtest/gtest.h>

namespace {

QImage clearWithText(const QColor& colour, QImage::Format format)
{
    Drawing::Canvas canvas({120, 40});
    canvas.image = QImage(canvas.image.size(), QImage::Format_ARGB32_Premultiplied);
    canvas.image.fill(Qt::transparent);
    canvas.write({20, 25}, u"backdrop"_qs, {.colour = colour});
    return canvas.image.convertToFormat(format);
}

TEST(BackdropTest, whatIsVisibleStandsOut)
{
    const auto check = [&](const char* name, const QColor& text, const QColor& backdrop) {
        SCOPED_TRACE(name);
        for (const auto format :
            {QImage::Format_ARGB32_Premultiplied, QImage::Format_ARGB32, QImage::Format_RGBA64}) {
            const auto opaque = Platform::opaqueImageOf(clearWithText(text, format));
            EXPECT_EQ(opaque.format(), QImage::Format_RGB32);
            EXPECT_EQ(opaque.pixelColor(2, 2), backdrop) << format;
        }
    };
    check("black", Qt::black, Qt::white);
    check("white", Qt::white, Qt::black);
    check("darkBlue", QColor(20, 30, 120), Qt::white);
    check("yellow", QColor(250, 240, 120), Qt::black);
    check("faintWhite", QColor(255, 255, 255, 90), Qt::black);
    check("nothing", Qt::transparent, Qt::white);
}

} // namespace

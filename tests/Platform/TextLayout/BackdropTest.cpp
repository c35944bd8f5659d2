#include "Platform/TextLayout/Backdrop.h"

#include "Platform/TextLayout/Canvas.h"

#include <array>
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
    struct Row {
        const char* name;
        QColor text;
        QColor backdrop;
    };
    const std::array rows{
        Row{"black", Qt::black, Qt::white},
        Row{"white", Qt::white, Qt::black},
        Row{"darkBlue", QColor(20, 30, 120), Qt::white},
        Row{"yellow", QColor(250, 240, 120), Qt::black},
        Row{"faintWhite", QColor(255, 255, 255, 90), Qt::black},
        Row{"nothing", Qt::transparent, Qt::white},
    };
    for (const auto& row : rows) {
        for (const auto format :
            {QImage::Format_ARGB32_Premultiplied, QImage::Format_ARGB32, QImage::Format_RGBA64}) {
            const auto opaque = Platform::opaqueImageOf(clearWithText(row.text, format));
            EXPECT_EQ(opaque.format(), QImage::Format_RGB32) << row.name;
            EXPECT_EQ(opaque.pixelColor(2, 2), row.backdrop) << row.name << ' ' << format;
        }
    }
}

} // namespace

#include "Model/WorkbenchFixture.h"

#include <QColorSpace>
#include <QSignalSpy>

using namespace Lumenote;

namespace {

class WorkbenchModelDisplay : public WorkbenchFixture {
protected:
    std::shared_ptr<WorkbenchModel> makeShownModel(const QImage& image) const
    {
        auto model = makeModel(storedText({}), image);
        EXPECT_TRUE(waitUntilDisplayed(*model));
        return model;
    }
};

TEST_F(WorkbenchModelDisplay, thumbnailsKeepTheShapeAndNeverEnlarge)
{
    const auto check = [&](QSize image, int longEdge, QSize thumbnail) {
        EXPECT_EQ(makeShownModel(picture(image))->thumbnail(longEdge).size(), thumbnail);
    };
    check({700, 400}, 64, {64, 37});
    check({400, 700}, 64, {37, 64});
    check({700, 400}, 1000, {200, 114});
    check({40, 30}, 64, {40, 30});
    check({3000, 1}, 64, {64, 1});
    check({10000, 3}, 200, {200, 1});
    check({1, 1}, 200, {1, 1});
    EXPECT_EQ(makeShownModel(picture())->backdropImage().size(), QSize(64, 37));
}

TEST_F(WorkbenchModelDisplay, whatCanBePaintedAsItIsIsShownAtOnceWithoutACopy)
{
    for (const auto format : {QImage::Format_RGB32, QImage::Format_ARGB32_Premultiplied}) {
        auto image = picture().convertToFormat(format);
        image.setColorSpace(QColorSpace::SRgb);
        const auto model = makeModel(storedText({}), image);
        EXPECT_EQ(model->displayImage().constBits(), image.constBits());
        EXPECT_TRUE(model->thumbnail(64).isNull());
        ASSERT_TRUE(waitUntilDisplayed(*model));
        EXPECT_EQ(model->displayImage().constBits(), image.constBits());
    }
}

TEST_F(WorkbenchModelDisplay, allElseIsConvertedAndTold)
{
    const auto check = [this](const char* name, const QImage& image, QImage::Format format,
                           const QColor& color) {
        SCOPED_TRACE(name);
        const auto model = makeModel(storedText({}), image);
        QSignalSpy changes(model.get(), &WorkbenchModel::displayChanged);
        EXPECT_TRUE(model->displayImage().isNull());
        ASSERT_TRUE(waitUntilDisplayed(*model));
        EXPECT_EQ(changes.count(), 1);
        EXPECT_EQ(model->displayImage().format(), format);
        EXPECT_EQ(model->displayImage().size(), image.size());
        for (const auto& shown :
            {model->displayImage(), model->thumbnail(200), model->backdropImage()}) {
            EXPECT_NEAR(shown.pixelColor(5, 5).red(), color.red(), 3);
            EXPECT_NEAR(shown.pixelColor(5, 5).green(), color.green(), 6);
            EXPECT_EQ(shown.pixelColor(5, 5).alpha(), color.alpha());
        }
        EXPECT_EQ(model->image(), image) << "for export";
    };
    QImage wide(300, 300, QImage::Format_RGB32);
    wide.setColorSpace(QColorSpace::DisplayP3);
    wide.fill(qRgb(234, 51, 35)); // The red of sRGB.
    check("wideGamut", wide, QImage::Format_RGB32, Qt::red);
    check("wideGamutOpaqueWithAlpha", wide.convertToFormat(QImage::Format_ARGB32),
        QImage::Format_RGB32, Qt::red);
    check("indexed", picture().convertToFormat(QImage::Format_Indexed8), QImage::Format_RGB32,
        Qt::darkCyan);
    QImage translucent(300, 300, QImage::Format_RGBA8888);
    translucent.fill(QColor(200, 100, 0, 128));
    check(
        "translucent", translucent, QImage::Format_ARGB32_Premultiplied, QColor(200, 100, 0, 128));
}

} // namespace

#include "Platform/DisplayServerContract.h"

#include "Harness/Waiting.h"

#include <algorithm>
#include <gtest/gtest.h>

using namespace Platform;

namespace {

constexpr QRgb red = 0xffc01010;
constexpr QRgb green = 0xff10c010;

class DisplayServerContract : public testing::Test {
protected:
    template <typename T>
    static Result<T> answer(const QFuture<Result<T>>& future)
    {
        EXPECT_TRUE(Harness::waitForFinished(future));
        EXPECT_EQ(future.resultCount(), 1);
        return future.result();
    }

    DisplayServer& server() { return m_world->server(); }
    ContractWorld& world() { return *m_world; }

    ShareableContent content()
    {
        auto content = answer(server().shareableContent(ListedWindows::withoutDesktops));
        return content.value_or(ShareableContent());
    }

    SharedWindow window(quint32 id)
    {
        for (const auto& window : content().windows)
            if (window.id == id)
                return window;
        ADD_FAILURE() << "no window " << id;
        return {};
    }

    /// A rectangle of the first display, of scale 1.
    Result<QImage> region(const QRect& rect)
    {
        return answer(server().captureImage(
            DisplayFilter{.displayNumber = server().screens().first().displayNumber},
            {.sourceRect = rect, .pixelSize = rect.size(), .colorSpace = QColorSpace::AdobeRgb}));
    }

    Result<QImage> picture(const SharedWindow& window)
    {
        const auto size = (window.contentRect.size() * window.pointPixelScale).toSize();
        return answer(server().captureImage(WindowFilter{.windowID = window.id},
            {.sourceRect = {}, .pixelSize = size, .colorSpace = QColorSpace::AdobeRgb}));
    }

    /// All of @p image has one colour, and the colour space that it was asked for.
    static void expectColor(const Result<QImage>& image, QSize size, QRgb color)
    {
        ASSERT_TRUE(image) << qPrintable(image.error().message);
        QImage expected(size, QImage::Format_ARGB32);
        expected.fill(color);
        expected.setColorSpace(QColorSpace::AdobeRgb);
        EXPECT_TRUE(image->convertToFormat(QImage::Format_ARGB32) == expected);
    }

private:
    std::unique_ptr<ContractWorld> m_world = makeContractWorld();
};

TEST_F(DisplayServerContract, theFirstScreenIsAtTheOriginAndAllOfThemAreShareable)
{
    const auto screens = server().screens();
    ASSERT_FALSE(screens.isEmpty());
    EXPECT_EQ(screens.first().frame.topLeft(), QPointF(0, 0));
    QList<quint32> numbers;
    for (const auto& screen : screens) {
        EXPECT_NE(screen.displayNumber, 0U);
        EXPECT_FALSE(numbers.contains(screen.displayNumber));
        EXPECT_TRUE(screen.frame.contains(screen.visibleFrame));
        numbers.append(screen.displayNumber);
    }
    EXPECT_EQ(content().displays, numbers);
    const auto withoutWindows = answer(server().shareableContent(ListedWindows::none));
    EXPECT_EQ(withoutWindows, (ShareableContent{.displays = numbers, .windows = {}}));
    EXPECT_TRUE(server().isRecordingGranted());
    EXPECT_TRUE(server().requestRecording());
}

TEST_F(DisplayServerContract, windowsComeFrontmostFirstAndTellWhatTheyAre)
{
    const auto back = world().showWindow({20, 30, 200, 100}, red, u"Zurück"_qs);
    world().showOwnWindow({40, 50, 200, 100});
    const auto front = world().showWindow({60, 70, 200, 100}, green, QString());
    const auto windows = content().windows;
    ASSERT_EQ(windows.size(), 3);
    EXPECT_EQ(windows.at(0).id, front);
    EXPECT_EQ(windows.at(0).title, QString());
    EXPECT_FALSE(windows.at(0).isOwn);
    EXPECT_TRUE(windows.at(1).isOwn);
    EXPECT_EQ(windows.at(2).id, back);
    EXPECT_EQ(windows.at(2).title, u"Zurück"_qs);
    EXPECT_EQ(windows.at(2).frame, QRectF(20, 30, 200, 100));
    EXPECT_EQ(windows.at(2).contentRect, QRectF(20, 30, 200, 100));
    EXPECT_EQ(windows.at(2).layer, 0);
    EXPECT_TRUE(windows.at(2).isOnScreen);
    EXPECT_EQ(windows.at(2).pointPixelScale, 1);
}

TEST_F(DisplayServerContract, aRegionShowsWhatIsBelowOurWindows)
{
    world().showWindow({100, 100, 300, 200}, red, u"below"_qs);
    world().showOwnWindow({150, 150, 400, 300});
    const auto image = region({120, 120, 250, 150});
    expectColor(image, {250, 150}, red);
    EXPECT_EQ(image->format(), QImage::Format_RGB32);
    EXPECT_EQ(*reinterpret_cast<const QRgb*>(image->constBits()), red) << "with its alpha";
}

TEST_F(DisplayServerContract, aWindowIsCapturedWholeWhereItIsCoveredAndBeyondTheDisplay)
{
    const auto covered = world().showWindow({-50, 10, 200, 100}, red, u"covered"_qs);
    world().showWindow({0, 0, 120, 200}, green, u"cover"_qs);
    expectColor(picture(window(covered)), {200, 100}, red);
}

TEST_F(DisplayServerContract, whatIsGoneFailsAndSaysSo)
{
    const auto id = world().showWindow({10, 10, 100, 100}, red, u"soon gone"_qs);
    const auto known = window(id);
    world().closeWindow(id);
    const auto image = picture(known);
    ASSERT_FALSE(image);
    EXPECT_EQ(image.error().kind, Error::Kind::windowGone);
    const auto windows = content().windows;
    EXPECT_TRUE(std::ranges::none_of(
        windows, [id](const SharedWindow& window) { return window.id == id; }));

    const auto unplugged = answer(server().captureImage(DisplayFilter{.displayNumber = 4711},
        {.sourceRect = {0, 0, 10, 10}, .pixelSize = {10, 10}, .colorSpace = {}}));
    ASSERT_FALSE(unplugged);
    EXPECT_EQ(unplugged.error().kind, Error::Kind::failed);
}

} // namespace

#include "DesktopFixture.h"

using namespace Platform;
using Harness::PaintedWindow;

namespace {

constexpr QRect windowRect(800, 150, 300, 240);
constexpr std::uint32_t blue = 0x2040c0;
constexpr std::uint32_t green = 0x20a040;

/// With a window manager and a compositor, or without.
class CapturedPixels : public DesktopFixture, public testing::WithParamInterface<Situation> {
protected:
    void SetUp() override
    {
        if (GetParam() != Situation::nothing)
            m_windowManager = m_desktop.startWindowManager();
        DesktopFixture::SetUp();
        if (isComposited())
            startCompositor();
    }

    static bool isComposited() { return GetParam() == Situation::openboxAndPicom; }
};

INSTANTIATE_TEST_SUITE_P(, CapturedPixels, allSituations, nameOf);

TEST_P(CapturedPixels, aRegionShowsWindowsInTheirOrderBelowOurs)
{
    const PaintedWindow back(windowRect, blue);
    const PaintedWindow front(windowRect.translated(100, 80), green, {"border", "3"});
    const QRect inBack(contentOf(back).topLeft(), QSize(60, 50));
    const QRect inFront(contentOf(front).topLeft(), contentOf(back).bottomRight());
    const auto looksRight = [&] {
        return region(inBack) == back.pattern({{}, inBack.size()})
            && region(inFront) == front.pattern({{}, inFront.size()});
    };
    using Look = OwnWindow::Look;
    for (const auto look : {Look::opaque, Look::translucent, Look::shaped})
        for (const bool isStopped : {false, true}) {
            SCOPED_TRACE(testing::Message() << static_cast<int>(look) << isStopped);
            ASSERT_TRUE(Harness::waitFor(looksRight));
            if (isStopped)
                back.stop(); // It can't be asked to paint what ours has covered.
            const OwnWindow own(windowRect.adjusted(-40, -40, 40, 40), look);
            EXPECT_TRUE(looksRight());
            back.goOn();
        }
}

using PixelsOnABareDesktop = DesktopFixture;

// A compositor draws a background of its own where nobody has set one.
TEST_F(PixelsOnABareDesktop, aRegionShowsTheBackgroundBelowOurWindows)
{
    ASSERT_TRUE(m_desktop.run("xsetroot", {"-mod", "7", "13", "-fg", "#c03020", "-bg", "#104060"}));
    const PaintedWindow partly(windowRect, blue, {"unmanaged", "yes"});
    const auto area = windowRect.adjusted(-100, -60, 50, 50);
    const auto before = region(area);
    EXPECT_TRUE(before.pixel(0, 0) == 0xffc03020 || before.pixel(0, 0) == 0xff104060);
    const OwnWindow own(area.adjusted(20, 20, -20, -20));
    EXPECT_TRUE(region(area) == before);
    EXPECT_TRUE(m_desktop.run("xsetroot", {"-solid", "#204020"}));
    EXPECT_EQ(region({area.topLeft() + QPoint(30, 30), QSize(1, 1)}).pixel(0, 0), 0xff204020);
}

TEST_F(PixelsOnABareDesktop, aWindowOfOursThatFadesLeavesNoTrace)
{
    startCompositor({"--fading", "--fade-delta", "30", "--fade-out-step", "0.005", "--shadow"});
    const PaintedWindow below(windowRect, blue);
    const auto content = contentOf(below);
    const auto shown = [&] { return m_other.picture().pixel(content.center()); };
    {
        const OwnWindow own(content.adjusted(-30, -30, 30, 30));
        ASSERT_TRUE(Harness::waitFor([&] { return shown() == OwnWindow::color; }));
    }
    EXPECT_TRUE(region(content) == below.pattern({{}, content.size()}));
    EXPECT_NE(shown(), below.pattern({{}, content.size()}).pixel(150, 120))
        << "the window had faded already, so that this shows nothing";
}

TEST_P(CapturedPixels, aWindowIsCapturedByItself)
{
    const PaintedWindow covered(windowRect, blue);
    const PaintedWindow cover(windowRect.translated(20, 20), green);
    const OwnWindow own(windowRect.adjusted(-40, -40, 40, 40));
    const auto image = picture(covered.id(), windowRect.size());
    ASSERT_TRUE(image);
    EXPECT_TRUE(*image == covered.pattern({{}, windowRect.size()}));
    EXPECT_EQ(image->format(), QImage::Format_RGB32);

    covered.stop();
    EXPECT_TRUE(picture(covered.id(), windowRect.size()) == *image);

    const PaintedWindow offScreen({-100, 850, 300, 240}, green, {"border", "2"});
    const auto wholeImage = picture(offScreen.id(), windowRect.size());
    ASSERT_TRUE(wholeImage);
    EXPECT_TRUE(*wholeImage == offScreen.pattern({{}, windowRect.size()}));

    const PaintedWindow shadowed(windowRect, blue, {"shadow", "25"});
    const auto inner = windowRect.size() - QSize(50, 50);
    const auto withoutShadow = picture(shadowed.id(), inner);
    ASSERT_TRUE(withoutShadow);
    EXPECT_TRUE(*withoutShadow == shadowed.pattern({{25, 25}, inner}));
}

TEST_P(CapturedPixels, theAlphaOfAWindowCountsUnderACompositor)
{
    const PaintedWindow translucent(windowRect, 0x102030, {"alpha", "80"});
    const auto image = picture(translucent.id(), windowRect.size());
    ASSERT_TRUE(image);
    EXPECT_EQ(image->format(),
        isComposited() ? QImage::Format_ARGB32_Premultiplied : QImage::Format_RGB32);
    EXPECT_EQ(*reinterpret_cast<const QRgb*>(image->constScanLine(100)),
        isComposited() ? 0x80102030 : 0xff102030);
}

TEST_P(CapturedPixels, nothingIsLeftOnTheServerWhateverIsCaptured)
{
    const PaintedWindow below(windowRect, blue);
    const OwnWindow translucent(windowRect.adjusted(0, 0, -50, -50), OwnWindow::Look::translucent);
    const OwnWindow shaped(windowRect.adjusted(50, 50, 0, 0), OwnWindow::Look::shaped);
    const auto captureAll = [&] {
        EXPECT_FALSE(region(windowRect).isNull());
        EXPECT_TRUE(picture(below.id(), windowRect.size()));
        EXPECT_FALSE(picture(0x7fffff, {10, 10}));
        windows();
    };
    captureAll(); // The last memory that was lent is kept for a while.
    const auto own = QCoreApplication::applicationPid();
    const int before = m_other.resourcesOf(own);
    ASSERT_GT(before, 2);
    constexpr int rounds = 50;
    for (int round = 0; round < rounds; ++round)
        captureAll();
    EXPECT_EQ(m_other.resourcesOf(own), before);
}

} // namespace

#include "Capture/DisplayCapture.h"

#include "Fakes/FakeDisplayServer.h"
#include "Fakes/FakeSystemLog.h"
#include "Harness/Waiting.h"

#include <gtest/gtest.h>

using namespace Lumenote;
using Platform::Error;
using Platform::ListedWindows;

namespace {

Platform::SharedWindow window(quint32 id, const QRectF& frame)
{
    Platform::SharedWindow window;
    window.id = id;
    window.frame = frame;
    window.contentRect = frame;
    window.title = u"Window %1"_qs.arg(id);
    window.application = u"Painter"_qs;
    window.isOnScreen = true;
    return window;
}

/// A first display of 1000 by 800 points, and to its right, level with its top, one of 500 by 400
/// at scale 2.
class DisplayCaptureTest : public testing::Test {
protected:
    void SetUp() override
    {
        m_server.setScreens({
            {.displayNumber = 11,
                .frame = {0, 0, 1000, 800},
                .visibleFrame = {},
                .backingScaleFactor = 1,
                .colorSpace = QColorSpace::AdobeRgb},
            {.displayNumber = 22,
                .frame = {1000, 400, 500, 400},
                .visibleFrame = {},
                .backingScaleFactor = 2,
                .colorSpace = QColorSpace::DisplayP3},
        });
    }

    template <typename T>
    static T answer(const QFuture<T>& future)
    {
        EXPECT_TRUE(Harness::waitForFinished(future));
        EXPECT_EQ(future.resultCount(), 1);
        return future.result();
    }

    /// What was logged since this was last asked.
    QStringList newLines()
    {
        auto lines = m_systemLog->messages().mid(m_knownLines);
        m_knownLines += lines.size();
        return lines;
    }

    CaptureResult captured(const QRectF& region)
    {
        return answer(DisplayCapture::capture(m_server, region));
    }
    CaptureResult captured(quint32 windowID)
    {
        return answer(DisplayCapture::capture(m_server, windowID));
    }

    Fakes::FakeDisplayServer m_server{};
    const Fakes::CollectedLog m_systemLog;
    qsizetype m_knownLines = 0;
};

TEST_F(DisplayCaptureTest, aRegionIsCapturedFromTheDisplayUnderItsCentre)
{
    const auto check = [&](const char* name, const QRectF& region, quint32 display,
                           const QRectF& source, QSize pixels, const QStringList& lines) {
        SCOPED_TRACE(name);
        const auto result = captured(region);
        ASSERT_TRUE(result);
        const auto& asked = m_server.captures.last();
        EXPECT_EQ(std::get<Platform::DisplayFilter>(asked.filter).displayNumber, display);
        EXPECT_EQ(asked.configuration.sourceRect, source);
        EXPECT_EQ(result->image.size(), pixels);
        EXPECT_EQ(result->pointSize, source.size());
        EXPECT_EQ(newLines(), lines);
        EXPECT_EQ(
            result->image.colorSpace(), m_server.screens().at(display == 11 ? 0 : 1).colorSpace);
    };
    check("within", {10, 20, 100, 50}, 11, {10, 20, 100, 50}, {100, 50}, {});
    check(
        "fractionsAtScaleTwo", {1010.25, 20, 100.5, 10}, 22, {10.25, 20, 100.5, 10}, {201, 20}, {});
    check("roundedAwayFromZeroAtAHalf", {10, 20, 2.5, 3.49}, 11, {10, 20, 2.5, 3.49}, {3, 3}, {});
    check("centreOnTheFirst", {800, 100, 399, 100}, 11, {800, 100, 200, 100}, {200, 100},
        {u"capture: selection clipped to 200×100 at the display edge"_qs});
    check("centreOnTheEdgeIsTheSecond", {900, 100, 200, 100.5}, 22, {0, 100, 100, 100.5},
        {200, 201}, {u"capture: selection clipped to 100×100 at the display edge"_qs});
    check("centreOnNeither", {-300, -300, 350, 350}, 11, {0, 0, 50, 50}, {50, 50},
        {u"capture: selection clipped to 50×50 at the display edge"_qs});
    EXPECT_EQ(m_server.contentRequests.first(), ListedWindows::none);
}

TEST_F(DisplayCaptureTest, aRegionWithoutDisplayFails)
{
    const auto outside = u"capture: no display contains the selection"_qs;
    const auto sliver = u"capture: selection does not overlap its display"_qs;
    const auto check = [&](const char* name, const QRectF& region, const QStringList& lines) {
        SCOPED_TRACE(name);
        const auto result = captured(region);
        ASSERT_FALSE(result);
        EXPECT_EQ(result.error(), CaptureError::noDisplay);
        EXPECT_EQ(newLines(), lines);
    };
    check("rightOfAll", {2000, 0, 100, 100}, {outside});
    check("halfAPointHigh", {10, 10, 100, 0.5}, {sliver});
    check("lessThanAPointAfterClipping", {-99.5, 10, 100, 100}, {sliver});
    check("touchesFromOutside", {-100, 10, 100, 100}, {sliver});
    EXPECT_TRUE(m_server.contentRequests.isEmpty());

    m_server.setScreens({});
    EXPECT_EQ(captured({0, 0, 10, 10}).error(), CaptureError::noDisplay);
}

TEST_F(DisplayCaptureTest, aDisplayUnpluggedMeanwhileIsNoticed)
{
    m_server.holdAnswers();
    const auto future = DisplayCapture::capture(m_server, QRectF(1100, 10, 50, 50));
    m_server.setScreens({m_server.screens().first()});
    m_server.answerAll();
    EXPECT_EQ(answer(future).error(), CaptureError::noDisplay);
    EXPECT_EQ(newLines(), QStringList{u"capture: display 22 is not shareable"_qs});
    EXPECT_TRUE(m_server.captures.isEmpty());

    auto unnumbered = m_server.screens();
    unnumbered.first().displayNumber = 0;
    m_server.setScreens(unnumbered);
    EXPECT_EQ(captured({0, 0, 10, 10}).error(), CaptureError::noDisplay);
    EXPECT_EQ(newLines(), QStringList{u"capture: no display ID for the target screen"_qs});
}

TEST_F(DisplayCaptureTest, aWindowIsCapturedWithItsOwnSizeAndTheColoursOfItsDisplay)
{
    auto scaled = window(5, {1100, 100, 120.5, 80});
    scaled.contentRect = {1100, 110, 120.25, 70};
    scaled.pointPixelScale = 2;
    m_server.addWindow(scaled, Qt::red);
    m_server.addWindow(window(6, {5000, 5000, 50, 50}), Qt::blue);

    const auto onDisplay = captured(5);
    ASSERT_TRUE(onDisplay);
    EXPECT_EQ(onDisplay->image.size(), QSize(241, 140));
    EXPECT_EQ(onDisplay->pointSize, QSizeF(120.25, 70));
    EXPECT_EQ(onDisplay->image.colorSpace(), QColorSpace(QColorSpace::DisplayP3));
    EXPECT_TRUE(m_server.captures.last().configuration.sourceRect.isNull());
    EXPECT_EQ(m_server.contentRequests, QList<ListedWindows>{ListedWindows::withoutDesktops});

    const auto onNone = captured(6);
    ASSERT_TRUE(onNone);
    EXPECT_FALSE(onNone->image.colorSpace().isValid());
}

TEST_F(DisplayCaptureTest, aWindowThatClosedIsGone)
{
    EXPECT_EQ(captured(5).error(), CaptureError::windowGone);
    EXPECT_EQ(newLines(), QStringList{u"capture: window 5 is gone"_qs});

    m_server.addWindow(window(5, {0, 0, 100, 100}), Qt::red);
    m_server.captureError = Error{.kind = Error::Kind::windowGone, .message = {}};
    EXPECT_EQ(captured(5).error(), CaptureError::windowGone);
    EXPECT_EQ(newLines(), QStringList{u"capture: window 5 is gone"_qs});
}

TEST_F(DisplayCaptureTest, failuresOfTheSystemAreLoggedAndClassified)
{
    const Error denied{.kind = Error::Kind::permissionDenied, .message = u"no"_qs};
    const Error other{.kind = Error::Kind::unreadable, .message = u"smoke"_qs};

    const auto deniedLine = u"capture: Screen Recording permission denied"_qs;
    const auto otherLine = u"capture: capture failed: smoke"_qs;
    m_server.addWindow(window(5, {0, 0, 100, 100}), Qt::red);
    const auto check = [&](const char* name, const std::optional<Error>& contentError,
                           const std::optional<Error>& captureError, CaptureError error,
                           const QString& line) {
        SCOPED_TRACE(name);
        m_server.contentError = contentError;
        m_server.captureError = captureError;
        EXPECT_EQ(captured({0, 0, 10, 10}).error(), error);
        EXPECT_EQ(captured(5).error(), error);
        EXPECT_EQ(newLines(), (QStringList{line, line}));
    };
    check("contentDenied", denied, {}, CaptureError::permissionDenied, deniedLine);
    check("contentFailed", other, {}, CaptureError::failed, otherLine);
    check("imageDenied", {}, denied, CaptureError::permissionDenied, deniedLine);
    check("imageFailed", {}, other, CaptureError::failed, otherLine);
    m_server.contentError = denied;
    EXPECT_TRUE(answer(DisplayCapture::capturableWindows(m_server)).isEmpty());
    EXPECT_EQ(newLines(), QStringList{deniedLine});
}

TEST_F(DisplayCaptureTest, onlyNormalWindowsOfOthersCanBePickedInTheOrderGiven)
{
    const auto add = [this](quint32 id, const auto& change) {
        auto added = window(id, {10, 10, 40, 40});
        change(added);
        m_server.addWindow(added, Qt::red);
    };
    add(1, [](auto& own) { own.isOwn = true; });
    add(2, [](auto& front) { front.title.clear(); });
    add(3, [](auto& dock) { dock.layer = 20; });
    add(4, [](auto& hidden) { hidden.isOnScreen = false; });
    add(5, [](auto& narrow) { narrow.frame.setWidth(39.9); });
    add(6, [](auto& low) { low.frame.setHeight(39.9); });
    add(7, [](auto& desktop) { desktop.layer = -1; });
    add(8, [](auto& back) { back.application.clear(); });

    const QList<CapturableWindow> expected{
        {.id = 2, .frame = {10, 10, 40, 40}, .title = {}, .application = u"Painter"_qs},
        {.id = 8, .frame = {10, 10, 40, 40}, .title = u"Window 8"_qs, .application = {}},
    };
    EXPECT_EQ(answer(DisplayCapture::capturableWindows(m_server)), expected);
    EXPECT_EQ(m_server.contentRequests, QList<ListedWindows>{ListedWindows::withoutDesktops});

    EXPECT_EQ(expected.first().label(), u"Painter"_qs);
    EXPECT_EQ(expected.last().label(), u" — Window 8"_qs);
    EXPECT_EQ(DisplayCapture::windowAt({10, 49.9}, expected), expected.first());
    EXPECT_EQ(DisplayCapture::windowAt({10, 50}, expected), std::nullopt);
}

} // namespace

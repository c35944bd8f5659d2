#include "Capture/DisplayCapture.h"

#include "Fakes/FakeDisplayServer.h"
#include "Fakes/FakeSystemLog.h"
#include "Harness/Waiting.h"
#include "Log.h"

#include <array>
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
    window.title = QStringLiteral("Window %1").arg(id);
    window.application = QStringLiteral("Painter");
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
        Log::setSystemLog(m_systemLog, QStringLiteral("Lumenote"));
        Log::setMirrorsToStandardError(false);
    }
    void TearDown() override { Log::setSystemLog(nullptr, {}); }

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
    std::shared_ptr<Fakes::FakeSystemLog> m_systemLog = std::make_shared<Fakes::FakeSystemLog>();
    qsizetype m_knownLines = 0;
};

TEST_F(DisplayCaptureTest, aRegionIsCapturedFromTheDisplayUnderItsCentre)
{
    struct Row {
        const char* name;
        QRectF region;
        quint32 display;
        QRectF source; ///< Points of that display.
        QSize pixels;
        QStringList lines;
    };
    const std::array rows{
        Row{"within", {10, 20, 100, 50}, 11, {10, 20, 100, 50}, {100, 50}, {}},
        Row{"wholeDisplay", {0, 0, 1000, 800}, 11, {0, 0, 1000, 800}, {1000, 800}, {}},
        Row{"fractionsAtScaleTwo", {1010.25, 20, 100.5, 10}, 22, {10.25, 20, 100.5, 10}, {201, 20},
            {}},
        Row{"roundedAwayFromZeroAtAHalf", {10, 20, 2.5, 3.49}, 11, {10, 20, 2.5, 3.49}, {3, 3}, {}},
        Row{"centreOnTheFirst", {800, 100, 399, 100}, 11, {800, 100, 200, 100}, {200, 100},
            {QStringLiteral("capture: selection clipped to 200×100 at the display edge")}},
        Row{"centreOnTheEdgeIsTheSecond", {900, 100, 200, 100.5}, 22, {0, 100, 100, 100.5},
            {200, 201},
            {QStringLiteral("capture: selection clipped to 100×100 at the display edge")}},
        Row{"centreOnNeither", {-300, -300, 350, 350}, 11, {0, 0, 50, 50}, {50, 50},
            {QStringLiteral("capture: selection clipped to 50×50 at the display edge")}},
    };
    for (const auto& row : rows) {
        const auto result = captured(row.region);
        ASSERT_TRUE(result) << row.name;
        const auto& asked = m_server.captures.last();
        EXPECT_EQ(std::get<Platform::DisplayFilter>(asked.filter).displayNumber, row.display)
            << row.name;
        EXPECT_EQ(asked.configuration.sourceRect, row.source) << row.name;
        EXPECT_EQ(result->image.size(), row.pixels) << row.name;
        EXPECT_EQ(result->pointSize, row.source.size()) << row.name;
        EXPECT_EQ(newLines(), row.lines) << row.name;
        EXPECT_EQ(
            result->image.colorSpace(), m_server.screens().at(row.display == 11 ? 0 : 1).colorSpace)
            << row.name;
    }
    EXPECT_EQ(m_server.contentRequests.first(), ListedWindows::none);
}

TEST_F(DisplayCaptureTest, aRegionWithoutDisplayFails)
{
    struct Row {
        const char* name;
        QRectF region;
        QStringList lines;
    };
    const auto outside = QStringLiteral("capture: no display contains the selection");
    const auto sliver = QStringLiteral("capture: selection does not overlap its display");
    const std::array rows{
        Row{"rightOfAll", {2000, 0, 100, 100}, {outside}},
        Row{"halfAPointHigh", {10, 10, 100, 0.5}, {sliver}},
        Row{"lessThanAPointAfterClipping", {-99.5, 10, 100, 100}, {sliver}},
        Row{"touchesFromOutside", {-100, 10, 100, 100}, {sliver}},
    };
    for (const auto& row : rows) {
        const auto result = captured(row.region);
        ASSERT_FALSE(result) << row.name;
        EXPECT_EQ(result.error(), CaptureError::noDisplay) << row.name;
        EXPECT_EQ(newLines(), row.lines) << row.name;
    }
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
    EXPECT_EQ(newLines(), QStringList{QStringLiteral("capture: display 22 is not shareable")});
    EXPECT_TRUE(m_server.captures.isEmpty());

    auto unnumbered = m_server.screens();
    unnumbered.first().displayNumber = 0;
    m_server.setScreens(unnumbered);
    EXPECT_EQ(captured({0, 0, 10, 10}).error(), CaptureError::noDisplay);
    EXPECT_EQ(
        newLines(), QStringList{QStringLiteral("capture: no display ID for the target screen")});
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
    EXPECT_EQ(newLines(), QStringList{QStringLiteral("capture: window 5 is gone")});

    m_server.addWindow(window(5, {0, 0, 100, 100}), Qt::red);
    m_server.captureError = Error{.kind = Error::Kind::windowGone, .message = {}};
    EXPECT_EQ(captured(5).error(), CaptureError::windowGone);
    EXPECT_EQ(newLines(), QStringList{QStringLiteral("capture: window 5 is gone")});
}

TEST_F(DisplayCaptureTest, failuresOfTheSystemAreLoggedAndClassified)
{
    const Error denied{.kind = Error::Kind::permissionDenied, .message = QStringLiteral("no")};
    const Error other{.kind = Error::Kind::unreadable, .message = QStringLiteral("smoke")};
    struct Row {
        const char* name;
        std::optional<Error> contentError;
        std::optional<Error> captureError;
        CaptureError error;
        QString line;
    };
    const auto deniedLine = QStringLiteral("capture: Screen Recording permission denied");
    const auto otherLine = QStringLiteral("capture: capture failed: smoke");
    const std::array rows{
        Row{"contentDenied", denied, {}, CaptureError::permissionDenied, deniedLine},
        Row{"contentFailed", other, {}, CaptureError::failed, otherLine},
        Row{"imageDenied", {}, denied, CaptureError::permissionDenied, deniedLine},
        Row{"imageFailed", {}, other, CaptureError::failed, otherLine},
    };
    m_server.addWindow(window(5, {0, 0, 100, 100}), Qt::red);
    for (const auto& row : rows) {
        m_server.contentError = row.contentError;
        m_server.captureError = row.captureError;
        EXPECT_EQ(captured({0, 0, 10, 10}).error(), row.error) << row.name;
        EXPECT_EQ(captured(5).error(), row.error) << row.name;
        EXPECT_EQ(newLines(), (QStringList{row.line, row.line})) << row.name;
    }
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
        {.id = 2, .frame = {10, 10, 40, 40}, .title = {}, .application = QStringLiteral("Painter")},
        {.id = 8,
            .frame = {10, 10, 40, 40},
            .title = QStringLiteral("Window 8"),
            .application = {}},
    };
    EXPECT_EQ(answer(DisplayCapture::capturableWindows(m_server)), expected);
    EXPECT_EQ(m_server.contentRequests, QList<ListedWindows>{ListedWindows::withoutDesktops});

    EXPECT_EQ(DisplayCapture::windowAt({10, 49.9}, expected), expected.first());
    EXPECT_EQ(DisplayCapture::windowAt({10, 50}, expected), std::nullopt);
}

} // namespace

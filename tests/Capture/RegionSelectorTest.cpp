#include "Capture/RegionSelector.h"

#include "Capture/ScreenshotCapture.h"
#include "Capture/SelectionWindow.h"
#include "Fakes/FakeDisplayServer.h"
#include "Fakes/FakeOverlayKeyboard.h"
#include "Fakes/FakeSystemLog.h"
#include "Harness/Waiting.h"

#include <QApplication>
#include <QTest>

#include <algorithm>
#include <gtest/gtest.h>
#include <thread>

using namespace Lumenote;

namespace {

using Target = std::optional<CaptureTarget>;

QList<SelectionWindow*> overlays()
{
    QList<SelectionWindow*> overlays;
    for (auto* const widget : QApplication::topLevelWidgets())
        if (auto* const overlay = qobject_cast<SelectionWindow*>(widget))
            overlays.append(overlay);
    std::sort(overlays.begin(), overlays.end(),
        [](const auto* a, const auto* b) { return a->x() < b->x(); });
    return overlays;
}

bool areAllVisible()
{
    const auto all = overlays();
    return !all.isEmpty()
        && std::all_of(all.begin(), all.end(), [](const auto* it) { return it->isVisible(); });
}

/// A desktop of two displays, the right one lower than the left one and of scale 2.
class RegionSelectorTest : public testing::Test {
protected:
    void SetUp() override
    {
        auto left = m_server.screens().first();
        left.frame = left.visibleFrame = {0, 0, 400, 300};
        auto right = left;
        right.displayNumber = 2;
        right.frame = right.visibleFrame = {400, 50, 200, 150};
        right.backingScaleFactor = 2;
        m_server.setScreens({left, right});
    }

    void TearDown() override
    {
        EXPECT_FALSE(m_keyboard.isTaken);
        EXPECT_TRUE(Harness::waitFor([] { return overlays().isEmpty(); }));
    }

    void select(std::stop_token stop = {})
    {
        m_answer = RegionSelector::selectTarget(m_server, m_keyboard, std::move(stop));
    }

    Target answer()
    {
        EXPECT_TRUE(Harness::waitForFinished(m_answer));
        EXPECT_EQ(m_answer.resultCount(), 1);
        return m_answer.result();
    }

    static void drag(SelectionWindow* overlay, QPoint from, QPoint to)
    {
        QTest::mousePress(overlay, Qt::LeftButton, {}, from);
        QTest::mouseMove(overlay, to);
        QTest::mouseRelease(overlay, Qt::LeftButton, {}, to);
    }

    Fakes::FakeDisplayServer m_server;
    Fakes::FakeOverlayKeyboard m_keyboard;
    QFuture<Target> m_answer;
};

TEST_F(RegionSelectorTest, withoutADisplayNothingIsPicked)
{
    m_server.setScreens({});
    select();
    EXPECT_EQ(answer(), std::nullopt);
}

TEST_F(RegionSelectorTest, eachDisplayHasItsOverlayInOneSelection)
{
    select();
    ASSERT_TRUE(areAllVisible());
    ASSERT_EQ(overlays().size(), 2);
    EXPECT_EQ(overlays().at(0)->geometry(), QRect(0, 0, 400, 300));
    EXPECT_EQ(overlays().at(1)->geometry(), QRect(400, 100, 200, 150));
    EXPECT_TRUE(m_keyboard.isTaken);
    drag(overlays().at(0), {300, 120}, {500, 220});
    EXPECT_EQ(answer(), Target(RegionTarget{{300, 120, 200, 100}}));
}

TEST_F(RegionSelectorTest, otherButtonsDoNothingAndEscapeHidesTheOverlaysAtOnce)
{
    select();
    QTest::mouseClick(overlays().at(0), Qt::RightButton, {}, {150, 150});
    QTest::mousePress(overlays().at(0), Qt::MiddleButton, {}, {150, 150});
    EXPECT_FALSE(m_answer.isFinished());
    m_keyboard.pressEscape();
    ASSERT_TRUE(m_answer.isFinished());
    EXPECT_EQ(answer(), std::nullopt);
    for (const auto* overlay : overlays())
        EXPECT_FALSE(overlay->isVisible());
}

TEST_F(RegionSelectorTest, aStopFromAnyThreadCancels)
{
    std::stop_source stop;
    select(stop.get_token());
    std::thread([&stop] { stop.request_stop(); }).join();
    EXPECT_EQ(answer(), std::nullopt);

    select(stop.get_token()); // Already stopped.
    EXPECT_EQ(answer(), std::nullopt);
}

TEST_F(RegionSelectorTest, anotherArrangementOfDisplaysCancels)
{
    const Fakes::CollectedLog log;
    select();
    m_server.setScreens({m_server.screens().first()});
    EXPECT_EQ(answer(), std::nullopt);
    EXPECT_EQ(log->messages(),
        QStringList(u"picker: display arrangement changed — cancelling the picker"_qs));
}

TEST_F(RegionSelectorTest, withoutACompositorTheDisplaysArePicturesTakenBefore)
{
    m_server.setHasCompositor(false);
    m_server.holdAnswers();
    select();
    EXPECT_TRUE(m_keyboard.isTaken);
    ASSERT_EQ(m_server.captures.size(), 2);
    EXPECT_EQ(m_server.captures.at(1).filter, Platform::ContentFilter(Platform::DisplayFilter{2}));
    EXPECT_EQ(m_server.captures.at(1).configuration.pixelSize, QSize(400, 300));
    EXPECT_FALSE(areAllVisible());

    m_server.answerAll();
    ASSERT_TRUE(Harness::waitFor(areAllVisible));
    const auto dark = overlays().at(0)->grab().toImage().pixelColor(5, 5);
    EXPECT_EQ(dark.alpha(), 255);
    EXPECT_NEAR(dark.green(), m_server.desktopColor.green() * 0.65, 1);

    m_server.setHasCompositor(true);
    EXPECT_EQ(overlays().at(0)->grab().toImage().pixelColor(5, 5).alpha(), 0x59);
    m_server.setHasCompositor(false);
    m_server.answerAll();
    EXPECT_TRUE(Harness::waitFor(
        [] { return overlays().at(0)->grab().toImage().pixelColor(5, 5).alpha() == 255; }));
    m_keyboard.pressEscape();
}

TEST_F(RegionSelectorTest, aPictureThatFailsOrComesTooLateIsNoHarm)
{
    m_server.setHasCompositor(false);
    m_server.captureError = Platform::Error{.message = u"no"_qs};
    select();
    EXPECT_TRUE(Harness::waitFor(areAllVisible));
    m_keyboard.pressEscape();
    EXPECT_EQ(answer(), std::nullopt);

    m_server.holdAnswers();
    select();
    m_keyboard.pressEscape();
    m_server.answerAll();
    EXPECT_EQ(answer(), std::nullopt);
}

TEST_F(RegionSelectorTest, whatCantBeCapturedSaysWhy)
{
    m_server.captureError = Platform::Error{Platform::Error::Kind::permissionDenied, {}};
    const auto outcome = ScreenshotCapture::captureInteractive(m_server, m_keyboard);
    drag(overlays().at(0), {20, 30}, {120, 80});
    ASSERT_TRUE(Harness::waitForFinished(outcome));
    EXPECT_EQ(std::get<CaptureError>(outcome.result()), CaptureError::permissionDenied);
}

TEST_F(RegionSelectorTest, aWholeDisplayIsCapturedAsItsFrame)
{
    const auto outcome = ScreenshotCapture::captureFullScreen(m_server, m_server.screens().at(1));
    ASSERT_TRUE(Harness::waitForFinished(outcome));
    EXPECT_EQ(std::get<CapturedImage>(outcome.result()).image.size(), QSize(400, 300));
    EXPECT_EQ(
        m_server.captures.first().filter, Platform::ContentFilter(Platform::DisplayFilter{2}));
}

} // namespace

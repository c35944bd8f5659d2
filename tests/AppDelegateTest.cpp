#include "AppDelegate.h"

#include "Fakes/FakeAlerts.h"
#include "Fakes/FakeApplicationActivation.h"
#include "Fakes/FakeDisplayServer.h"
#include "Fakes/FakeFileSystem.h"
#include "Fakes/FakeFloatingWindows.h"
#include "Fakes/FakeHotKeyRegistrar.h"
#include "Fakes/FakeImageDrag.h"
#include "Fakes/FakeKeyboardLayout.h"
#include "Fakes/FakeOverlayKeyboard.h"
#include "Fakes/FakePasteboard.h"
#include "Fakes/FakeSavePanel.h"
#include "Fakes/FakeTextRecognizer.h"
#include "Fakes/FakeUserDefaults.h"
#include "Harness/Waiting.h"
#include "OCR/OCRService.h"

#include <gtest/gtest.h>
#include <optional>

using namespace Lumenote;

namespace {

/// The whole program on a scripted system.
class AppDelegateTest : public testing::Test {
protected:
    void SetUp() override
    {
        delegate.emplace(CaptureStore(files->root() / "Captures", files),
            AppDelegate::Services{.ocr = ocr,
                .alerts = alerts,
                .activation = activation,
                .displayServer = displayServer,
                .floatingWindows = floatingWindows,
                .hotKeyRegistrar = hotKeys,
                .imageDrag = imageDrag,
                .keyboardLayout = layout,
                .overlayKeyboard = keyboard,
                .pasteboard = pasteboard,
                .savePanel = savePanel,
                .userDefaults = defaults});
    }

    /// A thread left behind would end the test with the fonts of its own still there.
    void TearDown() override { EXPECT_TRUE(Harness::waitForFinished(ocr.runner())); }

    bool waitUntilIdle() const
    {
        return Harness::waitFor([this] { return !delegate->isCapturing(); });
    }

    const QList<CaptureHistory::Entry>& entries() const { return delegate->history().entries(); }

public:
    const std::shared_ptr<Fakes::FakeTextRecognizer> recognizer =
        std::make_shared<Fakes::FakeTextRecognizer>();
    const std::shared_ptr<Fakes::FakeFileSystem> files = std::make_shared<Fakes::FakeFileSystem>();
    OCRService ocr{recognizer};
    Fakes::FakeAlerts alerts;
    Fakes::FakeApplicationActivation activation;
    Fakes::FakeDisplayServer displayServer;
    Fakes::FakeFloatingWindows floatingWindows;
    Fakes::FakeHotKeyRegistrar hotKeys;
    Fakes::FakeImageDrag imageDrag;
    Fakes::FakeKeyboardLayout layout;
    Fakes::FakeOverlayKeyboard keyboard;
    Fakes::FakePasteboard pasteboard;
    Fakes::FakeSavePanel savePanel;
    Fakes::FakeUserDefaults defaults;
    std::optional<AppDelegate> delegate;
};

TEST_F(AppDelegateTest, takesTheHotKeyAndWarmsUpAtTheStart)
{
    delegate->finishLaunching();
    EXPECT_EQ(hotKeys.registered, Fakes::FakeHotKeyRegistrar::Key(22, 0x300));
    EXPECT_FALSE(delegate->hotKeyUnavailable());
    EXPECT_TRUE(Harness::waitFor([this] { return recognizer->callCount() > 0; }));
}

TEST_F(AppDelegateTest, knowsThatTheHotKeyIsTaken)
{
    hotKeys.taken = {{22, 0x300}};
    delegate->finishLaunching();
    EXPECT_TRUE(delegate->hotKeyUnavailable());
}

TEST_F(AppDelegateTest, aFullScreenEndsInTheHistoryWithItsText)
{
    recognizer->queueLines({u"on screen"_qs});
    delegate->captureFullScreen();
    EXPECT_TRUE(delegate->isCapturing());
    ASSERT_TRUE(waitUntilIdle());
    ASSERT_EQ(entries().size(), 1);
    EXPECT_EQ(entries().constFirst().pixelSize, QSize(1920, 1080));
    delegate->finishWriting();
    EXPECT_TRUE(std::filesystem::exists(*entries().constFirst().fileURL)) << "without a turn";
    EXPECT_TRUE(Harness::waitFor([this] { return entries().constFirst().isTextStored; }));
    EXPECT_EQ(entries().constFirst().model->displayText(), u"on screen"_qs);
}

TEST_F(AppDelegateTest, theHotKeyBeginsOneSelectionAndEscapeEndsIt)
{
    delegate->finishLaunching();
    hotKeys.press();
    ASSERT_TRUE(Harness::waitFor([this] { return keyboard.isTaken; }));
    hotKeys.press();
    keyboard.pressEscape();
    ASSERT_TRUE(waitUntilIdle());
    QCoreApplication::processEvents();
    EXPECT_FALSE(delegate->isCapturing());
    EXPECT_FALSE(keyboard.isTaken);
    EXPECT_TRUE(entries().isEmpty());
    EXPECT_TRUE(alerts.shown.isEmpty());
}

TEST_F(AppDelegateTest, eachFailureIsToldAndBlocksUntilItIsRead)
{
    const auto check = [&](Platform::Error::Kind kind, const QString& title) {
        displayServer.captureError = Platform::Error{.kind = kind, .message = {}};
        alerts.shown.clear();
        delegate->captureFullScreen();
        ASSERT_TRUE(Harness::waitFor([this] { return !alerts.shown.isEmpty(); }));
        EXPECT_EQ(alerts.shown.constFirst().title, title);
        delegate->captureFullScreen();
        EXPECT_EQ(displayServer.captures.size(), 1);
        alerts.press(static_cast<int>(alerts.shown.constFirst().buttons.size()) - 1);
        EXPECT_FALSE(delegate->isCapturing());
        displayServer.captures.clear();
    };
    check(Platform::Error::Kind::failed, u"Couldn't take the screenshot"_qs);
    check(
        Platform::Error::Kind::permissionDenied, u"Lumenote needs Screen Recording permission"_qs);
    EXPECT_TRUE(delegate->screenRecordingDenied());
    EXPECT_TRUE(entries().isEmpty());
}

TEST_F(AppDelegateTest, nothingIsCapturedWithoutTheRightTo)
{
    displayServer.isGranted = false;
    delegate->captureSelection(); // The system asks.
    EXPECT_FALSE(delegate->isCapturing());
    delegate->captureSelection();
    ASSERT_EQ(alerts.shown.size(), 1);
    EXPECT_TRUE(delegate->screenRecordingDenied());
    alerts.press(1);
    displayServer.isGranted = true;
    delegate->captureFullScreen();
    ASSERT_TRUE(waitUntilIdle());
    EXPECT_EQ(entries().size(), 1);
    EXPECT_FALSE(delegate->screenRecordingDenied());
}

} // namespace

#include "Capture/DisplayCapture.h"
#include "Capture/ScreenshotCapture.h"
#include "Fakes/FakeSystemLog.h"
#include "Log.h"
#include "Platform/X11/OwnWindow.h"
#include "SelectionFixture.h"

using namespace Lumenote;
using Harness::PaintedWindow;

namespace {

constexpr QRect windowRect(900, 250, 300, 200);
constexpr std::uint32_t blue = 0x2040c0;
constexpr std::uint32_t green = 0x20a040;

/// From the gesture to the image.
class Captures : public SelectionInSituation {
protected:
    void SetUp() override
    {
        SelectionInSituation::SetUp();
        Log::setSystemLog(m_log, QStringLiteral("Lumenote"));
    }
    void TearDown() override { Log::setSystemLog(nullptr, {}); }

    void begin()
    {
        m_outcome = ScreenshotCapture::captureInteractive(*m_server, *m_keyboard);
        ASSERT_TRUE(waitForPixel(onDesktop, dimmed(desktopColor)));
    }

    std::optional<CapturedImage> captured() const
    {
        EXPECT_TRUE(Harness::waitForFinished(m_outcome));
        const auto outcome = m_outcome.result();
        const auto* const image = std::get_if<CapturedImage>(&outcome);
        return image != nullptr ? std::optional(*image) : std::nullopt;
    }

    std::optional<CapturedImage> capturedByDrag(QPoint from, QPoint to)
    {
        begin();
        dragTo(from, to);
        release();
        return captured();
    }

    std::optional<CapturedImage> capturedByClick(QPoint at)
    {
        movePointer(at);
        begin();
        press("space");
        // The window is no more dimmed once it is hovered.
        EXPECT_TRUE(Harness::waitFor([this, at] {
            return m_root.picture().pixel(at - QPoint(20, 20))
                == m_before.pixel(at - QPoint(20, 20));
        }));
        xdotool({"click", "1"});
        return captured();
    }

    const std::shared_ptr<Fakes::FakeSystemLog> m_log = std::make_shared<Fakes::FakeSystemLog>();
    QFuture<CaptureOutcome> m_outcome;
    QImage m_before;
};

TEST_P(Captures, showWhatIsBelowOurOwnWindows)
{
    struct Row {
        const char* name;
        OwnWindow::Look look;
        bool isBelowStopped;
    };
    const std::array rows{
        Row{"opaque", OwnWindow::Look::opaque, false},
        Row{"translucent", OwnWindow::Look::translucent, false},
        Row{"shaped", OwnWindow::Look::shaped, false},
        Row{"opaqueAboveAStoppedProgram", OwnWindow::Look::opaque, true},
        Row{"translucentAboveAStoppedProgram", OwnWindow::Look::translucent, true},
        Row{"shapedAboveAStoppedProgram", OwnWindow::Look::shaped, true},
    };
    const PaintedWindow below(windowRect, blue, {"frameless", "1"});
    const auto pattern = below.pattern({{}, windowRect.size()});
    const auto isUncovered = [&] { return m_root.picture().copy(windowRect) == pattern; };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
        ASSERT_TRUE(Harness::waitFor(isUncovered));
        if (row.isBelowStopped)
            below.stop();
        const OwnWindow own(windowRect.adjusted(-30, -30, -30, -30), row.look);
        ASSERT_TRUE(Harness::waitFor([&] { return !isUncovered(); }));
        const auto capture =
            capturedByDrag(windowRect.topLeft(), windowRect.bottomRight() + QPoint(1, 1));
        ASSERT_TRUE(capture);
        EXPECT_TRUE(capture->image == pattern);
    }
}

TEST_P(Captures, endAtTheEdgesOfTheDisplayUnderTheirCentre)
{
    struct Row {
        const char* name;
        QPoint from;
        QPoint to;
        QRect pixels;
        QSizeF points;
        QStringList lines;
    };
    const std::array rows{
        Row{"within", {1000, 300}, {1100, 420}, {1000, 300, 100, 120}, {100, 120}, {}},
        Row{"ofScaleTwo", {100, 200}, {500, 600}, {100, 200, 400, 400}, {200, 200}, {}},
        Row{"acrossDisplays", {600, 300}, {1000, 500}, {700, 200, 300, 300}, {300, 300},
            {QStringLiteral("capture: selection clipped to 300×300 at the display edge")}},
        Row{"beyondTheLowerEdge", {1000, 700}, {1200, 880}, {1000, 700, 200, 150}, {200, 150},
            {QStringLiteral("capture: selection clipped to 200×150 at the display edge")}},
    };
    const PaintedWindow onTheFirst({720, 220, 500, 600}, blue, {"unmanaged", "1"});
    const PaintedWindow onTheSecond({80, 180, 500, 500}, green, {"unmanaged", "1"});
    ASSERT_TRUE(waitForPixel({720, 220}, blue));
    ASSERT_TRUE(waitForPixel({80, 180}, green));
    const auto before = m_root.picture();
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
        const auto known = m_log->messages().size();
        const auto capture = capturedByDrag(row.from, row.to);
        ASSERT_TRUE(capture);
        EXPECT_TRUE(capture->image == before.copy(row.pixels));
        EXPECT_EQ(capture->pointSize, row.points);
        EXPECT_EQ(m_log->messages().mid(known), row.lines);
    }
}

TEST_P(Captures, takeTheFrontWindowAndTheCoveredOneWhole)
{
    const PaintedWindow back(windowRect, blue, {"frameless", "1", "class", "Painter"});
    const PaintedWindow front(windowRect.translated(100, 80), green,
        {"frameless", "1", "class", "Painter", "name", "Grüße – 写真"});
    ASSERT_TRUE(waitForPixel(windowRect.topLeft() + QPoint(100, 80), green));
    m_before = m_root.picture();

    const auto list = DisplayCapture::capturableWindows(*m_server);
    ASSERT_TRUE(Harness::waitForFinished(list));
    QStringList labels;
    for (const auto& window : list.result())
        labels.append(window.label());
    EXPECT_EQ(
        labels, QStringList({QStringLiteral("Painter — Grüße – 写真"), QStringLiteral("Painter")}));

    for (const auto& [window, point] :
        {std::pair(&front, QPoint(1150, 400)), std::pair(&back, QPoint(950, 300))}) {
        const auto capture = capturedByClick(point);
        ASSERT_TRUE(capture);
        EXPECT_TRUE(capture->image.convertToFormat(QImage::Format_RGB32)
            == window->pattern({{}, windowRect.size()}));
        EXPECT_EQ(capture->pointSize, QSizeF(windowRect.size()));
    }
}

TEST_P(Captures, failWhereTheWindowClosesMeanwhile)
{
    PaintedWindow window(windowRect, blue, {"frameless", "1"});
    ASSERT_TRUE(waitForPixel(windowRect.topLeft(), blue));
    select();
    press("space");
    movePointer(fresh(windowRect.center()));
    ASSERT_TRUE(waitForPixel(windowRect.topLeft(), blue));
    xdotool({"click", "1"});
    const auto id = window.id();
    ASSERT_EQ(answer(), Target(WindowTarget{id}));
    window.close();
    ASSERT_TRUE(waitForPixel(windowRect.topLeft(), desktopColor));
    const auto capture = DisplayCapture::capture(*m_server, id);
    ASSERT_TRUE(Harness::waitForFinished(capture));
    EXPECT_EQ(capture.result(), tl::make_unexpected(CaptureError::windowGone));
    EXPECT_EQ(m_log->messages(), QStringList(QStringLiteral("capture: window %1 is gone").arg(id)));
}

TEST_P(Captures, areCancelledByADisplayThatIsUnplugged)
{
    begin();
    ASSERT_TRUE(m_desktop.unplugSecondMonitor());
    ASSERT_TRUE(Harness::waitForFinished(m_outcome));
    EXPECT_TRUE(std::holds_alternative<CaptureCancelled>(m_outcome.result()));
    EXPECT_EQ(m_log->messages(),
        QStringList(QStringLiteral("picker: display arrangement changed — cancelling the picker")));
    EXPECT_TRUE(waitForPixel(onDesktop, desktopColor));
    ASSERT_TRUE(m_desktop.plugSecondMonitor());
    EXPECT_TRUE(Harness::waitFor([this] { return m_server->screens().size() == 2; }));
}

INSTANTIATE_TEST_SUITE_P(, Captures, allSituations, nameOf);

} // namespace

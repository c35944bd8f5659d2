#include "Capture/ScreenshotCapture.h"
#include "Fakes/FakeSystemLog.h"
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
    void begin()
    {
        m_outcome = ScreenshotCapture::captureInteractive(server(), *m_keyboard);
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
            return m_other.picture().pixel(at - QPoint(20, 20))
                == m_before.pixel(at - QPoint(20, 20));
        }));
        xdotool({"click", "1"});
        return captured();
    }

    const Fakes::CollectedLog m_log;
    QFuture<CaptureOutcome> m_outcome;
    QImage m_before;
};

TEST_P(Captures, endAtTheEdgesOfTheDisplayUnderTheirCentre)
{
    const PaintedWindow onTheFirst({720, 220, 500, 600}, blue, {"unmanaged", "1"});
    const PaintedWindow onTheSecond({80, 180, 500, 500}, green, {"unmanaged", "1"});
    ASSERT_TRUE(waitForPixel({720, 220}, blue));
    ASSERT_TRUE(waitForPixel({80, 180}, green));
    const auto before = m_other.picture();
    const auto check = [&](const char* name, QPoint from, QPoint to, const QRect& pixels,
                           QSizeF points, const QStringList& lines) {
        SCOPED_TRACE(name);
        const auto known = m_log->messages().size();
        const auto capture = capturedByDrag(from, to);
        ASSERT_TRUE(capture);
        EXPECT_TRUE(capture->image == before.copy(pixels));
        EXPECT_EQ(capture->pointSize, points);
        EXPECT_EQ(m_log->messages().mid(known), lines);
    };
    check("within", {1000, 300}, {1100, 420}, {1000, 300, 100, 120}, {100, 120}, {});
    check("ofScaleTwo", {100, 200}, {500, 600}, {100, 200, 400, 400}, {200, 200}, {});
    check("acrossDisplays", {600, 300}, {1000, 500}, {700, 200, 300, 300}, {300, 300},
        {u"capture: selection clipped to 300×300 at the display edge"_qs});
    check("beyondTheLowerEdge", {1000, 700}, {1200, 880}, {1000, 700, 200, 150}, {200, 150},
        {u"capture: selection clipped to 200×150 at the display edge"_qs});
}

TEST_P(Captures, takeTheFrontWindowAndTheCoveredOneWhole)
{
    const PaintedWindow back(windowRect, blue, {"frameless", "1"});
    const PaintedWindow front(windowRect.translated(100, 80), green, {"frameless", "1"});
    ASSERT_TRUE(waitForPixel(windowRect.topLeft() + QPoint(100, 80), green));
    m_before = m_other.picture();

    for (const auto& [window, point] :
        {std::pair(&front, QPoint(1150, 400)), std::pair(&back, QPoint(950, 300))}) {
        const auto capture = capturedByClick(point);
        ASSERT_TRUE(capture);
        EXPECT_TRUE(capture->image.convertToFormat(QImage::Format_RGB32)
            == window->pattern({{}, windowRect.size()}));
        EXPECT_EQ(capture->pointSize, QSizeF(windowRect.size()));
    }
}

TEST_P(Captures, areCancelledByADisplayThatIsUnplugged)
{
    begin();
    ASSERT_TRUE(m_desktop.unplugSecondMonitor());
    ASSERT_TRUE(Harness::waitForFinished(m_outcome));
    EXPECT_TRUE(std::holds_alternative<CaptureCancelled>(m_outcome.result()));
    EXPECT_EQ(m_log->messages(),
        QStringList(u"picker: display arrangement changed — cancelling the picker"_qs));
    EXPECT_TRUE(waitForPixel(onDesktop, desktopColor));
    ASSERT_TRUE(m_desktop.plugSecondMonitor());
    EXPECT_TRUE(Harness::waitFor([this] { return server().screens().size() == 2; }));
}

INSTANTIATE_TEST_SUITE_P(, Captures, allSituations, nameOf);

} // namespace

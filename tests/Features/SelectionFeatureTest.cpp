#include "Capture/DisplayCapture.h"
#include "Capture/OverlayDrawing.h"
#include "Capture/OverlayScene.h"
#include "SelectionFixture.h"

#include <QApplication>
#include <QPainter>

#include <algorithm>
#include <malloc.h>

using namespace Lumenote;
using Harness::Desktop;
using Harness::PaintedWindow;

namespace {

constexpr QRgb windowColor = 0xffc08040;

/// A display of the desktop, and where it is in points. Qt keeps corners in pixels.
struct Display {
    QRect pixels;
    QRectF points;
    double scale;
};
const Display first{Desktop::firstMonitor, {0, 0, 900, 800}, 1};
const Display second{Desktop::secondMonitor, {-700, 50, 350, 300}, 2};

class SelectionOverlays : public SelectionInSituation {
protected:
    void SetUp() override
    {
        SelectionInSituation::SetUp();
        movePointer({1580, 840}); // Out of the way.
        m_before = m_other.picture();
    }

    /// Waits until both displays look as before, with the overlay for @p state over them.
    void expectLook(const SelectionState& state)
    {
        const auto accent = QApplication::palette().color(QPalette::Active, QPalette::Highlight);
        for (const auto& display : {first, second}) {
            const auto scene = overlayScene(state, display.points, display.scale, accent);
            auto backdrop = m_before.copy(display.pixels);
            backdrop.setDevicePixelRatio(display.scale);
            QImage expected(backdrop.size(), QImage::Format_RGB32);
            expected.setDevicePixelRatio(display.scale);
            QPainter painter(&expected);
            drawOverlay(painter, {{}, display.points.size()}, scene, backdrop);
            painter.end();
            EXPECT_TRUE(Harness::waitFor([&] { return looksLike(display.pixels, expected); }))
                << "scale " << display.scale;
        }
    }

    bool looksLike(const QRect& place, const QImage& expected) const
    {
        const auto picture = m_other.picture().copy(place);
        for (int y = 0; y < picture.height(); ++y)
            for (int x = 0; x < picture.width(); ++x)
                if (!isNear(picture.pixel(x, y), expected.pixel(x, y)))
                    return false;
        return true;
    }

    QImage m_before;
};

TEST_P(SelectionOverlays, showADragOnBothDisplaysAndMeasureItInPoints)
{
    const auto check = [&](const char* name, QPoint from, QPoint to, const QRectF& points) {
        SCOPED_TRACE(name);
        select();
        expectLook({});
        dragTo(from, to);
        expectLook({.selection = points});
        release();
        EXPECT_EQ(answer(), Target(RegionTarget{points}));
        EXPECT_TRUE(Harness::waitFor([this] { return looksLike(m_other.rect(), m_before); }));
    };
    check("onTheFirst", {950, 280}, {1400, 600}, {250, 230, 450, 320});
    check("backwardsOnTheSecond", {520, 620}, {120, 320}, {-640, 160, 200, 150});
    check("betweenPoints", {121, 321}, {420, 520}, {-639.5, 160.5, 149.5, 99.5});
    check("atTheTop", {720, 50}, {1000, 150}, {20, 0, 280, 100});
    check(
        "toTheLastPixels", {1200, 600}, Desktop::firstMonitor.bottomRight(), {500, 550, 400, 250});
    check("acrossBoth", {600, 300}, {1000, 500}, {-400, 150, 700, 300});
}

TEST_P(SelectionOverlays, showAndPickTheWindowUnderThePointer)
{
    const PaintedWindow window({900, 500, 300, 200}, windowColor,
        {"plain", "1", "frameless", "1", "name", "Grüße – 写真", "class", "Painter"});
    ASSERT_TRUE(waitForPixel({1050, 650}, windowColor));
    m_before = m_other.picture();
    const auto listed = DisplayCapture::capturableWindows(server());
    ASSERT_TRUE(Harness::waitForFinished(listed));
    const auto hovered = DisplayCapture::windowAt({350, 600}, listed.result());
    ASSERT_TRUE(hovered);
    EXPECT_EQ(hovered->id, window.id());
    EXPECT_EQ(hovered->label(), u"Painter — Grüße – 写真"_qs);

    select();
    press("space");
    expectLook({.mode = SelectionMode::window});
    movePointer(fresh({1050, 650}));
    expectLook({.mode = SelectionMode::window, .hoveredWindow = hovered});
    xdotool({"click", "1"});
    EXPECT_EQ(answer(), Target(WindowTarget{window.id()}));
}

TEST_P(SelectionOverlays, leaveTheFocusWhereItIs)
{
    const PaintedWindow window({900, 250, 300, 200}, windowColor, {"plain", "1", "unmanaged", "1"});
    m_other.setFocus(window.id());
    select();
    EXPECT_EQ(m_other.focus(), window.id());
    press("Escape");
    EXPECT_EQ(answer(), std::nullopt);
    EXPECT_EQ(m_other.focus(), window.id());
    EXPECT_TRUE(waitForPixel({1000, 300}, windowColor));
}

TEST_P(SelectionOverlays, coverPanelsAndFullscreenWindows)
{
    const auto expectCovered = [this](QPoint within) {
        ASSERT_TRUE(waitForPixel(within, windowColor));
        m_answer = RegionSelector::selectTarget(server(), *m_keyboard);
        EXPECT_TRUE(waitForPixel(within, dimmed(windowColor)));
        press("Escape");
        EXPECT_EQ(answer(), std::nullopt);
    };
    const PaintedWindow panel({700, 50, 900, 40}, windowColor, {"plain", "1", "type", "DOCK"});
    expectCovered({1000, 70});
    const PaintedWindow full(
        Desktop::firstMonitor, windowColor, {"plain", "1", "state", "FULLSCREEN"});
    expectCovered(onDesktop);
}

INSTANTIATE_TEST_SUITE_P(, SelectionOverlays, allSituations, nameOf);

using SelectionFeature = SelectionFixture;

TEST_F(SelectionFeature, theLookStaysWhenACompositorComesAndGoes)
{
    select();
    startCompositor();
    {
        // What comes up below now shows through.
        const PaintedWindow window(
            {900, 250, 300, 200}, windowColor, {"plain", "1", "unmanaged", "1"});
        m_other.lower(window.id());
        m_other.lower(m_wallpaper.id());
        EXPECT_TRUE(waitForPixel({1000, 300}, dimmed(windowColor)));
        EXPECT_TRUE(waitForPixel(onDesktop, dimmed(desktopColor)));
    }
    stopCompositor();
    EXPECT_TRUE(waitForPixel({1000, 300}, dimmed(desktopColor)));
    press("Escape");
    EXPECT_EQ(answer(), std::nullopt);
}

/// Of the heap, without what the allocator merely keeps.
size_t bytesInUse()
{
    const auto info = mallinfo2();
    return info.uordblks + info.hblkhd;
}

TEST_F(SelectionFeature, thousandSelectionsLeaveNothingBehind)
{
    const auto hasOverlay = [] {
        const auto all = QApplication::topLevelWidgets();
        return std::ranges::any_of(all, [](const auto* widget) { return widget->isVisible(); });
    };
    const auto selectAndCancel = [&](int times) {
        for (int i = 0; i < times; ++i) {
            std::stop_source stop;
            m_answer = RegionSelector::selectTarget(server(), *m_keyboard, stop.get_token());
            ASSERT_TRUE(Harness::waitFor(hasOverlay));
            stop.request_stop();
            ASSERT_EQ(answer(), std::nullopt);
        }
        ASSERT_TRUE(Harness::waitFor([] { return QApplication::topLevelWidgets().isEmpty(); }));
    };
    const auto own = QCoreApplication::applicationPid();
    constexpr int selections = 1000;
    constexpr size_t bytesForEach = 100; // Less than any window, picture or reply takes.
    selectAndCancel(selections / 10);
    const int resources = m_other.resourcesOf(own);
    const auto bytes = bytesInUse();
    ASSERT_GT(resources, 0);

    selectAndCancel(selections);
    EXPECT_TRUE(Harness::waitFor([&] { return m_other.resourcesOf(own) <= resources; }));
    EXPECT_LT(bytesInUse(), bytes + selections * bytesForEach);
    EXPECT_TRUE(m_other.canGrabKeyboard()) << "nobody holds the keyboard";
}

} // namespace

#include "Platform/X11/X11FloatingWindows.h"

#include "FloatingWindow.h"
#include "Harness/Desktop.h"

#include <QSignalSpy>

#include <gtest/gtest.h>

namespace {

constexpr QRect card(900, 250, 300, 200); ///< On the first display, of ratio 1.

/// With a window manager, or without.
class FloatingWindowsOnX11 : public testing::TestWithParam<bool> {
protected:
    void SetUp() override
    {
        if (GetParam())
            m_windowManager = m_desktop.startWindowManager();
    }

    /// Whether a click there, in pixels of the root, comes to @p window.
    bool takesClick(const FloatingWindow& window, QPoint pixels)
    {
        const int before = window.clicks + m_below.clicks;
        const int own = window.clicks;
        EXPECT_TRUE(m_desktop.run("xdotool",
            {"mousemove", QByteArray::number(pixels.x()), QByteArray::number(pixels.y()), "click",
                "1"}));
        EXPECT_TRUE(Harness::waitFor([&] { return window.clicks + m_below.clicks > before; }));
        return window.clicks > own;
    }

    const Harness::Desktop m_desktop;
    Platform::X11FloatingWindows m_floating;

private:
    Harness::Desktop::Program m_windowManager{nullptr, nullptr};

protected:
    FloatingWindow m_below{m_floating, {0, 0, 10, 10}};
};

INSTANTIATE_TEST_SUITE_P(, FloatingWindowsOnX11, testing::Bool(),
    [](const auto& row) { return std::string(row.param ? "openbox" : "nothing"); });

TEST_P(FloatingWindowsOnX11, clicksBesideTheShapeGoToWhatIsBelow)
{
    m_below.setFlag(Qt::WindowStaysOnTopHint, false);
    m_below.setGeometry(Harness::Desktop::firstMonitor);
    m_below.present();
    FloatingWindow window(m_floating, card);
    // The shape is in points from the corner of the window, shadow included.
    const QRegion shape = QRegion(36, 36, 300, 150) + QRegion(136, 200, 100, 36);
    m_floating.setInputShape(window, shape);
    for (int shown = 0; shown < 3; ++shown) {
        SCOPED_TRACE(shown);
        window.present();
        EXPECT_TRUE(takesClick(window, card.topLeft() + QPoint(5, 5)));
        EXPECT_TRUE(takesClick(window, card.topLeft() + QPoint(150, 180)));
        EXPECT_FALSE(takesClick(window, card.topLeft() + QPoint(5, 180)));
        EXPECT_FALSE(takesClick(window, card.topLeft() - QPoint(10, 10)));
        window.hide();
    }
}

TEST_P(FloatingWindowsOnX11, whoBlursIsToldByTheRoot)
{
    EXPECT_FALSE(m_floating.blursBehind());
    QSignalSpy changes(&m_floating, &Platform::FloatingWindows::blursBehindChanged);
    const char* name = "_KDE_NET_WM_BLUR_BEHIND_REGION";
    ASSERT_TRUE(m_desktop.run("xprop", {"-root", "-f", name, "8c", "-set", name, "0"}));
    EXPECT_TRUE(Harness::waitFor([&] { return m_floating.blursBehind(); }));
    EXPECT_TRUE(Platform::X11FloatingWindows().blursBehind());
    ASSERT_TRUE(m_desktop.run("xprop", {"-root", "-remove", name}));
    EXPECT_TRUE(Harness::waitFor([&] { return !m_floating.blursBehind(); }));
    EXPECT_EQ(changes.size(), 2);
}

} // namespace

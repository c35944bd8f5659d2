#pragma once

#include "Capture/RegionSelector.h"
#include "Platform/X11/DesktopFixture.h"
#include "Platform/X11/X11OverlayKeyboard.h"

#include <cstdlib>

/// Selections on the X server of this test program, by real keys and a real pointer. All that
/// isn't said to be in points is in pixels of the root.
class SelectionFixture : public DesktopFixture {
protected:
    using Target = std::optional<Lumenote::CaptureTarget>;

    static constexpr QRgb desktopColor = 0xff336699;
    /// Where nothing but the wallpaper is.
    static constexpr QPoint onDesktop{1300, 700};

    void SetUp() override
    {
        DesktopFixture::SetUp();
        m_keyboard = std::make_unique<Platform::X11OverlayKeyboard>();
        ASSERT_TRUE(waitForPixel(onDesktop, desktopColor));
    }

    void startWindowManager()
    {
        m_windowManager = m_desktop.startWindowManager();
        m_other.lower(m_wallpaper.id()); // Openbox puts what it manages below all that it doesn't.
    }

    /// Begins a selection and waits until the overlays are there.
    void select(std::stop_token stop = {})
    {
        m_answer = Lumenote::RegionSelector::selectTarget(server(), *m_keyboard, std::move(stop));
        ASSERT_TRUE(waitForPixel(onDesktop, dimmed(desktopColor)));
    }

    Target answer() const
    {
        EXPECT_TRUE(Harness::waitForFinished(m_answer));
        return m_answer.isFinished() ? m_answer.result() : std::nullopt;
    }

    /// Compositors and pictures round in different places.
    static bool isNear(QRgb a, QRgb b)
    {
        constexpr int rounding = 3;
        return std::abs(qRed(a) - qRed(b)) <= rounding
            && std::abs(qGreen(a) - qGreen(b)) <= rounding
            && std::abs(qBlue(a) - qBlue(b)) <= rounding;
    }

    static QRgb dimmed(QRgb color)
    {
        const auto dim = [](int value) { return qRound(0.65 * value); };
        return qRgb(dim(qRed(color)), dim(qGreen(color)), dim(qBlue(color)));
    }

    bool waitForPixel(QPoint at, QRgb color) const
    {
        const bool isThere =
            Harness::waitFor([&] { return isNear(m_other.picture().pixel(at), color); });
        if (!isThere)
            ADD_FAILURE() << qPrintable(m_other.picture().pixelColor(at).name()) << " is not "
                          << qPrintable(QColor(color).name());
        return isThere;
    }

    void xdotool(const QByteArrayList& arguments) const
    {
        ASSERT_TRUE(m_desktop.run("xdotool", arguments));
    }
    void movePointer(QPoint to) const
    {
        xdotool({"mousemove", QByteArray::number(to.x()), QByteArray::number(to.y())});
    }
    void press(const char* key) const { xdotool({"key", key}); }
    /// Leaves the button down.
    void dragTo(QPoint from, QPoint to) const
    {
        movePointer(from);
        xdotool({"mousedown", "1"});
        movePointer(to);
    }
    void release() const { xdotool({"mouseup", "1"}); }

    /// Below all others. The background of the root wouldn't do: compositors draw their own.
    const Harness::PaintedWindow m_wallpaper{
        m_other.rect(), desktopColor, {"plain", "1", "unmanaged", "1"}};
    std::unique_ptr<Platform::X11OverlayKeyboard> m_keyboard;
    QFuture<Target> m_answer;
};

/// The same in each situation.
class SelectionInSituation : public SelectionFixture,
                             public testing::WithParamInterface<Situation> {
protected:
    /// @p point, or near it: not where an earlier case of this program has left the pointer, since
    /// Qt tells of no move that ends where it saw the last one.
    static QPoint fresh(QPoint point)
    {
        return point + QPoint(9 * static_cast<int>(GetParam()), 0);
    }

    void SetUp() override
    {
        SelectionFixture::SetUp();
        if (GetParam() != Situation::nothing)
            startWindowManager();
        if (GetParam() == Situation::openboxAndPicom)
            startCompositor();
    }
};

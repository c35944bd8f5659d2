// The road from the shortcut to a finished picture in another program, by keys and pointer alone.

#include "ProcessFixture.h"

#include <QColorSpace>
#include <QTest>

using Harness::waitFor;

namespace {

enum class Around { nothing, openbox, openboxAndPicom };

class Workbench : public LumenoteProcess, public testing::WithParamInterface<Around> {
protected:
    void SetUp() override
    {
        LumenoteProcess::SetUp();
        if (GetParam() != Around::nothing)
            m_windowManager = desktop().startWindowManager();
        if (GetParam() == Around::openboxAndPicom)
            m_compositor = desktop().startCompositor();
        // Window managers put what they manage below all that they don't.
        m_other->lower(m_page->id());
        m_other->lower(m_wallpaper->id());
        m_other->takeFocus();
    }

    Harness::Desktop desktop() const { return Harness::Desktop(m_server->environment()); }

    void press(const QByteArray& key) const { xdotool({"key", "--clearmodifiers", key}); }
    void press(const QByteArray& key, int times) const
    {
        for (int i = 0; i < times; ++i)
            press(key);
    }
    void click(QPoint point) const
    {
        xdotool({"mousemove", QByteArray::number(point.x()), QByteArray::number(point.y()), "click",
            "1"});
    }
    void drag(QPoint from, QPoint to) const
    {
        const auto place = [](QPoint point) {
            return QByteArrayList{
                "mousemove", QByteArray::number(point.x()), QByteArray::number(point.y())};
        };
        xdotool(place(from) + QByteArrayList{"mousedown", "1"});
        xdotool(place((from + to) / 2) + place(to) + QByteArrayList{"mouseup", "1"});
    }

    /// Of the workbench that is open; zero without one.
    std::uint32_t window() const
    {
        return desktop()
            .output("xdotool", {"search", "--onlyvisible", "--name", "^Lumenote$"})
            .trimmed()
            .toUInt();
    }

    QImage copiedImage() const
    {
        auto image = QImage::fromData(
            desktop().output("xclip", {"-selection", "clipboard", "-t", "image/png", "-o"}));
        image.setColorSpace({});
        return image.convertToFormat(QImage::Format_RGB32);
    }
    QByteArray copiedText() const
    {
        return desktop().output("xclip", {"-selection", "clipboard", "-o"});
    }

    /// While one shows, there is no bar, and Return and the key to the text are asleep.
    static void letMessagePass() { QTest::qWait(1500); }

    /// Where the card is and, in its middle, the picture.
    static constexpr QRect card{300, 148, 680, 380};
    static constexpr QPoint picture = QPoint(300, 148) + QPoint(40, 130);

private:
    Harness::Desktop::Program m_windowManager{nullptr, nullptr};
    Harness::Desktop::Program m_compositor{nullptr, nullptr};
};

std::string nameOf(const testing::TestParamInfo<Around>& row)
{
    constexpr std::array names{"nothing", "openbox", "openboxAndPicom"};
    return names.at(static_cast<std::size_t>(row.param));
}

INSTANTIATE_TEST_SUITE_P(, Workbench,
    testing::Values(Around::nothing, Around::openbox, Around::openboxAndPicom), nameOf);

TEST_P(Workbench, leadsFromTheShortcutToTheFinishedPicture)
{
    beginSelection();
    pickPage();
    ASSERT_TRUE(waitFor([this] { return window() != 0 && m_other->focus() == window(); }));
    const auto id = QByteArray::number(window());
    const auto geometry = desktop().output("xdotool", {"getwindowgeometry", id});
    EXPECT_TRUE(geometry.contains("Position: 264,112")) // The card's, less the shadow's margin.
        << geometry.data();
    const auto states = desktop().output("xprop", {"-id", id, "_NET_WM_STATE"});
    EXPECT_TRUE(states.contains("_ABOVE") && states.contains("_SKIP_TASKBAR")) << states.data();
    ASSERT_TRUE(waitFor([this] { return captures("Text").size() == 1; }));

    press("Return");
    EXPECT_TRUE(waitFor([this] { return copiedImage() == page(); }));
    press("ctrl+c");
    EXPECT_TRUE(waitFor([this] { return copiedText() == "Hello reader\nSecond line"; }));
    click(picture + QPoint(60, 40)); // The first line.
    EXPECT_TRUE(waitFor([this] { return copiedText() == "Hello reader"; }));

    // The tools by keyboard: past what lies on the card and the button that closes.
    letMessagePass();
    press("Tab", 3);
    press("space");
    letMessagePass(); // And the tools come.
    press("Tab", 5);
    press("space");
    drag(picture + QPoint(10, 65), picture + QPoint(300, 110));
    press("ctrl+shift+c");
    EXPECT_TRUE(waitFor([this] { return copiedImage().pixel(100, 90) == 0xff000000; }));
    EXPECT_EQ(copiedImage().copy(0, 0, 600, 60), page().copy(0, 0, 600, 60));
    press("ctrl+z");
    press("ctrl+shift+c");
    EXPECT_TRUE(waitFor([this] { return copiedImage() == page(); }));

    letMessagePass();
    press("ctrl+t");
    click(card.topRight() + QPoint(-150, 27));
    xdotool({"type", "SECOND"});
    press("Return");
    EXPECT_TRUE(waitFor([this] { return copiedText() == "Second line"; }));

    press("Escape");
    EXPECT_TRUE(waitFor([this] { return window() == 0 && m_other->hasFocus(); }));
}

} // namespace

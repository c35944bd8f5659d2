#include "Harness/Waiting.h"
#include "Harness/XServer.h"
#include "Platform/X11/X11OverlayKeyboard.h"

#include <QCoreApplication>
#include <QProcess>
#include <QSignalSpy>

#include <xcb/xcb.h>

#include <cstdlib>
#include <gtest/gtest.h>
#include <memory>

namespace {

/// Another program that has the focus and counts the keys it gets.
class OtherProgram {
public:
    explicit OtherProgram(const QString& display)
        : m_xcb(xcb_connect(display.toLatin1().constData(), nullptr))
        , m_window(xcb_generate_id(m_xcb))
    {
        const auto* const screen = xcb_setup_roots_iterator(xcb_get_setup(m_xcb)).data;
        const quint32 events = XCB_EVENT_MASK_KEY_PRESS;
        xcb_create_window(m_xcb, XCB_COPY_FROM_PARENT, m_window, screen->root, 0, 0, 100, 100, 0,
            XCB_WINDOW_CLASS_INPUT_OUTPUT, screen->root_visual, XCB_CW_EVENT_MASK, &events);
        xcb_map_window(m_xcb, m_window);
        xcb_set_input_focus(m_xcb, XCB_INPUT_FOCUS_PARENT, m_window, XCB_CURRENT_TIME);
        waitForServer();
    }
    ~OtherProgram() { xcb_disconnect(m_xcb); }
    OtherProgram(const OtherProgram&) = delete;
    OtherProgram& operator=(const OtherProgram&) = delete;

    bool grabKeyboard()
    {
        const auto cookie = xcb_grab_keyboard(
            m_xcb, 1, m_window, XCB_CURRENT_TIME, XCB_GRAB_MODE_ASYNC, XCB_GRAB_MODE_ASYNC);
        const Owned<xcb_grab_keyboard_reply_t> reply(
            xcb_grab_keyboard_reply(m_xcb, cookie, nullptr));
        return reply && reply->status == XCB_GRAB_STATUS_SUCCESS;
    }

    bool canGrabKeyboard()
    {
        const bool canGrab = grabKeyboard();
        letGo();
        return canGrab;
    }

    void letGo()
    {
        xcb_ungrab_keyboard(m_xcb, XCB_CURRENT_TIME);
        waitForServer();
    }

    bool hasFocus()
    {
        const Owned<xcb_get_input_focus_reply_t> focus(
            xcb_get_input_focus_reply(m_xcb, xcb_get_input_focus(m_xcb), nullptr));
        return focus && focus->focus == m_window;
    }

    int windowsOfAll()
    {
        const auto root = xcb_setup_roots_iterator(xcb_get_setup(m_xcb)).data->root;
        const Owned<xcb_query_tree_reply_t> tree(
            xcb_query_tree_reply(m_xcb, xcb_query_tree(m_xcb, root), nullptr));
        return tree ? xcb_query_tree_children_length(tree.get()) : -1;
    }

    int keyPresses()
    {
        waitForServer();
        while (const Owned<xcb_generic_event_t> event{xcb_poll_for_event(m_xcb)})
            m_keyPresses += (event->response_type & 0x7f) == XCB_KEY_PRESS ? 1 : 0;
        return m_keyPresses;
    }

private:
    struct Free {
        void operator()(void* memory) const { std::free(memory); }
    };
    template <typename T>
    using Owned = std::unique_ptr<T, Free>;

    void waitForServer() { hasFocus(); }

    xcb_connection_t* const m_xcb;
    const xcb_window_t m_window;
    int m_keyPresses = 0;
};

class OverlayKeyboard : public testing::Test {
protected:
    void SetUp() override
    {
        m_server = std::make_unique<Harness::XServer>();
        ASSERT_TRUE(m_server->isRunning()) << qPrintable(m_server->failure());
        qputenv("DISPLAY", m_server->display().toLatin1());
        m_keyboard = std::make_unique<Platform::X11OverlayKeyboard>();
        m_escapes = std::make_unique<QSignalSpy>(
            m_keyboard.get(), &Platform::OverlayKeyboard::escapePressed);
        m_spaces = std::make_unique<QSignalSpy>(
            m_keyboard.get(), &Platform::OverlayKeyboard::spacePressed);
        m_other = std::make_unique<OtherProgram>(m_server->display());
    }

    void TearDown() override { qunsetenv("DISPLAY"); }

    void xdotool(const QStringList& arguments) const
    {
        QProcess process;
        process.setProcessEnvironment(m_server->environment());
        process.start(QStringLiteral("xdotool"), arguments);
        ASSERT_TRUE(Harness::waitFor([&] { return process.state() == QProcess::NotRunning; }));
        ASSERT_EQ(process.exitCode(), 0) << process.readAllStandardError().constData();
    }

    void press(const QString& key) const { xdotool({QStringLiteral("key"), key}); }

    bool waitForKeys(qsizetype escapeCount, qsizetype spaceCount)
    {
        return Harness::waitFor(
            [&] { return m_escapes->size() == escapeCount && m_spaces->size() == spaceCount; });
    }

    std::unique_ptr<Harness::XServer> m_server;
    std::unique_ptr<Platform::X11OverlayKeyboard> m_keyboard;
    std::unique_ptr<QSignalSpy> m_escapes;
    std::unique_ptr<QSignalSpy> m_spaces;
    std::unique_ptr<OtherProgram> m_other;
};

TEST_F(OverlayKeyboard, keysAreTakenFromTheProgramWithTheFocusWhichStaysThere)
{
    m_keyboard->take();
    press(QStringLiteral("x"));
    press(QStringLiteral("space"));
    press(QStringLiteral("Escape"));
    EXPECT_TRUE(waitForKeys(1, 1));
    EXPECT_TRUE(m_other->hasFocus());
    EXPECT_EQ(m_other->keyPresses(), 0);

    m_keyboard->giveBack();
    press(QStringLiteral("space"));
    EXPECT_TRUE(m_other->hasFocus());
    EXPECT_EQ(m_other->keyPresses(), 1);
    EXPECT_EQ(m_spaces->size(), 1);
}

TEST_F(OverlayKeyboard, keysAreToldWhileAnotherProgramHasGrabbedThem)
{
    ASSERT_TRUE(m_other->grabKeyboard());
    m_keyboard->take();
    press(QStringLiteral("space"));
    press(QStringLiteral("Escape"));
    EXPECT_TRUE(waitForKeys(1, 1));
    EXPECT_EQ(m_other->keyPresses(), 2);

    // Once it has let go, the next click or key brings the keyboard to the overlays alone.
    m_other->letGo();
    xdotool({QStringLiteral("click"), QStringLiteral("1")});
    ASSERT_TRUE(Harness::waitFor([this] { return !m_other->canGrabKeyboard(); }));
    press(QStringLiteral("Escape"));
    EXPECT_TRUE(waitForKeys(2, 1));
    EXPECT_EQ(m_other->keyPresses(), 2);
}

TEST_F(OverlayKeyboard, heldKeysAreToldOnce)
{
    ASSERT_TRUE(m_other->grabKeyboard());
    m_keyboard->take();
    xdotool({QStringLiteral("keydown"), QStringLiteral("space")});
    ASSERT_TRUE(Harness::waitFor([this] { return m_other->keyPresses() > 2; }));
    xdotool({QStringLiteral("keyup"), QStringLiteral("space")});
    press(QStringLiteral("Escape"));
    EXPECT_TRUE(waitForKeys(1, 1));
}

TEST_F(OverlayKeyboard, keysAreFoundWhereTheLayoutHasThem)
{
    QProcess setxkbmap;
    setxkbmap.setProcessEnvironment(m_server->environment());
    setxkbmap.start(QStringLiteral("setxkbmap"),
        {QStringLiteral("us,ru"), QStringLiteral("-option"), QStringLiteral("caps:swapescape")});
    ASSERT_TRUE(setxkbmap.waitForFinished(Harness::patience));
    m_keyboard->take();
    constexpr auto capsLockKey = "66";
    press(QString::fromLatin1(capsLockKey));
    EXPECT_TRUE(waitForKeys(1, 0));
    constexpr auto escapeKey = "9";
    press(QString::fromLatin1(escapeKey));
    press(QStringLiteral("space"));
    EXPECT_TRUE(waitForKeys(1, 1));
}

TEST_F(OverlayKeyboard, leavesNothingBehindAfterManyTurns)
{
    const int windows = m_other->windowsOfAll();
    for (int turn = 0; turn < 1000; ++turn) {
        m_keyboard->take();
        m_keyboard->giveBack();
    }
    press(QStringLiteral("x"));
    EXPECT_EQ(m_other->keyPresses(), 1);
    EXPECT_EQ(m_other->windowsOfAll(), windows);
}

TEST_F(OverlayKeyboard, aServerThatHasGoneIsNoHarm)
{
    m_keyboard->take();
    m_other.reset();
    m_server.reset();
    m_keyboard->giveBack();
    m_keyboard->take();
    QCoreApplication::processEvents();
    EXPECT_TRUE(m_escapes->isEmpty());
}

} // namespace

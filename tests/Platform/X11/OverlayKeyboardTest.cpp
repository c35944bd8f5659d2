#include "Harness/Waiting.h"
#include "Harness/XClient.h"
#include "Platform/X11/X11OverlayKeyboard.h"

#include <QCoreApplication>

#include <gtest/gtest.h>
#include <memory>
#include <optional>

namespace {

// Keys by their evdev codes.
constexpr quint8 escape = 1;
constexpr quint8 x = 45;
constexpr quint8 space = 57;
constexpr quint8 capsLock = 58;

/// The overlays' keyboard, and another program that has the focus.
class OverlayKeyboard : public testing::Test {
protected:
    void SetUp() override
    {
        ASSERT_TRUE(m_server->isRunning()) << qPrintable(m_server->failure());
        qputenv("DISPLAY", m_server->display().toLatin1());
        m_keyboard = std::make_unique<Platform::X11OverlayKeyboard>();
        QObject::connect(m_keyboard.get(), &Platform::OverlayKeyboard::escapePressed,
            m_keyboard.get(), [this] { ++m_escapes; });
        QObject::connect(m_keyboard.get(), &Platform::OverlayKeyboard::spacePressed,
            m_keyboard.get(), [this] { ++m_spaces; });
        m_other.emplace();
        m_other->takeFocus();
    }

    void TearDown() override { qunsetenv("DISPLAY"); }

    // Back once the server has done so: it may well serve the other program first. The keyboard
    // that is taken has a window.
    void take()
    {
        const int before = m_other->windowCount();
        m_keyboard->take();
        ASSERT_TRUE(Harness::waitFor([&] { return m_other->windowCount() > before; }));
    }
    void giveBack()
    {
        const int before = m_other->windowCount();
        m_keyboard->giveBack();
        ASSERT_TRUE(Harness::waitFor([&] { return m_other->windowCount() < before; }));
    }

    bool waitForKeys(int escapes, int spaces) const
    {
        return Harness::waitFor([&] { return m_escapes == escapes && m_spaces == spaces; });
    }

    std::unique_ptr<Harness::XServer> m_server = std::make_unique<Harness::XServer>();
    std::unique_ptr<Platform::X11OverlayKeyboard> m_keyboard;
    std::optional<Harness::XClient> m_other;
    int m_escapes = 0;
    int m_spaces = 0;
};

TEST_F(OverlayKeyboard, keysAreTakenFromTheProgramWithTheFocusWhichStaysThere)
{
    take();
    for (const auto key : {x, space, escape})
        m_other->type({key});
    EXPECT_TRUE(waitForKeys(1, 1));
    EXPECT_TRUE(m_other->hasFocus());
    EXPECT_EQ(m_other->takePresses(), 0);

    giveBack();
    m_other->type({space});
    EXPECT_TRUE(m_other->hasFocus());
    EXPECT_EQ(m_other->takePresses(), 1);
    EXPECT_EQ(m_spaces, 1);
}

TEST_F(OverlayKeyboard, keysAreToldWhileAnotherProgramHasGrabbedThem)
{
    ASSERT_TRUE(m_other->grabKeyboard());
    take();
    m_other->type({space});
    m_other->type({escape});
    EXPECT_TRUE(waitForKeys(1, 1));
    EXPECT_EQ(m_other->takePresses(), 2);

    // Once it has let go, the next click or key brings the keyboard to the overlays alone.
    m_other->ungrabKeyboard();
    EXPECT_TRUE(Harness::waitFor([this] {
        const bool isFree = m_other->canGrabKeyboard();
        if (isFree)
            m_other->click();
        return !isFree;
    }));
    m_other->type({escape});
    EXPECT_TRUE(waitForKeys(2, 1));
    EXPECT_EQ(m_other->takePresses(), 0);
}

TEST_F(OverlayKeyboard, heldKeysAreToldOnce)
{
    m_other->repeatFast();
    ASSERT_TRUE(m_other->grabKeyboard());
    take();
    m_other->press(space);
    m_other->letPass(200);
    ASSERT_GT(m_other->takePresses(), 2) << "keys repeat in this server";
    m_other->release(space);
    m_other->type({escape});
    EXPECT_TRUE(waitForKeys(1, 1));
}

TEST_F(OverlayKeyboard, keysAreFoundWhereTheLayoutHasThem)
{
    ASSERT_TRUE(Harness::setKeyboard(*m_server, {"us,ru", "-option", "caps:swapescape"}));
    take();
    m_other->type({capsLock});
    EXPECT_TRUE(waitForKeys(1, 0));
    m_other->type({escape});
    m_other->type({space});
    EXPECT_TRUE(waitForKeys(1, 1));
}

TEST_F(OverlayKeyboard, aServerThatHasGoneIsNoHarm)
{
    m_keyboard->take();
    m_other.reset();
    m_server.reset();
    m_keyboard->giveBack();
    m_keyboard->take();
    QCoreApplication::processEvents();
    EXPECT_EQ(m_escapes, 0);
}

} // namespace

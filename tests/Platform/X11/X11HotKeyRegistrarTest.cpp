#include "Platform/X11/X11HotKeyRegistrar.h"

#include "Harness/Waiting.h"
#include "Harness/XClient.h"
#include "Platform/StandardStreams.h"
#include "Platform/VirtualKeys.h"

#include <algorithm>
#include <array>
#include <gtest/gtest.h>
#include <memory>
#include <optional>

namespace {

// Keys by their evdev codes.
constexpr quint8 ctrl = 29;
constexpr quint8 shift = 42;
constexpr quint8 rightCtrl = 97;
constexpr quint8 alt = 56;
constexpr quint8 super = 125;
constexpr quint8 six = 7;
constexpr quint8 seven = 8;
constexpr quint8 numLock = 69;
constexpr quint8 scrollLock = 70;

constexpr quint32 virtualSix = 22;
constexpr quint32 virtualSeven = 26;
constexpr quint32 shiftCommand = 0x300;

// Modifiers of the X server.
constexpr quint16 shiftMask = 1;
constexpr quint16 lockMask = 2;
constexpr quint16 controlMask = 4;
constexpr quint16 numMask = 16;
constexpr quint16 thirdMask = 32;
constexpr int thirdModifier = 5;
constexpr int superModifier = 6;

constexpr std::array<quint16, 4> lockStates{0, lockMask, numMask, lockMask | numMask};

constexpr int badAccess = 10;

/// The hot key, a user and another program on a server of their own.
class X11HotKeyRegistrarTest : public testing::Test {
protected:
    void SetUp() override
    {
        Platform::guardStandardStreams(); // As the program does; writing to a dead server is no
                                          // end.
        ASSERT_TRUE(m_server->isRunning()) << qPrintable(m_server->failure());
        m_keyboard.emplace(m_server->display());
        m_registrar.emplace(m_server->display());
        ASSERT_TRUE(install());
    }

    bool install()
    {
        return m_registrar
            ->installHandler({.onPressed = [this] { ++m_presses; },
                .onLost = [this](const Platform::Error& error) { m_lost = error; }})
            .has_value();
    }

    int registered(quint32 modifiers = shiftCommand, quint32 key = virtualSix)
    {
        const auto result = m_registrar->registerHotKey(key, modifiers);
        return result ? 0 : result.error().code;
    }

    /// Types and waits until the hot key was pressed.
    bool arrives(std::initializer_list<quint8> keys)
    {
        const int before = m_presses;
        m_keyboard->type(keys);
        return Harness::waitFor([&] { return m_presses > before; });
    }

    /// Whether another program can have the key with Shift and Ctrl in every state of two lock
    /// keys; if so, it has it.
    bool othersCanGrab(quint8 key)
    {
        return std::ranges::all_of(lockStates,
            [&](quint16 locks) { return m_keyboard->grab(key, shiftMask | controlMask | locks); });
    }

    void othersUngrab(quint8 key)
    {
        for (const auto locks : lockStates)
            m_keyboard->ungrab(key, shiftMask | controlMask | locks);
    }

    std::unique_ptr<Harness::XServer> m_server = std::make_unique<Harness::XServer>();
    std::optional<Harness::XClient> m_keyboard;
    std::optional<Platform::X11HotKeyRegistrar> m_registrar;
    int m_presses = 0;
    std::optional<Platform::Error> m_lost;
};

TEST_F(X11HotKeyRegistrarTest, onlyItsOwnModifiersAndKeyPressIt)
{
    struct Row {
        const char* name;
        quint32 modifiers;
        std::initializer_list<quint8> keys;
    };
    const std::array rows{
        Row{"shiftCommand", 0x300, {ctrl, shift, six}},
        Row{"command", 0x100, {ctrl, six}},
        Row{"option", 0x800, {alt, six}},
        Row{"control", 0x1000, {super, six}},
        Row{"all", 0x1b00, {ctrl, shift, alt, super, six}},
        Row{"unknownBitsAreDropped", 0x80000100, {rightCtrl, six}},
    };
    for (const auto& row : rows) {
        ASSERT_EQ(registered(row.modifiers), 0) << row.name;
        m_presses = 0;
        for (const auto& other : rows)
            if ((other.modifiers ^ row.modifiers) % 0x10000 != 0)
                m_keyboard->type(other.keys);
        m_keyboard->type({six});
        m_keyboard->type({ctrl, shift, seven});
        EXPECT_TRUE(arrives(row.keys)) << row.name; // Behind all the others.
        EXPECT_EQ(m_presses, 1) << row.name;
    }
}

TEST_F(X11HotKeyRegistrarTest, theStateOfTheLockKeysDoesNotMatter)
{
    m_keyboard->setModifierKey(thirdModifier, scrollLock);
    ASSERT_EQ(registered(), 0);
    for (const quint16 scrollState : {quint16(0), thirdMask})
        for (const quint16 others : lockStates) {
            const quint16 locks = others | scrollState;
            m_keyboard->lockModifiers(static_cast<quint8>(locks));
            ASSERT_EQ(m_keyboard->modifiers(), locks);
            EXPECT_TRUE(arrives({ctrl, shift, six})) << locks;
        }
    EXPECT_EQ(m_presses, 8);
}

TEST_F(X11HotKeyRegistrarTest, theLayoutDoesNotMatter)
{
    ASSERT_TRUE(Harness::setKeyboard(*m_server, {"us,de,ru"}));
    ASSERT_EQ(registered(), 0);
    for (const quint8 layout : {0, 1, 2}) {
        m_keyboard->setLayout(layout);
        EXPECT_TRUE(arrives({ctrl, shift, six})) << int(layout);
    }
    ASSERT_TRUE(Harness::setKeyboard(*m_server, {"fr"}));
    EXPECT_TRUE(arrives({ctrl, shift, six}));
    EXPECT_FALSE(m_lost);
}

TEST_F(X11HotKeyRegistrarTest, lockKeysThatMoveAreFollowed)
{
    ASSERT_EQ(registered(), 0);
    m_keyboard->setModifierKey(thirdModifier, numLock);
    m_keyboard->lockModifiers(thirdMask);
    EXPECT_TRUE(Harness::waitFor([&] {
        m_keyboard->type({ctrl, shift, six});
        return m_presses > 0;
    }));
    EXPECT_FALSE(m_lost);
}

TEST_F(X11HotKeyRegistrarTest, lockKeysThatMoveWhereAnotherHasTheKeyLoseIt)
{
    ASSERT_EQ(registered(), 0);
    ASSERT_TRUE(m_keyboard->grab(six, shiftMask | controlMask | thirdMask));
    m_keyboard->setModifierKey(thirdModifier, numLock);
    ASSERT_TRUE(Harness::waitFor([&] { return m_lost.has_value(); }));
    EXPECT_EQ(m_lost->code, badAccess);
    EXPECT_TRUE(othersCanGrab(six));
}

TEST_F(X11HotKeyRegistrarTest, whatAnotherHasIsRefusedAndNothingStaysGrabbed)
{
    ASSERT_EQ(registered(shiftCommand, virtualSeven), 0);
    // In one state of the lock keys only: the other grabs have succeeded by then.
    ASSERT_TRUE(m_keyboard->grab(six, shiftMask | controlMask | numMask));
    EXPECT_EQ(registered(), badAccess);
    EXPECT_TRUE(othersCanGrab(six));
    EXPECT_TRUE(othersCanGrab(seven)) << "the registration to be replaced";
    othersUngrab(six);
    EXPECT_EQ(registered(), 0);
    EXPECT_TRUE(arrives({ctrl, shift, six}));
}

TEST_F(X11HotKeyRegistrarTest, whatIsReleasedOrReplacedIsFree)
{
    ASSERT_EQ(registered(), 0);
    EXPECT_FALSE(othersCanGrab(six));
    m_registrar->unregisterHotKey();
    EXPECT_TRUE(othersCanGrab(six));
    m_keyboard->type({ctrl, shift, six});
    EXPECT_EQ(m_keyboard->takePresses(), 1);
    EXPECT_EQ(registered(), badAccess);
    othersUngrab(six);

    ASSERT_EQ(registered(), 0);
    ASSERT_EQ(registered(), 0) << "by itself";
    ASSERT_EQ(registered(shiftCommand, virtualSeven), 0);
    EXPECT_TRUE(othersCanGrab(six));
    EXPECT_TRUE(arrives({ctrl, shift, seven}));

    m_registrar->removeHandler();
    EXPECT_TRUE(Harness::waitFor([&] { return othersCanGrab(seven); }));
    EXPECT_EQ(registered(), Platform::HotKeyStatus::notConnected);
    EXPECT_EQ(m_presses, 1);
}

TEST_F(X11HotKeyRegistrarTest, aKeyHeldDownIsOnePress)
{
    m_keyboard->repeatFast();
    ASSERT_EQ(registered(), 0);
    constexpr quint32 whatManyRepeatsTake = 200; // Milliseconds.
    const auto hold = [&](quint8 key) {
        for (const quint8 down : {ctrl, shift, key})
            m_keyboard->press(down);
        m_keyboard->letPass(whatManyRepeatsTake);
        for (const quint8 up : {key, shift, ctrl})
            m_keyboard->release(up);
        m_keyboard->letPass(2); // The next press is none of a key that repeats.
    };
    ASSERT_TRUE(m_keyboard->grab(seven, shiftMask | controlMask));
    hold(seven);
    ASSERT_GT(m_keyboard->takePresses(), 5) << "keys repeat in this server";
    hold(six);
    hold(six);
    EXPECT_TRUE(Harness::waitFor([&] { return m_presses >= 2; }));
    m_keyboard->type({ctrl, shift, six});
    EXPECT_TRUE(Harness::waitFor([&] { return m_presses >= 3; }));
    EXPECT_EQ(m_presses, 3);
}

TEST_F(X11HotKeyRegistrarTest, unregisteringFreesTheKeyboardOfAKeyThatIsDown)
{
    ASSERT_EQ(registered(), 0);
    for (const quint8 down : {ctrl, shift, six})
        m_keyboard->press(down);
    ASSERT_TRUE(Harness::waitFor([&] { return m_presses == 1; }));
    EXPECT_FALSE(m_keyboard->grabKeyboard());
    m_registrar->unregisterHotKey();
    EXPECT_TRUE(m_keyboard->grabKeyboard());
}

TEST_F(X11HotKeyRegistrarTest, keysThatAreNotThereAreRefused)
{
    EXPECT_EQ(registered(shiftCommand, 127), Platform::HotKeyStatus::noSuchKey);
    m_keyboard->setModifierKey(superModifier, seven);
    EXPECT_EQ(registered(0x1000), Platform::HotKeyStatus::noSuchKey);
    EXPECT_EQ(registered(), 0);
}

TEST_F(X11HotKeyRegistrarTest, aServerThatHangsIsNotWaitedForAndKeepsNothing)
{
    m_keyboard->stopServer();
    EXPECT_EQ(registered(), Platform::HotKeyStatus::noAnswer);
    m_keyboard->letServerGoOn();
    EXPECT_EQ(registered(shiftCommand, virtualSeven), 0);
    EXPECT_TRUE(othersCanGrab(six));
    EXPECT_TRUE(arrives({ctrl, shift, seven}));
    EXPECT_FALSE(m_lost);
}

TEST_F(X11HotKeyRegistrarTest, aServerThatDiesIsToldAndSurvived)
{
    ASSERT_EQ(registered(), 0);
    m_server->die();
    EXPECT_EQ(registered(), Platform::HotKeyStatus::notConnected);
    EXPECT_TRUE(Harness::waitFor([&] { return m_lost.has_value(); }));
    EXPECT_EQ(m_lost->code, Platform::HotKeyStatus::notConnected);
    EXPECT_FALSE(install());
    EXPECT_EQ(registered(), Platform::HotKeyStatus::notConnected);

    // A new server, as after a new login, does for the same program.
    m_server = std::make_unique<Harness::XServer>();
    m_keyboard.emplace(m_server->display());
    m_registrar.emplace(m_server->display());
    EXPECT_TRUE(install());
    EXPECT_EQ(registered(), 0);
    EXPECT_TRUE(arrives({ctrl, shift, six}));
}

} // namespace

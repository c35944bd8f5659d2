// The events of Qt's own X11 back end, which the shortcut recorder reads.

#include "Harness/Desktop.h"
#include "Harness/Waiting.h"
#include "Harness/XClient.h"

#include <gtest/gtest.h>

namespace {

TEST(KeyEventsTest, whatIsTypedIsReadAsTheShortcutThatIsGrabbed)
{
    constexpr quint8 ctrl = 29;
    constexpr quint8 shift = 42;
    constexpr quint8 alt = 56;
    constexpr quint8 super = 125;
    const Harness::XServer server;
    ASSERT_TRUE(server.isRunning()) << qPrintable(server.failure());
    ASSERT_TRUE(Harness::setKeyboard(server, {"us,ru"}));
    Harness::XClient keyboard(server.display());
    const auto reader = Harness::Desktop(server.environment()).start(LUMENOTE_KEY_READER, {});
    ASSERT_TRUE(Harness::waitFor([&] { return reader->canReadLine(); }));
    ASSERT_EQ(reader->readLine(), "ready\n");
    const auto check = [&](const char* name, quint8 layout, quint8 locks,
                           std::initializer_list<quint8> keys, const QByteArray& read) {
        SCOPED_TRACE(name);
        keyboard.setLayout(layout);
        keyboard.lockModifiers(locks);
        keyboard.type(keys);
        QByteArray last;
        for (size_t key = 0; key < keys.size(); ++key) { // A modifier says "none".
            ASSERT_TRUE(Harness::waitFor([&] { return reader->canReadLine(); }));
            last = reader->readLine();
        }
        EXPECT_EQ(last, read);
    };
    check("default", 0, 0, {ctrl, shift, 7}, "22 300\n");
    check("super", 0, 0, {super, 30}, "0 1000\n");
    check("all", 0, 0, {ctrl, shift, alt, super, 57}, "49 1b00\n");
    check("lockKeys", 0, 2 | 16, {ctrl, shift, 7}, "22 300\n");
    check("anotherLayout", 1, 0, {alt, 30}, "0 800\n");
    check("keypad", 0, 16, {ctrl, 79}, "83 100\n");
    check("printScreen", 0, 0, {ctrl, 99}, "105 100\n");
    check("keyWithoutCode", 0, 0, {164}, "none\n");
}

} // namespace

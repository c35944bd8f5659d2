// The events of Qt's own X11 back end, which the shortcut recorder reads.

#include "Harness/Waiting.h"
#include "Harness/XServer.h"
#include "Platform/X11/TestKeyboard.h"

#include <QProcess>

#include <array>
#include <gtest/gtest.h>

namespace {

TEST(KeyEventsTest, whatIsTypedIsReadAsTheShortcutThatIsGrabbed)
{
    struct Row {
        const char* name;
        quint8 layout;
        quint8 locks;
        std::initializer_list<quint8> keys;
        QByteArray read;
    };
    constexpr quint8 ctrl = 29;
    constexpr quint8 shift = 42;
    constexpr quint8 alt = 56;
    constexpr quint8 super = 125;
    const std::array rows{
        Row{"default", 0, 0, {ctrl, shift, 7}, "22 300\n"},
        Row{"super", 0, 0, {super, 30}, "0 1000\n"},
        Row{"all", 0, 0, {ctrl, shift, alt, super, 57}, "49 1b00\n"},
        Row{"lockKeys", 0, 2 | 16, {ctrl, shift, 7}, "22 300\n"},
        Row{"anotherLayout", 1, 0, {alt, 30}, "0 800\n"},
        Row{"keypad", 0, 16, {ctrl, 79}, "83 100\n"},
        Row{"printScreen", 0, 0, {ctrl, 99}, "105 100\n"},
        Row{"keyWithoutCode", 0, 0, {164}, "none\n"},
    };
    const Harness::XServer server;
    ASSERT_TRUE(server.isRunning()) << qPrintable(server.failure());
    ASSERT_TRUE(Harness::setKeyboard(server, {u"us,ru"_qs}));
    Harness::TestKeyboard keyboard(server.display());
    QProcess reader;
    auto environment = server.environment();
    environment.insert(QStringLiteral("QT_QPA_PLATFORM"), QStringLiteral("xcb"));
    reader.setProcessEnvironment(environment);
    reader.start(QStringLiteral(LUMENOTE_KEY_READER), QStringList());
    ASSERT_TRUE(Harness::waitFor([&] { return reader.canReadLine(); }));
    ASSERT_EQ(reader.readLine(), "ready\n");
    for (const auto& row : rows) {
        keyboard.setLayout(row.layout);
        keyboard.lockModifiers(row.locks);
        keyboard.type(row.keys);
        QByteArray last;
        for (size_t key = 0; key < row.keys.size(); ++key) { // A modifier says "none".
            ASSERT_TRUE(Harness::waitFor([&] { return reader.canReadLine(); })) << row.name;
            last = reader.readLine();
        }
        EXPECT_EQ(last, row.read) << row.name;
    }
    reader.kill();
    reader.waitForFinished();
}

} // namespace

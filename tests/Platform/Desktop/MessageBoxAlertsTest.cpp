#include "Harness/Desktop.h"
#include "Harness/Waiting.h"
#include "Harness/XServer.h"

#include <gtest/gtest.h>

namespace {

TEST(MessageBoxAlerts, keysTakeAButton)
{
    const Harness::XServer server;
    ASSERT_TRUE(server.isRunning()) << qPrintable(server.failure());
    const Harness::Desktop desktop(server.environment());
    const auto check = [&](const char* name, const QByteArrayList& buttons,
                           const QByteArrayList& keys, const QByteArray& answer) {
        SCOPED_TRACE(name);
        const auto presenter =
            desktop.start(LUMENOTE_ALERT_PRESENTER, QByteArrayList{"Title", "Text"} + buttons);
        ASSERT_TRUE(Harness::waitFor([&] {
            return desktop.run("xdotool", {"getwindowfocus", "getwindowpid"});
        }));
        ASSERT_TRUE(desktop.run("xdotool", QByteArrayList{"key"} + keys));
        EXPECT_TRUE(Harness::waitFor([&] { return presenter->state() == QProcess::NotRunning; }));
        EXPECT_EQ(presenter->readAllStandardOutput(), answer);
    };
    const QByteArrayList two{"Open Settings", "Cancel"};
    check("returnTakesTheFirst", two, {"Return"}, "later 0\n");
    check("escapeTakesTheLast", two, {"Escape"}, "later 1\n");
    check("theOnlyOneByEscape", {"OK"}, {"Escape"}, "later 0\n");
    check("theSecondByTab", two, {"Tab", "space"}, "later 1\n");
}

} // namespace

#include "Platform/Desktop/MessageBoxAlerts.h"

#include "Harness/Desktop.h"
#include "Harness/Waiting.h"
#include "Harness/XServer.h"

#include <QApplication>
#include <QMessageBox>
#include <QPushButton>

#include <gtest/gtest.h>
#include <optional>

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

TEST(MessageBoxAlerts, allIsSaidInTheDesktopsWords)
{
    Platform::MessageBoxAlerts alerts;
    std::optional<int> answer;
    alerts.present({.title = u"⌘C"_qs, .text = u"(⌥⌘V)"_qs, .buttons = {u"⌘A"_qs, u"⌘B"_qs}},
        [&answer](int button) { answer = button; });
    QMessageBox* box = nullptr;
    for (auto* const widget : QApplication::topLevelWidgets())
        if (widget->objectName() == u"alert"_qs)
            box = qobject_cast<QMessageBox*>(widget);
    ASSERT_NE(box, nullptr);
    EXPECT_EQ(box->text(), u"Ctrl+C"_qs);
    EXPECT_EQ(box->informativeText(), u"(Ctrl+Alt+V)"_qs);
    auto* const button = qobject_cast<QPushButton*>(box->escapeButton());
    ASSERT_NE(button, nullptr);
    EXPECT_EQ(button->text(), u"Ctrl+B"_qs);
    button->click();
    EXPECT_EQ(answer, 1);
}

} // namespace

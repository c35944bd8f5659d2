#include "Harness/Waiting.h"
#include "Harness/XServer.h"

#include <QProcess>

#include <array>
#include <gtest/gtest.h>

namespace {

/// A program with an alert, and a user, on a display of their own.
class MessageBoxAlerts : public testing::Test {
protected:
    void SetUp() override
    {
        ASSERT_TRUE(m_server.isRunning()) << qPrintable(m_server.failure());
        auto environment = m_server.environment();
        environment.insert(QStringLiteral("QT_QPA_PLATFORM"), QStringLiteral("xcb"));
        m_presenter.setProcessEnvironment(environment);
    }

    void TearDown() override
    {
        m_presenter.kill();
        m_presenter.waitForFinished();
    }

    /// Runs xdotool and gives what it prints.
    QByteArray tool(const QStringList& arguments) const
    {
        QProcess xdotool;
        xdotool.setProcessEnvironment(m_server.environment());
        xdotool.start(QStringLiteral("xdotool"), arguments);
        if (!xdotool.waitForFinished(Harness::patience))
            xdotool.kill();
        return xdotool.readAllStandardOutput().trimmed();
    }

    bool show(const QStringList& buttons)
    {
        m_presenter.start(QStringLiteral(LUMENOTE_ALERT_PRESENTER),
            QStringList{u"Title"_qs, u"Text"_qs} + buttons);
        return Harness::waitFor([&] {
            return !tool({u"getwindowfocus"_qs, u"getwindowpid"_qs}).isEmpty();
        });
    }

    const Harness::XServer m_server;
    QProcess m_presenter;
};

TEST_F(MessageBoxAlerts, keysTakeAButton)
{
    struct Row {
        const char* name;
        QStringList buttons;
        QStringList gesture;
        QByteArray answer;
    };
    const QStringList two{u"Open Settings"_qs, u"Cancel"_qs};
    const std::array rows{
        Row{"returnTakesTheFirst", two, {u"key"_qs, u"Return"_qs}, "later 0\n"},
        Row{"escapeTakesTheLast", two, {u"key"_qs, u"Escape"_qs}, "later 1\n"},
        Row{"theOnlyOneByEscape", {u"OK"_qs}, {u"key"_qs, u"Escape"_qs}, "later 0\n"},
        Row{"theSecondByTab", two, {u"key"_qs, u"Tab"_qs, u"space"_qs}, "later 1\n"},
    };
    for (const auto& row : rows) {
        ASSERT_TRUE(show(row.buttons)) << row.name;
        tool(row.gesture);
        EXPECT_TRUE(Harness::waitFor([&] { return m_presenter.state() == QProcess::NotRunning; }))
            << row.name;
        EXPECT_EQ(m_presenter.readAllStandardOutput(), row.answer) << row.name;
    }
}

} // namespace

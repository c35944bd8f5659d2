#include "Capture/ScreenRecordingPermission.h"

#include "Fakes/FakeAlerts.h"
#include "Fakes/FakeDisplayServer.h"
#include "Fakes/FakeUserDefaults.h"

#include <array>
#include <gtest/gtest.h>

using namespace Lumenote;
using ScreenRecordingPermission::Outcome;
using ScreenRecordingPermission::PromptHistory;

namespace {

const QDateTime now({2026, 3, 1}, {12, 0}, Qt::UTC);

QVariant secondsAgo(double seconds)
{
    return now.addMSecs(-static_cast<qint64>(seconds * 1000));
}

TEST(ScreenRecordingPermissionTest, theRecordTellsWhenTheSystemWasAsked)
{
    struct Row {
        const char* name;
        QVariant stored;
        PromptHistory history;
    };
    const std::array rows{
        Row{"nothing", {}, PromptHistory::never},
        Row{"now", secondsAgo(0), PromptHistory::recent},
        Row{"justUnderTenMinutes", secondsAgo(599.999), PromptHistory::recent},
        Row{"tenMinutes", secondsAgo(600), PromptHistory::stale},
        Row{"clockWasSetBack", secondsAgo(-5000), PromptHistory::recent},
        Row{"inAnotherTimeZone", secondsAgo(599).toDateTime().toOffsetFromUtc(7200),
            PromptHistory::recent},
        Row{"oldForm", true, PromptHistory::stale},
        Row{"oldFormFalse", false, PromptHistory::never},
        Row{"number", 1, PromptHistory::never},
        Row{"text", u"2026-03-01"_qs, PromptHistory::never},
        Row{"invalidDate", QDateTime(), PromptHistory::never},
    };
    for (const auto& row : rows)
        EXPECT_EQ(ScreenRecordingPermission::promptHistory(row.stored, now), row.history)
            << row.name;
}

TEST(ScreenRecordingPermissionTest, theSystemIsAskedOnceInTenMinutes)
{
    struct Row {
        const char* name;
        bool isGranted;
        QVariant stored;
        Outcome outcome;
        int requests;
        QVariant record;
    };
    const std::array rows{
        Row{"granted", true, {}, Outcome::granted, 0, {}},
        Row{"grantedLater", true, secondsAgo(10), Outcome::granted, 0, secondsAgo(10)},
        Row{"first", false, {}, Outcome::promptShown, 1, now},
        Row{"again", false, secondsAgo(599), Outcome::denied, 0, secondsAgo(599)},
        Row{"afterTenMinutes", false, secondsAgo(600), Outcome::denied, 1, now},
        Row{"oldForm", false, true, Outcome::denied, 1, now},
        Row{"otherType", false, u"yes"_qs, Outcome::promptShown, 1, now},
    };
    for (const auto& row : rows) {
        Fakes::FakeDisplayServer server;
        server.isGranted = row.isGranted;
        Fakes::FakeUserDefaults defaults;
        if (row.stored.isValid())
            defaults.setValue(u"ScreenRecordingPrompted"_qs, row.stored);
        EXPECT_EQ(ScreenRecordingPermission::request(defaults, server, now), row.outcome)
            << row.name;
        EXPECT_EQ(server.recordingRequests, row.requests) << row.name;
        EXPECT_EQ(defaults.value(u"ScreenRecordingPrompted"_qs), row.record) << row.name;
    }
}

TEST(ScreenRecordingPermissionTest, theAlertLeadsToTheSettingsOrNowhere)
{
    Fakes::FakeAlerts alerts;
    int closed = 0;
    const auto onClosed = [&] { ++closed; };
    ScreenRecordingPermission::presentDeniedAlert(alerts, onClosed);
    ASSERT_EQ(alerts.shown.size(), 1);
    EXPECT_EQ(alerts.shown.last().title, u"Lumenote needs Screen Recording permission"_qs);
    EXPECT_EQ(alerts.shown.last().buttons, (QStringList{u"Open Settings"_qs, u"Cancel"_qs}));
    alerts.press(1);
    EXPECT_EQ(alerts.shown.size(), 1);
    EXPECT_EQ(closed, 1);

    ScreenRecordingPermission::presentDeniedAlert(alerts, onClosed);
    alerts.press(0);
    EXPECT_EQ(closed, 1) << "the settings are open";
    ASSERT_EQ(alerts.shown.size(), 3);
    EXPECT_EQ(alerts.shown.last().buttons, QStringList{u"OK"_qs});
    alerts.press(0);
    EXPECT_EQ(closed, 2);
}

} // namespace

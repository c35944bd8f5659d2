#include "Capture/ScreenRecordingPermission.h"

#include "Fakes/FakeAlerts.h"
#include "Fakes/FakeDisplayServer.h"
#include "Fakes/FakeUserDefaults.h"

#include <gtest/gtest.h>

using namespace Lumenote;
using ScreenRecordingPermission::Outcome;

namespace {

const QDateTime now({2026, 3, 1}, {12, 0}, Qt::UTC);

QVariant secondsAgo(double seconds)
{
    return now.addMSecs(-static_cast<qint64>(seconds * 1000));
}

TEST(ScreenRecordingPermissionTest, theSystemIsAskedOnceInTenMinutes)
{
    const auto check = [&](const char* name, const QVariant& stored, Outcome outcome, int requests,
                           bool isGranted = false) {
        SCOPED_TRACE(name);
        Fakes::FakeDisplayServer server;
        server.isGranted = isGranted;
        Fakes::FakeUserDefaults defaults;
        if (stored.isValid())
            defaults.setValue(u"ScreenRecordingPrompted"_qs, stored);
        EXPECT_EQ(ScreenRecordingPermission::request(defaults, server, now), outcome);
        EXPECT_EQ(server.recordingRequests, requests);
        EXPECT_EQ(
            defaults.value(u"ScreenRecordingPrompted"_qs), requests > 0 ? QVariant(now) : stored);
    };
    check("granted", {}, Outcome::granted, 0, true);
    check("grantedLater", secondsAgo(10), Outcome::granted, 0, true);
    check("first", {}, Outcome::promptShown, 1);
    check("justUnderTenMinutes", secondsAgo(599.999), Outcome::denied, 0);
    check("tenMinutes", secondsAgo(600), Outcome::denied, 1);
    check("clockWasSetBack", secondsAgo(-5000), Outcome::denied, 0);
    check("inAnotherTimeZone", secondsAgo(599).toDateTime().toOffsetFromUtc(7200), Outcome::denied,
        0);
    check("oldForm", true, Outcome::denied, 1);
    check("oldFormFalse", false, Outcome::promptShown, 1);
    check("number", 1, Outcome::promptShown, 1);
    check("text", u"2026-03-01"_qs, Outcome::promptShown, 1);
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

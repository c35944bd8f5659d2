#include "UI/History/HistoryCaption.h"

#include <QDateTime>
#include <QSize>

#include <gtest/gtest.h>

using namespace Lumenote;

namespace {

TEST(HistoryCaptionTest, ageIsToldInTheLargestWholeUnit)
{
    const QDateTime now({2026, 1, 16}, {17, 30}, Qt::UTC);
    const auto check = [&now](qint64 seconds, const QString& age) {
        EXPECT_EQ(HistoryCaption::age(now.addSecs(-seconds), now), age) << seconds;
    };
    constexpr qint64 hour = 3600;
    constexpr qint64 day = 24 * hour;
    check(-5 * day, u"just now"_qs);
    check(0, u"just now"_qs);
    check(59, u"just now"_qs);
    check(60, u"1 min. ago"_qs);
    check(hour - 1, u"59 min. ago"_qs);
    check(hour, u"1 hr. ago"_qs);
    check(day - 1, u"23 hr. ago"_qs);
    check(day, u"1 day ago"_qs);
    check(7 * day - 1, u"6 days ago"_qs);
    check(7 * day, u"1 wk. ago"_qs);
    check(30 * day, u"4 wk. ago"_qs);
    check(31 * day, u"1 mo. ago"_qs);
    check(365 * day, u"11 mo. ago"_qs);
    check(366 * day, u"1 yr. ago"_qs);
    check(800 * day, u"2 yr. ago"_qs);
    EXPECT_EQ(HistoryCaption::age(now.addSecs(-120).toOffsetFromUtc(7200), now), u"2 min. ago"_qs);
}

TEST(HistoryCaptionTest, aRowIsNamedByItsAge)
{
    EXPECT_EQ(HistoryCaption::dimensions({1920, 1080}), u"1920×1080"_qs);
    EXPECT_EQ(
        HistoryCaption::accessibleName(u"just now"_qs, true), u"Current capture, just now"_qs);
    EXPECT_EQ(HistoryCaption::accessibleName(u"just now"_qs, false), u"Capture from just now"_qs);
}

} // namespace

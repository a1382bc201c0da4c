#include "SessionBuilder.h"
#include "insights/Statistics.h"
#include "support/ScopedTimeZone.h"

#include <gtest/gtest.h>

namespace quill {
namespace {

using test::local;
using test::ScopedTimeZone;
using test::SessionBuilder;

class DayStatistics : public ::testing::Test {
protected:
    void SetUp() override {
        ASSERT_EQ(local(2026, 3, 5).offsetFromUtc(), 8 * 3600) << "run with TZ=Asia/Shanghai";
    }
    const QDateTime now = local(2026, 3, 5, 10, 0).toUTC(); // the store's clock reads UTC
};

TEST_F(DayStatistics, TodayIsTheLocalCalendarDay) {
    const StudySession firstInstant =
        SessionBuilder(local(2026, 3, 5, 0, 0, 0)).seconds(89).wanders(2);
    const StudySession lastInstant =
        SessionBuilder(local(2026, 3, 5, 23, 59, 59)).seconds(89).wanders(1);
    const StudySession yesterday =
        SessionBuilder(local(2026, 3, 4, 23, 59, 59)).minutes(60).wanders(4);
    const StudySession tomorrow = SessionBuilder(local(2026, 3, 6, 0, 0, 0)).minutes(60).wanders(8);
    // Local midnight is 16:00 UTC the day before: a UTC calendar would count these wrongly.
    ASSERT_EQ(firstInstant.startedAt.toUTC().date(), QDate(2026, 3, 4));
    const QList<StudySession> sessions{tomorrow, lastInstant, firstInstant, yesterday};
    EXPECT_EQ(Statistics::todaySessions(sessions, now),
              (QList<StudySession>{lastInstant, firstInstant}));
    EXPECT_EQ(Statistics::todayMinutes(sessions, now), 2); // 1 + 1, not 178 s rounded once
    EXPECT_EQ(Statistics::todayWanderCount(sessions, now), 3);
    // The same answers whatever zone the clock's instant is expressed in.
    EXPECT_EQ(Statistics::todayMinutes(sessions, now.toLocalTime()), 2);
    EXPECT_EQ(Statistics::todayMinutes(sessions, local(2026, 3, 6, 0, 0, 1)), 60);
}

struct StreakCase {
    const char* label;
    std::vector<int> dayOffsets; ///< session days relative to today
    qint64 streak;
};

class Streak : public ::testing::TestWithParam<StreakCase> {};

TEST_P(Streak, CountsConsecutiveDaysEndingTodayOrYesterday) {
    const QDateTime now = local(2026, 3, 1, 8, 0); // the day after February's end
    QList<StudySession> sessions;
    int hour = 0;
    for (int offset : GetParam().dayOffsets) {
        // Alternate between the first and last instant of each day.
        const QDate day = now.date().addDays(offset);
        sessions << SessionBuilder(hour++ % 2 ? QDateTime(day, QTime(23, 59, 59), Qt::LocalTime)
                                              : QDateTime(day, QTime(0, 0), Qt::LocalTime));
    }
    EXPECT_EQ(Statistics::streakDays(sessions, now), GetParam().streak);
}

INSTANTIATE_TEST_SUITE_P(
    Days, Streak,
    ::testing::Values(StreakCase{"none", {}, 0}, StreakCase{"todayOnly", {0}, 1},
                      StreakCase{"yesterdayOnly", {-1}, 1},
                      StreakCase{"todayAndYesterday", {0, -1}, 2},
                      StreakCase{"yesterdayAndTheDayBefore", {-1, -2}, 2},
                      StreakCase{"todayAndTwoDaysAgo", {0, -2}, 1},
                      StreakCase{"endedTwoDaysAgo", {-2, -3, -4}, 0},
                      StreakCase{"gapStopsTheCount", {0, -1, -2, -3, -5, -6}, 4},
                      StreakCase{"severalPerDay", {0, 0, -1, -1, -1, -2}, 3},
                      StreakCase{"anyOrder", {-3, 0, -2, -1}, 4},
                      StreakCase{"acrossTheMonthEnd", {0, -1, -2, -29}, 3},
                      StreakCase{"tomorrowAlone", {1}, 0},
                      StreakCase{"tomorrowAndToday", {1, 0}, 1},
                      StreakCase{"aLongRun",
                                 [] {
                                     std::vector<int> days;
                                     for (int d = 0; d > -400; --d)
                                         days.push_back(d);
                                     return days;
                                 }(),
                                 400}),
    [](const auto& info) { return std::string(info.param.label); });

TEST_F(DayStatistics, WeekIsSevenLocalDaysOldestFirstSummingEachDaysSessions) {
    EXPECT_TRUE(Statistics::todaySessions({}, now).isEmpty());
    EXPECT_EQ(Statistics::todayMinutes({}, now) + Statistics::todayWanderCount({}, now), 0);
    for (const DaySummary& day : Statistics::weeklySummaries({}, now))
        EXPECT_EQ(day.minutes + day.sessions + day.wanderCount, 0);
    const QList<StudySession> sessions{
        SessionBuilder(local(2026, 3, 6, 0, 0)).minutes(50).wanders(9),         // tomorrow
        SessionBuilder(local(2026, 3, 5, 9, 0)).seconds(89).wanders(1),         // today
        SessionBuilder(local(2026, 3, 5, 0, 0)).seconds(90).wanders(2),         // today
        SessionBuilder(local(2026, 3, 3, 23, 59, 59)).seconds(29),              // two days ago
        SessionBuilder(local(2026, 2, 27, 0, 0)).minutes(12),                   // six days ago
        SessionBuilder(local(2026, 2, 26, 23, 59, 59)).minutes(40).wanders(3)}; // seven days ago
    const QList<DaySummary> week = Statistics::weeklySummaries(sessions, now);
    ASSERT_EQ(week.size(), 7);
    const qint64 minutes[] = {12, 0, 0, 0, 0, 0, 3};
    const qint64 counts[] = {1, 0, 0, 0, 1, 0, 2};
    const qint64 wanders[] = {0, 0, 0, 0, 0, 0, 3};
    for (int i = 0; i < 7; ++i) {
        EXPECT_EQ(week[i].date,
                  QDateTime(QDate(2026, 2, 27).addDays(i), QTime(0, 0), Qt::LocalTime))
            << i;
        EXPECT_EQ(week[i].minutes, minutes[i]) << i;
        EXPECT_EQ(week[i].sessions, counts[i]) << i;
        EXPECT_EQ(week[i].wanderCount, wanders[i]) << i;
    }
}

TEST_F(DayStatistics, WeekAcrossTheYearEnd) {
    const QDateTime newYear = local(2026, 1, 2, 8, 0);
    const QList<DaySummary> week = Statistics::weeklySummaries(
        {SessionBuilder(local(2025, 12, 27, 12, 0)).minutes(5)}, newYear);
    ASSERT_EQ(week.size(), 7);
    EXPECT_EQ(week.first().date.date(), QDate(2025, 12, 27));
    EXPECT_EQ(week.first().minutes, 5);
    EXPECT_EQ(week.last().date.date(), QDate(2026, 1, 2));
}

TEST(StreakInADaylightSavingZone, DaysAreCalendarDaysAcrossTheChange) {
    ScopedTimeZone zone("America/New_York");
    // 2026-03-08 has 23 hours. Its neighbour's session just after midnight belongs to 9 March.
    const QDateTime now(QDate(2026, 3, 9), QTime(12, 0), Qt::LocalTime);
    auto at = [](int month, int day, int h, int m) {
        return SessionBuilder(QDateTime(QDate(2026, month, day), QTime(h, m), Qt::LocalTime));
    };
    EXPECT_EQ(Statistics::streakDays({at(3, 9, 0, 30), at(3, 7, 23, 30)}, now), 1);
    EXPECT_EQ(Statistics::streakDays({at(3, 9, 0, 30), at(3, 8, 23, 30), at(3, 7, 0, 10)}, now), 3);
    QList<StudySession> daily;
    for (int back = 0; back < 500; ++back)
        daily << StudySession(
            SessionBuilder(QDateTime(now.date().addDays(-back), QTime(0, 5), Qt::LocalTime)));
    EXPECT_EQ(Statistics::streakDays(daily, now), 500);
}

TEST(DaysInZonesWithShortOrRepeatedChanges, SessionsCountOnTheirLocalCalendarDay) {
    auto at = [](const char* isoUtc) {
        return SessionBuilder(QDateTime::fromString(QString::fromLatin1(isoUtc), Qt::ISODate));
    };
    {
        // Havana falls back from 01:00 to 00:00 on 3 November 2019: 00:15 summer time (04:15Z)
        // is already that day, as is the 00:15 an hour later.
        ScopedTimeZone zone("America/Havana");
        const QDateTime now =
            QDateTime::fromString(QStringLiteral("2019-11-03T17:00:00Z"), Qt::ISODate);
        const QList<StudySession> sessions{at("2019-11-03T04:15:00Z"), at("2019-11-03T05:15:00Z"),
                                           at("2019-11-02T16:00:00Z")};
        EXPECT_EQ(Statistics::todaySessions(sessions, now).size(), 2);
        EXPECT_EQ(Statistics::streakDays(sessions, now), 2) << "2 and 3 November";
        EXPECT_EQ(Statistics::weeklySummaries(sessions, now).last().sessions, 2);
    }
    {
        // Fiji kept summer time (+13) only from 20 December 2020 to 17 January 2021; a
        // session every day at 00:30 runs through it unbroken.
        ScopedTimeZone zone("Pacific/Fiji");
        const QDateTime now(QDate(2021, 1, 20), QTime(12, 0), Qt::LocalTime);
        QList<StudySession> daily;
        for (QDate day(2020, 12, 1); day <= now.date(); day = day.addDays(1))
            daily << StudySession(SessionBuilder(QDateTime(day, QTime(0, 30), Qt::LocalTime)));
        EXPECT_EQ(Statistics::streakDays(daily, now), 51);
        const QDateTime inSummer(QDate(2021, 1, 10), QTime(14, 0), Qt::LocalTime);
        EXPECT_EQ(Statistics::todaySessions(daily, inSummer).size(), 1);
        EXPECT_EQ(Statistics::weeklySummaries(daily, inSummer).last().date.date(),
                  QDate(2021, 1, 10));
    }
}

} // namespace
} // namespace quill

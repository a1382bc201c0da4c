#include "insights/LocalDayStarts.h"
#include "SessionBuilder.h"
#include "insights/Statistics.h"

#include <QDateTime>
#include <gtest/gtest.h>
#include <random>
#include <time.h>

namespace quill {
namespace {

using test::SessionBuilder;

/// Runs the test in another local time zone, restoring the one CTest set.
class ScopedTimeZone {
public:
    explicit ScopedTimeZone(const char* zone)
        : m_had(qEnvironmentVariableIsSet("TZ")), m_old(qgetenv("TZ")) {
        qputenv("TZ", zone);
        tzset();
    }
    ~ScopedTimeZone() {
        if (m_had)
            qputenv("TZ", m_old);
        else
            qunsetenv("TZ");
        tzset();
    }

private:
    bool m_had;
    QByteArray m_old;
};

qint64 exactStart(const QDate& day) {
    return day.startOfDay().toMSecsSinceEpoch();
}

class DayStartsInZone : public ::testing::TestWithParam<const char*> {};

TEST_P(DayStartsInZone, MatchExactConversionWalkingBack) {
    ScopedTimeZone zone(GetParam());
    const QDate today(2026, 3, 9);
    LocalDayStarts starts;
    for (int back = 0; back < 4000; ++back) { // back to 2015: Sao Paulo still changed at midnight
        const QDate day = today.addDays(-back);
        ASSERT_EQ(starts.startMs(day), exactStart(day)) << day.toString(Qt::ISODate).toStdString();
    }
}

TEST_P(DayStartsInZone, MatchExactConversionInAnyOrder) {
    ScopedTimeZone zone(GetParam());
    LocalDayStarts starts;
    std::mt19937 rng(11);
    const QDate base(2020, 1, 1);
    for (int i = 0; i < 600; ++i) {
        const QDate day = base.addDays(qint64(rng() % 3000));
        ASSERT_EQ(starts.startMs(day), exactStart(day)) << day.toString(Qt::ISODate).toStdString();
    }
}

INSTANTIATE_TEST_SUITE_P(Zones, DayStartsInZone,
                         ::testing::Values("Asia/Shanghai", "America/New_York", "Europe/London",
                                           "Australia/Lord_Howe", "America/Sao_Paulo",
                                           "America/Santiago", "Asia/Tehran", "UTC"));

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

} // namespace
} // namespace quill

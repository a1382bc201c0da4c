#include "model/LocalDayStarts.h"
#include "ScopedTimeZone.h"

#include <QDateTime>
#include <gtest/gtest.h>
#include <random>

namespace quill {
namespace {

using test::ScopedTimeZone;

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

TEST_P(DayStartsInZone, StrayFarDatesAreConvertedWithoutWalkingToThem) {
    ScopedTimeZone zone(GetParam());
    LocalDayStarts starts;
    const QDate today(2026, 3, 9);
    ASSERT_EQ(starts.startMs(today), exactStart(today));
    for (const QDate& far : {QDate(1, 1, 1), QDate(9999, 12, 31), QDate(1970, 1, 1)})
        EXPECT_EQ(starts.startMs(far), exactStart(far)) << far.toString(Qt::ISODate).toStdString();
    EXPECT_EQ(starts.startMs(QDate()), 0) << "an unset date never starts a walk";
    EXPECT_EQ(starts.startMs(today.addDays(-1)), exactStart(today.addDays(-1)));
}

TEST_P(DayStartsInZone, RangesStartedApartStayExactWhereTheyMeet) {
    // A stray date asked for first must not spoil the walk over the real history, and
    // ranges begun far apart must stay exact as they grow into each other.
    ScopedTimeZone zone(GetParam());
    LocalDayStarts starts;
    EXPECT_EQ(starts.startMs(QDate(1970, 1, 1)), exactStart(QDate(1970, 1, 1)));
    std::mt19937 rng(5);
    const QDate bases[] = {QDate(1975, 6, 1), QDate(2026, 3, 9), QDate(2000, 1, 1),
                           QDate(1988, 10, 30)};
    for (int i = 0; i < 1500; ++i) {
        const QDate day = bases[rng() % 4].addDays(qint64(rng() % 4000) - 2000);
        ASSERT_EQ(starts.startMs(day), exactStart(day)) << day.toString(Qt::ISODate).toStdString();
    }
}

INSTANTIATE_TEST_SUITE_P(Zones, DayStartsInZone,
                         ::testing::Values("Asia/Shanghai", "America/New_York", "Europe/London",
                                           "Australia/Lord_Howe", "America/Sao_Paulo",
                                           "America/Santiago", "Asia/Tehran", "UTC"));

} // namespace
} // namespace quill

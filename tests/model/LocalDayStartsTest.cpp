#include "model/LocalDayStarts.h"
#include "support/ScopedTimeZone.h"

#include <QDateTime>
#include <QTimeZone>
#include <algorithm>
#include <gtest/gtest.h>
#include <random>

namespace quill {
namespace {

using test::ScopedTimeZone;

constexpr qint64 kDayMs = 24 * 3600 * 1000;

QDate localDate(const QTimeZone& zone, qint64 ms) {
    const QDateTime t = QDateTime::fromMSecsSinceEpoch(ms, QTimeZone::utc());
    return t.addSecs(zone.offsetFromUtc(t)).date();
}

// The earliest instant whose local date is `day` or later, found by trying every minute from
// well before the day's midnight, then every second of the minute found (old local mean times
// were not whole minutes).
qint64 earliestInstant(const QDate& day) {
    const QTimeZone zone = QTimeZone::systemTimeZone();
    const qint64 midnight = QDateTime(day, QTime(0, 0), QTimeZone::utc()).toMSecsSinceEpoch();
    qint64 t = midnight - kDayMs;
    while (localDate(zone, t) < day)
        t += 60'000;
    for (qint64 s = t - 59'000; s < t; s += 1000)
        if (localDate(zone, s) >= day)
            return s;
    return t;
}

struct Stretch {
    const char* zone;
    QDate first;
    QDate last;
};

void PrintTo(const Stretch& s, std::ostream* out) {
    *out << s.zone << " from " << s.first.toString(Qt::ISODate).toStdString();
}

class DayStartsInZone : public ::testing::TestWithParam<Stretch> {};

TEST_P(DayStartsInZone, EveryDayStartsAtTheEarliestInstantOfItsDate) {
    const Stretch& stretch = GetParam();
    ScopedTimeZone zone(stretch.zone);
    std::vector<QDate> days;
    for (QDate d = stretch.first; d <= stretch.last; d = d.addDays(1))
        days.push_back(d);
    std::vector<qint64> expected;
    for (const QDate& d : days)
        expected.push_back(earliestInstant(d));
    {
        LocalDayStarts starts; // walking back, as the streak does
        for (std::size_t i = days.size(); i-- > 0;)
            ASSERT_EQ(starts.startMs(days[i]), expected[i])
                << days[i].toString(Qt::ISODate).toStdString();
    }
    LocalDayStarts starts; // in any order, with far days asked for in between
    std::vector<std::size_t> order(days.size());
    for (std::size_t i = 0; i < order.size(); ++i)
        order[i] = i;
    std::shuffle(order.begin(), order.end(), std::mt19937(7));
    for (std::size_t k = 0; k < order.size(); ++k) {
        if (k % 40 == 0)
            starts.startMs(days[order[k]].addYears(k % 80 == 0 ? -30 : 30));
        ASSERT_EQ(starts.startMs(days[order[k]]), expected[order[k]])
            << days[order[k]].toString(Qt::ISODate).toStdString();
    }
}

TEST_P(DayStartsInZone, FarAndUnsetDatesStartAtTheirOwnMidnight) {
    ScopedTimeZone zone(GetParam().zone);
    LocalDayStarts starts;
    for (const QDate& far : {QDate(1, 1, 1), QDate(9999, 12, 31), QDate(1970, 1, 1)})
        EXPECT_EQ(starts.startMs(far), earliestInstant(far))
            << far.toString(Qt::ISODate).toStdString();
    EXPECT_EQ(starts.startMs(QDate()), 0) << "an unset date never starts a walk";
}

// Each stretch holds changes a month-by-month check would miss or a midnight that repeats
// or never happens.
INSTANTIATE_TEST_SUITE_P(
    Zones, DayStartsInZone,
    ::testing::Values(
        Stretch{"Pacific/Fiji", QDate(2020, 11, 20), QDate(2021, 1, 20)},   // summer for 4 weeks
        Stretch{"America/Havana", QDate(2019, 10, 25), QDate(2020, 11, 5)}, // midnights, a year
        Stretch{"Atlantic/Azores", QDate(2019, 10, 20), QDate(2019, 11, 2)},
        Stretch{"Asia/Gaza", QDate(2011, 3, 28), QDate(2011, 4, 3)}, // 00:01 jumps to 01:01
        Stretch{"Asia/Gaza", QDate(2011, 7, 28), QDate(2011, 8, 3)}, // back to the day before
        Stretch{"Asia/Gaza", QDate(2020, 10, 20), QDate(2020, 10, 28)},
        Stretch{"Pacific/Apia", QDate(2011, 12, 25), QDate(2012, 1, 3)}, // 30 December skipped
        Stretch{"America/Sao_Paulo", QDate(2018, 10, 30), QDate(2018, 11, 8)},
        Stretch{"Australia/Lord_Howe", QDate(2025, 3, 30), QDate(2025, 4, 10)}, // half an hour
        Stretch{"America/New_York", QDate(2025, 11, 1), QDate(2025, 11, 4)},
        Stretch{"Asia/Shanghai", QDate(2026, 3, 1), QDate(2026, 3, 4)},
        Stretch{"UTC", QDate(2026, 3, 1), QDate(2026, 3, 4)}),
    [](const ::testing::TestParamInfo<Stretch>& info) {
        std::string name = std::string(info.param.zone) + "_" + std::to_string(info.index);
        std::replace(name.begin(), name.end(), '/', '_');
        return name;
    });

} // namespace
} // namespace quill

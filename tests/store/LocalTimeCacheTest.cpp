// The step's local date and hour: exact at hour and day boundaries, and never stale for
// longer than a minute after the zone or the clock changes.
#include "store/LocalTimeCache.h"
#include "support/ScopedTimeZone.h"

#include <gtest/gtest.h>

namespace quill::test {
namespace {

QDateTime utc(int hour, int minute, int second = 0, int ms = 0) {
    return QDateTime(QDate(2026, 3, 5), QTime(hour, minute, second, ms), Qt::UTC);
}

TEST(LocalTimeCacheTest, FollowsHourAndDayBoundariesToTheMillisecond) {
    LocalTimeCache cache; // Shanghai, UTC+8
    EXPECT_EQ(cache.at(utc(15, 59, 30)).hour, 23);
    EXPECT_EQ(cache.at(utc(15, 59, 59, 999)).date, QDate(2026, 3, 5));
    const LocalTimeCache::Fields midnight = cache.at(utc(16, 0));
    EXPECT_EQ(midnight.date, QDate(2026, 3, 6));
    EXPECT_EQ(midnight.hour, 0);
    // Set back across midnight: yesterday again at once.
    EXPECT_EQ(cache.at(utc(15, 59, 59)).date, QDate(2026, 3, 5));
}

TEST(LocalTimeCacheTest, AZoneChangeShowsWithinAMinute) {
    LocalTimeCache cache;
    EXPECT_EQ(cache.at(utc(8, 30)).hour, 16);
    ScopedTimeZone kathmandu("Asia/Kathmandu"); // UTC+5:45: its hours begin at a quarter past
    EXPECT_EQ(cache.at(utc(8, 30, 59)).hour, 16) << "reused within the minute";
    EXPECT_EQ(cache.at(utc(8, 31)).hour, 14);
    EXPECT_EQ(cache.at(utc(9, 14, 30)).hour, 14);
    EXPECT_EQ(cache.at(utc(9, 14, 59, 999)).hour, 14);
    EXPECT_EQ(cache.at(utc(9, 15)).hour, 15) << "the zone's own hour boundary";
}

} // namespace
} // namespace quill::test

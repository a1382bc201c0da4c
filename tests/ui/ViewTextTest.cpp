#include "ui/viewmodels/ViewText.h"

#include <gtest/gtest.h>
#include <initializer_list>
#include <utility>

using namespace quill;
using namespace quill::viewtext;

namespace {

template <typename In> using Table = std::initializer_list<std::pair<In, const char*>>;

TEST(ViewText, MinutesSecondsAreUncappedAndNeverNegative) {
    const Table<qint64> cases{{0, "00:00"},     {9, "00:09"},       {61, "01:01"}, {1500, "25:00"},
                              {7200, "120:00"}, {86400, "1440:00"}, {-5, "00:00"}};
    for (const auto& [seconds, text] : cases)
        EXPECT_EQ(minutesSeconds(seconds), QString::fromUtf8(text)) << seconds;
}

TEST(ViewText, EnergyLabelsNameTheLevelClampedIntoOneToFive) {
    const Table<qint64> cases{{1, "很低"}, {2, "偏低"}, {3, "一般"},  {4, "不错"},
                              {5, "充沛"}, {0, "很低"}, {-3, "很低"}, {9, "充沛"}};
    for (const auto& [level, label] : cases)
        EXPECT_EQ(energyLabel(level), QString::fromUtf8(label)) << level;
}

TEST(ViewText, GreetingsFollowTheHourBoundaries) {
    const Table<int> cases{{0, "早上好"},  {10, "早上好"}, {11, "中午好"}, {13, "中午好"},
                           {14, "下午好"}, {18, "下午好"}, {19, "晚上好"}, {23, "晚上好"}};
    for (const auto& [hour, greeting] : cases)
        EXPECT_EQ(dayGreeting(hour), QString::fromUtf8(greeting)) << hour;
}

TEST(RingProgress, IsFullWithoutARoundAndNeverBelowTheFloor) {
    EXPECT_DOUBLE_EQ(ringProgress(false, false, 10, 100, 0.01, 1.0), 1.0);
    EXPECT_DOUBLE_EQ(ringProgress(true, false, 0, 1500, 0.01, 1.0), 0.01);
    EXPECT_DOUBLE_EQ(ringProgress(true, false, 750, 1500, 0.01, 1.0), 0.5);
    EXPECT_DOUBLE_EQ(ringProgress(true, false, 2000, 1500, 0.01, 1.0), 1.0);
    // A planned length of zero never divides by zero: the sliver shows.
    EXPECT_DOUBLE_EQ(ringProgress(true, false, 30, 0, 0.01, 1.0), 0.01);
    // The floating ring's rules: full during a break, a 0.02 floor.
    EXPECT_DOUBLE_EQ(ringProgress(true, true, 30, 1500, 0.02, 0.0), 1.0);
    EXPECT_DOUBLE_EQ(ringProgress(true, false, 3, 1500, 0.02, 0.0), 0.02);
}

} // namespace

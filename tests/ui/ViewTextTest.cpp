#include "ui/viewmodels/ViewText.h"

#include <gtest/gtest.h>

using namespace quill;
using namespace quill::viewtext;

namespace {

struct ClockCase {
    qint64 seconds;
    const char* text;
};
class MinutesSecondsTest : public ::testing::TestWithParam<ClockCase> {};
TEST_P(MinutesSecondsTest, FormatsMinutesAndSeconds) {
    EXPECT_EQ(minutesSeconds(GetParam().seconds), QString::fromUtf8(GetParam().text));
}
INSTANTIATE_TEST_SUITE_P(Cases, MinutesSecondsTest,
                         ::testing::Values(ClockCase{0, "00:00"}, ClockCase{9, "00:09"},
                                           ClockCase{61, "01:01"}, ClockCase{1500, "25:00"},
                                           ClockCase{7200, "120:00"}, // minutes are not capped
                                           ClockCase{86400, "1440:00"},
                                           ClockCase{-5, "00:00"})); // never negative

struct EnergyCase {
    qint64 level;
    const char* label;
};
class EnergyLabelTest : public ::testing::TestWithParam<EnergyCase> {};
TEST_P(EnergyLabelTest, NamesTheLevelClampedIntoOneToFive) {
    EXPECT_EQ(energyLabel(GetParam().level), QString::fromUtf8(GetParam().label));
}
INSTANTIATE_TEST_SUITE_P(Cases, EnergyLabelTest,
                         ::testing::Values(EnergyCase{1, "很低"}, EnergyCase{2, "偏低"},
                                           EnergyCase{3, "一般"}, EnergyCase{4, "不错"},
                                           EnergyCase{5, "充沛"}, EnergyCase{0, "很低"},
                                           EnergyCase{-3, "很低"}, EnergyCase{9, "充沛"}));

struct GreetingCase {
    int hour;
    const char* greeting;
};
class GreetingTest : public ::testing::TestWithParam<GreetingCase> {};
TEST_P(GreetingTest, FollowsTheHourBoundaries) {
    EXPECT_EQ(dayGreeting(GetParam().hour), QString::fromUtf8(GetParam().greeting));
}
INSTANTIATE_TEST_SUITE_P(Cases, GreetingTest,
                         ::testing::Values(GreetingCase{0, "早上好"}, GreetingCase{10, "早上好"},
                                           GreetingCase{11, "中午好"}, GreetingCase{13, "中午好"},
                                           GreetingCase{14, "下午好"}, GreetingCase{18, "下午好"},
                                           GreetingCase{19, "晚上好"}, GreetingCase{23, "晚上好"}));

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

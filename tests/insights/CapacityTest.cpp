#include "SessionBuilder.h"
#include "insights/Statistics.h"

#include <gtest/gtest.h>

namespace quill {
namespace {

using test::local;
using test::SessionBuilder;

/// Sessions listed newest first, one per hour going back.
QList<StudySession> newestFirst(const std::vector<SessionBuilder>& builders) {
    QList<StudySession> out;
    for (const SessionBuilder& b : builders)
        out << StudySession(b);
    return out;
}

QList<StudySession> thrice(const SessionBuilder& b) {
    return newestFirst({b, b, b});
}

SessionBuilder minutesRated(qint64 m, qint64 rating) {
    return SessionBuilder().minutes(m).rating(rating);
}

// ---------------------------------------------------------------- one session's estimate

struct EstimateCase {
    const char* label;
    SessionBuilder session;
    qint64 capacity;
};

class SingleSessionCapacity : public ::testing::TestWithParam<EstimateCase> {};

TEST_P(SingleSessionCapacity, Estimate) {
    EXPECT_EQ(Statistics::attentionCapacityMinutes({GetParam().session}), GetParam().capacity);
}

INSTANTIATE_TEST_SUITE_P(
    Rules, SingleSessionCapacity,
    ::testing::Values(
        EstimateCase{"ratedFive", SessionBuilder().seconds(1500).rating(5), 25},
        EstimateCase{"ratedFour", SessionBuilder().seconds(1500).rating(4), 25},
        EstimateCase{"ratedThreeTakesThreeQuarters", SessionBuilder().seconds(1500).rating(3), 18},
        EstimateCase{"ratedOne", SessionBuilder().minutes(40).rating(1), 30},
        EstimateCase{"ratedZero", SessionBuilder().minutes(41).rating(0), 30},
        EstimateCase{"threeQuartersTruncates", SessionBuilder().minutes(27).rating(2), 20},
        EstimateCase{"threeQuartersFloored", SessionBuilder().minutes(13).rating(3), 10},
        EstimateCase{"shortRoundFloored", SessionBuilder().minutes(8).rating(5), 10},
        EstimateCase{"zeroSeconds", SessionBuilder().seconds(0).rating(5), 10},
        EstimateCase{"minutesRoundHalfUp", SessionBuilder().seconds(1530).rating(5), 26},
        EstimateCase{"minutesRoundDown", SessionBuilder().seconds(1529).rating(5), 25},
        EstimateCase{"wanderAt95s", SessionBuilder().seconds(1500).wanderAt(95), 10},
        EstimateCase{"wanderAt1500s", SessionBuilder().seconds(3000).wanderAt(1500), 25},
        EstimateCase{"wanderTruncates", SessionBuilder().seconds(3000).wanderAt(1559), 25},
        EstimateCase{"wanderIgnoresRating", SessionBuilder().seconds(3000).rating(1).wanderAt(1800),
                     30},
        EstimateCase{"wanderAtZero", SessionBuilder().seconds(3000).wanderAt(0), 10},
        EstimateCase{"onlyTheFirstWanderInEventOrder",
                     SessionBuilder().seconds(3000).wanderAt(1500).wanderAt(300), 25},
        EstimateCase{"otherEventsBeforeTheWander",
                     SessionBuilder()
                         .seconds(3000)
                         .event(FocusEventKind::reminder, 100)
                         .event(FocusEventKind::fatigue, 200)
                         .event(FocusEventKind::pause, 300)
                         .wanderAt(900),
                     15},
        EstimateCase{"fatigueIsNoWander",
                     SessionBuilder().minutes(50).rating(5).event(FocusEventKind::fatigue, 60), 50},
        EstimateCase{"cappedAt120", SessionBuilder().minutes(200).rating(5), 120},
        EstimateCase{"wanderCappedAt120", SessionBuilder().minutes(300).wanderAt(9000), 120}),
    [](const auto& info) { return std::string(info.param.label); });

// ---------------------------------------------------------------- the median over the window

TEST(Capacity, MedianTakesTheUpperMiddleOfAnEvenCount) {
    EXPECT_EQ(
        Statistics::attentionCapacityMinutes(newestFirst(
            {minutesRated(40, 5), minutesRated(10, 5), minutesRated(30, 5), minutesRated(20, 5)})),
        30);
    EXPECT_EQ(Statistics::attentionCapacityMinutes(
                  newestFirst({minutesRated(30, 5), minutesRated(10, 5), minutesRated(20, 5)})),
              20);
    EXPECT_EQ(Statistics::attentionCapacityMinutes(
                  newestFirst({minutesRated(10, 5), minutesRated(20, 5)})),
              20);
    EXPECT_EQ(Statistics::attentionCapacityMinutes(
                  newestFirst({minutesRated(10, 5), minutesRated(300, 5), minutesRated(500, 5)})),
              120);
}

TEST(Capacity, OnlyTheTwelveMostRecentSessionsCount) {
    std::vector<SessionBuilder> sessions;
    for (int i = 0; i < 6; ++i)
        sessions.push_back(minutesRated(10, 5));
    for (int i = 0; i < 6; ++i)
        sessions.push_back(minutesRated(60, 5));
    EXPECT_EQ(Statistics::attentionCapacityMinutes(newestFirst(sessions)), 60);
    // Older sessions past the twelfth change nothing, however many.
    for (int i = 0; i < 30; ++i)
        sessions.push_back(minutesRated(10, 5));
    EXPECT_EQ(Statistics::attentionCapacityMinutes(newestFirst(sessions)), 60);
    // A newer short one pushes a long one out of the window.
    sessions.insert(sessions.begin(), minutesRated(10, 5));
    EXPECT_EQ(Statistics::attentionCapacityMinutes(newestFirst(sessions)), 10);
}

// ---------------------------------------------------------------- recommendation

/// Completed, rated 4, end energy 2, one wander at 40 minutes: qualifies, estimate 40.
SessionBuilder qualifying() {
    return SessionBuilder().minutes(50).rating(4).energy(3, 2).wanderAt(2400);
}

TEST(Recommendation, FewerThanThreeSessionsGiveThirty) {
    EXPECT_EQ(Statistics::attentionCapacityMinutes({}), 30);
    EXPECT_EQ(Statistics::recommendedMinutes({}), 30);
    EXPECT_EQ(Statistics::recommendedMinutes(newestFirst({qualifying()})), 30);
    EXPECT_EQ(Statistics::recommendedMinutes(newestFirst({qualifying(), qualifying()})), 30);
    EXPECT_EQ(Statistics::recommendedMinutes(newestFirst({minutesRated(8, 1), minutesRated(8, 1)})),
              30);
}

struct SpoiltCase {
    const char* label;
    SessionBuilder second; ///< replaces the second most recent session
};

class RecommendationWithoutGrowth : public ::testing::TestWithParam<SpoiltCase> {};

TEST_P(RecommendationWithoutGrowth, StaysAtCapacity) {
    const QList<StudySession> sessions =
        newestFirst({qualifying(), GetParam().second, qualifying()});
    ASSERT_EQ(Statistics::attentionCapacityMinutes(sessions), 40);
    EXPECT_EQ(Statistics::recommendedMinutes(sessions), 40);
}

INSTANTIATE_TEST_SUITE_P(EachCondition, RecommendationWithoutGrowth,
                         ::testing::Values(SpoiltCase{"endedEarly", qualifying().completed(false)},
                                           SpoiltCase{"ratedThree", qualifying().rating(3)},
                                           SpoiltCase{"endEnergyOne", qualifying().energy(3, 1)},
                                           SpoiltCase{"twoWanders", qualifying().wanderAt(2500)}),
                         [](const auto& info) { return std::string(info.param.label); });

TEST(Recommendation, GrowsByFiveAfterTheThreeMostRecentAreSound) {
    EXPECT_EQ(
        Statistics::recommendedMinutes(newestFirst(
            {qualifying(), qualifying().rating(5), qualifying(), qualifying().completed(false)})),
        45);
    EXPECT_EQ(Statistics::recommendedMinutes(newestFirst(
                  {qualifying().completed(false), qualifying(), qualifying(), qualifying()})),
              40);
}

TEST(Recommendation, ClampsToTwentyAndOneHundredTwenty) {
    // Capacity 10 without growth, and with growth (15).
    EXPECT_EQ(Statistics::recommendedMinutes(thrice(minutesRated(8, 1))), 20);
    EXPECT_EQ(Statistics::recommendedMinutes(thrice(minutesRated(8, 5).energy(3, 3))), 20);
    // Capacity 120 with growth stays 120; 118 + 5 clamps too; 115 + 5 reaches it.
    for (qint64 capacity : {120, 118, 115})
        EXPECT_EQ(Statistics::recommendedMinutes(thrice(minutesRated(capacity, 5).energy(3, 3))),
                  120)
            << capacity;
    EXPECT_EQ(Statistics::recommendedMinutes(thrice(minutesRated(200, 5).completed(false))), 120);
}

} // namespace
} // namespace quill

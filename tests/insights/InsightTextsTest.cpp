#include "SessionBuilder.h"
#include "insights/Statistics.h"

#include <gtest/gtest.h>

namespace quill {
namespace {

using test::SessionBuilder;

const QString kDash = QStringLiteral("—");

// ---------------------------------------------------------------- which sessions count

TEST(CompletedSessions, AreThoseWithAFocusedSecondInStoreOrder) {
    const StudySession none = SessionBuilder().seconds(0).completed(true);
    const StudySession one = SessionBuilder().seconds(1).completed(false);
    const StudySession negative = SessionBuilder().seconds(-60);
    const StudySession full = SessionBuilder().minutes(25);
    EXPECT_EQ(Statistics::completedSessions({one, none, negative, full}),
              (QList<StudySession>{one, full}));
}

TEST(SampleSize, IsTheSessionCountUpToTwelve) {
    QList<StudySession> sessions;
    EXPECT_EQ(Statistics::sampleSize(sessions), 0);
    for (int i = 1; i <= 15; ++i) {
        sessions << StudySession(SessionBuilder().seconds(0));
        EXPECT_EQ(Statistics::sampleSize(sessions), std::min(i, 12));
    }
}

// ---------------------------------------------------------------- wander rate and energy change

struct TextCase {
    const char* label;
    std::vector<SessionBuilder> sessions;
    QString text;
};

QList<StudySession> built(const std::vector<SessionBuilder>& builders) {
    QList<StudySession> sessions;
    for (const SessionBuilder& b : builders)
        sessions << StudySession(b);
    return sessions;
}

class WanderRate : public ::testing::TestWithParam<TextCase> {};
class EnergyDrop : public ::testing::TestWithParam<TextCase> {};

TEST_P(WanderRate, Text) {
    EXPECT_EQ(Statistics::wanderRateText(built(GetParam().sessions)), GetParam().text);
}

TEST_P(EnergyDrop, Text) {
    EXPECT_EQ(Statistics::energyDropText(built(GetParam().sessions)), GetParam().text);
}

INSTANTIATE_TEST_SUITE_P(
    Cases, WanderRate,
    ::testing::Values(
        TextCase{"noSessions", {}, kDash},
        TextCase{"underHalfAMinute", {SessionBuilder().seconds(29).wanders(2)}, kDash},
        TextCase{"zeroSecondRoundsDoNotCount", {SessionBuilder().seconds(0).wanders(5)}, kDash},
        TextCase{"fortyFiveMinutesThreeWanders",
                 {SessionBuilder().minutes(30).wanders(2), SessionBuilder().minutes(15).wanders(1)},
                 QStringLiteral("4.0 次/时")},
        TextCase{"perSessionRoundedMinutes",
                 // 89 s + 89 s count 2 minutes, not 3: 1 wander per 2 minutes.
                 {SessionBuilder().seconds(89).wanders(1), SessionBuilder().seconds(89)},
                 QStringLiteral("30.0 次/时")},
        TextCase{"shortRoundsWandersStillCount",
                 {SessionBuilder().seconds(29).wanders(2), SessionBuilder().minutes(60).wanders(1)},
                 QStringLiteral("3.0 次/时")},
        TextCase{
            "oneDecimal", {SessionBuilder().minutes(7).wanders(1)}, QStringLiteral("8.6 次/时")},
        TextCase{"noWanders", {SessionBuilder().minutes(25)}, QStringLiteral("0.0 次/时")},
        // 9 wanders in 240 minutes is exactly 2.25 an hour: an exact half rounds to even.
        TextCase{"exactHalfRoundsToEven",
                 {SessionBuilder().minutes(240).wanders(9)},
                 QStringLiteral("2.2 次/时")},
        TextCase{"halfAboveEvenRoundsUp", // 0.75 → 0.8
                 {SessionBuilder().minutes(80).wanders(1)},
                 QStringLiteral("0.8 次/时")},
        TextCase{"endedEarlyStillCounts",
                 {SessionBuilder().minutes(60).completed(false).wanders(12)},
                 QStringLiteral("12.0 次/时")}),
    [](const auto& info) { return std::string(info.param.label); });

INSTANTIATE_TEST_SUITE_P(
    Cases, EnergyDrop,
    ::testing::Values(
        TextCase{"noSessions", {}, kDash},
        TextCase{"onlyZeroSecondRounds", {SessionBuilder().seconds(0).energy(5, 1)}, kDash},
        TextCase{"noChangeIsPlusZero", {SessionBuilder().energy(3, 3)}, QStringLiteral("+0.0 格")},
        TextCase{"meanOfMinusTwoAndPlusOne",
                 {SessionBuilder().energy(4, 2), SessionBuilder().energy(2, 3)},
                 QStringLiteral("-0.5 格")},
        TextCase{"plusTwo", {SessionBuilder().energy(1, 3)}, QStringLiteral("+2.0 格")},
        TextCase{"minusOneAndAHalf",
                 {SessionBuilder().energy(5, 3), SessionBuilder().energy(4, 3)},
                 QStringLiteral("-1.5 格")},
        TextCase{"zeroSecondRoundsLeftOut",
                 {SessionBuilder().energy(4, 5), SessionBuilder().seconds(0).energy(5, 1)},
                 QStringLiteral("+1.0 格")},
        TextCase{"minusAQuarterRoundsToEven",
                 {SessionBuilder().energy(3, 2), SessionBuilder().energy(3, 3),
                  SessionBuilder().energy(3, 3), SessionBuilder().energy(3, 3)},
                 QStringLiteral("-0.2 格")},
        TextCase{"aThird",
                 {SessionBuilder().energy(3, 4), SessionBuilder().energy(3, 3),
                  SessionBuilder().energy(3, 3)},
                 QStringLiteral("+0.3 格")}),
    [](const auto& info) { return std::string(info.param.label); });

// ---------------------------------------------------------------- trend and breakdown

TEST(TrendPoints, AreTheTenMostRecentOldestFirst) {
    QList<StudySession> sessions; // newest first
    for (int i = 0; i < 12; ++i)
        sessions << StudySession(
            SessionBuilder().seconds(i == 3 ? 0 : 600).note(QString::number(i)));
    const QList<StudySession> points = Statistics::trendPoints(sessions);
    ASSERT_EQ(points.size(), 10);
    for (int i = 0; i < 10; ++i)
        EXPECT_EQ(points[i].note, QString::number(9 - i));
    // Fewer are all taken, reversed.
    EXPECT_EQ(Statistics::trendPoints(sessions.mid(10)),
              (QList<StudySession>{sessions[11], sessions[10]}));
    EXPECT_TRUE(Statistics::trendPoints({}).isEmpty());
}

} // namespace
} // namespace quill

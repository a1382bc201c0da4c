#include "SessionBuilder.h"
#include "insights/Statistics.h"

#include <gtest/gtest.h>
#include <limits>

namespace quill {
namespace {

using test::SessionBuilder;

StudySession taskSession(const std::optional<QString>& name, qint64 seconds, qint64 rating = 4) {
    SessionBuilder b;
    if (name)
        b.task(*name);
    return b.seconds(seconds).rating(rating);
}

QStringList names(const QList<TaskSummary>& rows) {
    QStringList out;
    for (const TaskSummary& row : rows)
        out << row.name;
    return out;
}

TEST(TaskSummaries, GroupByDisplayNameAndSumRoundedMinutes) {
    const QList<TaskSummary> rows = Statistics::taskSummaries({
        taskSession(QStringLiteral("写作"), 89, 5),
        taskSession(QStringLiteral("  写作\n"), 89, 4),
        taskSession(std::nullopt, 600, 3),
        taskSession(QStringLiteral("   "), 1200, 2),
        taskSession(QStringLiteral("写作"), 29, 3),
    });
    ASSERT_EQ(rows.size(), 2);
    EXPECT_EQ(rows[0], (TaskSummary{QStringLiteral("未分类"), 30, 2, 2.5}));
    EXPECT_EQ(rows[1], (TaskSummary{QStringLiteral("写作"), 2, 3, 4.0}));
}

TEST(TaskSummaries, AbsurdRatingsAndMinutesNeitherOverflowNorWrap) {
    constexpr qint64 kMax = std::numeric_limits<qint64>::max();
    QList<StudySession> sessions;
    for (int i = 0; i < 61; ++i) // 61 times the largest minutes: past the end of qint64
        sessions << taskSession(QStringLiteral("a"), kMax, i == 0 ? kMax - 60 : kMax);
    const QList<TaskSummary> rows = Statistics::taskSummaries(sessions);
    ASSERT_EQ(rows.size(), 1);
    EXPECT_DOUBLE_EQ(rows[0].averageFocus, double(kMax - 1));
    EXPECT_EQ(rows[0].focusedMinutes, kMax) << "held at the largest value";
    EXPECT_DOUBLE_EQ(Statistics::averageFocusRating(sessions), double(kMax - 1));
    EXPECT_EQ(Statistics::totalMinutes(sessions), kMax);
    const qint64 kMin = std::numeric_limits<qint64>::min();
    EXPECT_DOUBLE_EQ(
        Statistics::averageFocusRating({taskSession({}, 60, kMin), taskSession({}, 60, kMin)}),
        double(kMin));
}

TEST(TaskSummaries, MoreMinutesFirstAndEqualMinutesSortLikeAFileBrowser) {
    EXPECT_EQ(names(Statistics::taskSummaries(
                  {taskSession(QStringLiteral("a"), 60), taskSession(QStringLiteral("c"), 180),
                   taskSession(QStringLiteral("b"), 120), taskSession(QStringLiteral("a"), 150)})),
              (QStringList{"a", "c", "b"})); // a: 1 + 3 minutes
    QList<StudySession> sessions;
    for (const char* name : {"b10", "B11", "b2", "a", "b1", "Apple", "b02x", "item 100", "Item 20"})
        sessions << taskSession(QString::fromUtf8(name), 600);
    EXPECT_EQ(names(Statistics::taskSummaries(sessions)),
              (QStringList{"a", "Apple", "b1", "b2", "b02x", "b10", "B11", "Item 20", "item 100"}));
}

TEST(TaskSummaries, NamesEqualIgnoringCaseKeepTheirFirstAppearanceOrder) {
    const StudySession lower = taskSession(QStringLiteral("task"), 600);
    const StudySession upper = taskSession(QStringLiteral("Task"), 600);
    EXPECT_EQ(names(Statistics::taskSummaries({lower, upper})), (QStringList{"task", "Task"}));
    EXPECT_EQ(names(Statistics::taskSummaries({upper, lower})), (QStringList{"Task", "task"}));
}

TEST(TaskSummaries, ComposedAndDecomposedSpellingsAreOneTask) {
    const QString composed = QStringLiteral("Caf\u00e9");
    const QString decomposed = QStringLiteral("Cafe\u0301");
    const QList<StudySession> sessions{taskSession(decomposed, 600, 5),
                                       taskSession(composed + QStringLiteral(" "), 1200, 3)};
    const QList<TaskSummary> rows = Statistics::taskSummaries(sessions);
    ASSERT_EQ(rows.size(), 1);
    EXPECT_EQ(rows[0], (TaskSummary{decomposed, 30, 2, 4.0})); // shown as the newest wrote it
    EXPECT_EQ(Statistics::taskSessionCount(sessions, composed), 2);
    EXPECT_EQ(Statistics::taskSessionCount(sessions, decomposed), 2);
}

TEST(TaskSummaries, BreakdownTakesTheFirstEightRowsOnAScaleOfAtLeastOne) {
    EXPECT_TRUE(Statistics::taskSummaries({}).isEmpty());
    EXPECT_TRUE(Statistics::taskBreakdownRows({}).isEmpty());
    QList<StudySession> sessions;
    for (int i = 1; i <= 11; ++i)
        sessions << taskSession(QStringLiteral("t%1").arg(i), i * 60);
    const QList<TaskSummary> rows = Statistics::taskBreakdownRows(sessions);
    ASSERT_EQ(rows.size(), 8);
    EXPECT_EQ(rows.first().name, QStringLiteral("t11"));
    EXPECT_EQ(rows.last().name, QStringLiteral("t4"));
    EXPECT_EQ(Statistics::taskBreakdownScale(sessions), 11);
    EXPECT_EQ(Statistics::taskBreakdownScale({}), 1);
    const std::pair<qint64, qint64> cases[] = {{0, 1}, {29, 1}, {89, 1}, {90, 2}, {150, 3}};
    for (const auto& [seconds, scale] : cases)
        EXPECT_EQ(Statistics::taskBreakdownScale({taskSession(QStringLiteral("x"), seconds)}),
                  scale)
            << seconds;
}

TEST(TaskSessionCount, MatchesTheDisplayNameExactly) {
    const QList<StudySession> sessions{
        taskSession(QStringLiteral("Math"), 60), taskSession(QStringLiteral(" Math "), 60),
        taskSession(QStringLiteral("math"), 60), taskSession(std::nullopt, 60),
        taskSession(QStringLiteral("\t"), 60),   taskSession(QStringLiteral("未分类"), 60)};
    EXPECT_EQ(Statistics::taskSessionCount(sessions, QStringLiteral("Math")), 2);
    EXPECT_EQ(Statistics::taskSessionCount(sessions, QStringLiteral("math")), 1);
    EXPECT_EQ(Statistics::taskSessionCount(sessions, QStringLiteral("Math ")), 0);
    EXPECT_EQ(Statistics::taskSessionCount(sessions, QStringLiteral("未分类")), 3);
    EXPECT_EQ(Statistics::taskSessionCount(sessions, QString()), 0);
    EXPECT_EQ(Statistics::taskSessionCount({}, QStringLiteral("Math")), 0);
}

} // namespace
} // namespace quill

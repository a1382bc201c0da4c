#include "model/StudySession.h"
#include "model/FocusEventKind.h"

#include <gtest/gtest.h>

namespace quill {
namespace {

FocusEvent event(FocusEventKind kind, qint64 elapsed = 0) {
    return FocusEvent{QUuid::createUuid(),
                      QDateTime(QDate(2026, 3, 5), QTime(8, 0).addSecs(elapsed), Qt::UTC), elapsed,
                      kind};
}

StudySession sessionWith(QList<FocusEvent> events) {
    StudySession s;
    s.id = QUuid::createUuid();
    s.events = std::move(events);
    return s;
}

TEST(EventCounts, SessionWithoutEventsCountsNothing) {
    const StudySession s = sessionWith({});
    EXPECT_EQ(s.reminderCount(), 0);
    EXPECT_EQ(s.mindWanderCount(), 0);
    EXPECT_EQ(s.fatigueCount(), 0);
}

TEST(EventCounts, EachKindCountsOnlyItself) {
    const StudySession s =
        sessionWith({event(FocusEventKind::reminder), event(FocusEventKind::mindWander),
                     event(FocusEventKind::reminder), event(FocusEventKind::fatigue),
                     event(FocusEventKind::mindWander), event(FocusEventKind::reminder)});
    EXPECT_EQ(s.reminderCount(), 3);
    EXPECT_EQ(s.mindWanderCount(), 2);
    EXPECT_EQ(s.fatigueCount(), 1);
}

TEST(EventCounts, PauseAndResumeCountTowardsNothing) {
    const StudySession s = sessionWith({event(FocusEventKind::pause), event(FocusEventKind::resume),
                                        event(FocusEventKind::pause)});
    EXPECT_EQ(s.reminderCount(), 0);
    EXPECT_EQ(s.mindWanderCount(), 0);
    EXPECT_EQ(s.fatigueCount(), 0);
}

struct NameCase {
    std::optional<QString> stored;
    QString shown;
};

class DisplayTaskName : public ::testing::TestWithParam<NameCase> {};

TEST_P(DisplayTaskName, IsTrimmedOrUncategorized) {
    StudySession s;
    s.taskName = GetParam().stored;
    EXPECT_EQ(s.displayTaskName(), GetParam().shown);
}

INSTANTIATE_TEST_SUITE_P(
    Names, DisplayTaskName,
    ::testing::Values(NameCase{std::nullopt, QStringLiteral("未分类")},
                      NameCase{QString(), QStringLiteral("未分类")},
                      NameCase{QStringLiteral("   "), QStringLiteral("未分类")},
                      NameCase{QStringLiteral(" \t\n\r "), QStringLiteral("未分类")},
                      NameCase{QStringLiteral("  Math\n"), QStringLiteral("Math")},
                      NameCase{QStringLiteral("\u3000写作\u3000"), QStringLiteral("写作")},
                      NameCase{QStringLiteral(" read  slowly "), QStringLiteral("read  slowly")},
                      NameCase{QStringLiteral("未分类"), QStringLiteral("未分类")}));

TEST(DisplayTaskName, LeavesTheStoredNameAsItWas) {
    StudySession s;
    s.taskName = QStringLiteral("  Math\n");
    (void)s.displayTaskName();
    EXPECT_EQ(*s.taskName, QStringLiteral("  Math\n"));
}

TEST(FocusEventKindRaw, RoundTripsEveryCaseInOrder) {
    const QStringList raws{QStringLiteral("reminder"), QStringLiteral("mindWander"),
                           QStringLiteral("fatigue"), QStringLiteral("pause"),
                           QStringLiteral("resume")};
    const FocusEventKind kinds[] = {FocusEventKind::reminder, FocusEventKind::mindWander,
                                    FocusEventKind::fatigue, FocusEventKind::pause,
                                    FocusEventKind::resume};
    for (int i = 0; i < 5; ++i) {
        EXPECT_EQ(rawValue(kinds[i]), raws[i]);
        EXPECT_EQ(focusEventKindFromRaw(raws[i]), kinds[i]);
    }
}

TEST(FocusEventKindRaw, AcceptsNothingElse) {
    for (const char* raw : {"MindWander", "mindwander", "Reminder", "REMINDER", " pause", "pause ",
                            "", "wander", "microBreak", "completed"})
        EXPECT_EQ(focusEventKindFromRaw(QString::fromUtf8(raw)), std::nullopt) << raw;
}

TEST(RecordEquality, SessionsDifferingOnlyInNoteAreUnequal) {
    StudySession a = sessionWith({event(FocusEventKind::fatigue)});
    StudySession b = a;
    EXPECT_EQ(a, b);
    b.note = QStringLiteral("x");
    EXPECT_NE(a, b);
}

TEST(RecordEquality, SessionsCompareEventListsElementByElement) {
    const StudySession a =
        sessionWith({event(FocusEventKind::pause), event(FocusEventKind::resume)});
    StudySession reordered = a;
    std::swap(reordered.events[0], reordered.events[1]);
    EXPECT_NE(a, reordered);
    StudySession absentTask = a;
    StudySession emptyTask = a;
    emptyTask.taskName = QString();
    EXPECT_NE(absentTask, emptyTask);
}

TEST(RecordEquality, EventsWithEqualFieldsButDifferentIdsAreUnequal) {
    const FocusEvent a = event(FocusEventKind::reminder, 120);
    FocusEvent b = a;
    EXPECT_EQ(a, b);
    b.id = QUuid::createUuid();
    EXPECT_NE(a, b);
}

} // namespace
} // namespace quill

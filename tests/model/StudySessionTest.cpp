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

TEST(EventCounts, EachKindCountsOnlyItselfAndPauseAndResumeNothing) {
    EXPECT_EQ(sessionWith({}).reminderCount(), 0);
    const StudySession s =
        sessionWith({event(FocusEventKind::reminder), event(FocusEventKind::mindWander),
                     event(FocusEventKind::pause), event(FocusEventKind::reminder),
                     event(FocusEventKind::fatigue), event(FocusEventKind::resume),
                     event(FocusEventKind::mindWander), event(FocusEventKind::reminder)});
    EXPECT_EQ(s.reminderCount(), 3);
    EXPECT_EQ(s.mindWanderCount(), 2);
    EXPECT_EQ(s.fatigueCount(), 1);
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

TEST(FocusEventKindRaw, RoundTripsEveryCaseAndAcceptsNothingElse) {
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
    for (const char* raw : {"MindWander", "mindwander", "Reminder", "REMINDER", " pause", "pause ",
                            "", "wander", "microBreak", "completed"})
        EXPECT_EQ(focusEventKindFromRaw(QString::fromUtf8(raw)), std::nullopt) << raw;
}

} // namespace
} // namespace quill

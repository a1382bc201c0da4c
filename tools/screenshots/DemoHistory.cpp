#include "DemoHistory.h"

namespace quill::screenshots {

namespace {
FocusEvent eventAt(const QDateTime& start, qint64 elapsed, FocusEventKind kind, int n) {
    // Stable ids keep the data file identical between runs.
    const QUuid id(QStringLiteral("00000000-0000-4000-8000-%1").arg(n, 12, 10, QLatin1Char('0')));
    return FocusEvent{id, start.addSecs(elapsed), elapsed, kind};
}
} // namespace

QList<StudySession> demoSessions(const QDateTime& now) {
    struct Plan {
        int daysAgo, hour, minute, planned, focusedMinutes, wanders, reminders, rating;
        const char* task;
    };
    static const Plan kPlans[] = {
        {0, 9, 10, 50, 50, 2, 10, 4, "AI 学习"},   {0, 14, 0, 30, 24, 1, 5, 3, "力扣"},
        {1, 10, 30, 50, 50, 1, 11, 5, "论文阅读"}, {1, 20, 0, 30, 30, 3, 6, 3, "力扣"},
        {2, 9, 0, 60, 52, 2, 12, 4, "AI 学习"},    {3, 15, 20, 30, 30, 0, 6, 5, nullptr},
        {4, 11, 0, 50, 41, 4, 9, 2, "论文阅读"},   {5, 19, 30, 30, 30, 1, 7, 4, "力扣"},
        {6, 8, 45, 50, 50, 2, 10, 4, "AI 学习"},
    };
    QList<StudySession> out;
    int n = 0;
    for (const Plan& p : kPlans) {
        const QDate day = now.toLocalTime().date().addDays(-p.daysAgo);
        StudySession s;
        s.id =
            QUuid(QStringLiteral("10000000-0000-4000-8000-%1").arg(++n, 12, 10, QLatin1Char('0')));
        s.startedAt = QDateTime(day, QTime(p.hour, p.minute), Qt::LocalTime).toUTC();
        s.focusedSeconds = qint64(p.focusedMinutes) * 60;
        s.endedAt = s.startedAt.addSecs(s.focusedSeconds + p.reminders * 10 + 90);
        if (p.task)
            s.taskName = QString::fromUtf8(p.task);
        s.plannedMinutes = p.planned;
        s.reminderMinimumMinutes = 3;
        s.reminderMaximumMinutes = 5;
        s.microBreakSeconds = 10;
        for (int i = 0; i < p.reminders; ++i)
            s.events << eventAt(s.startedAt, (i + 1) * 240, FocusEventKind::reminder, n * 100 + i);
        for (int i = 0; i < p.wanders; ++i)
            s.events << eventAt(s.startedAt, 600 + i * 420, FocusEventKind::mindWander,
                                n * 100 + 50 + i);
        s.startEnergy = 4;
        s.endEnergy = p.rating >= 4 ? 4 : 2;
        s.focusRating = p.rating;
        s.completed = p.focusedMinutes == p.planned;
        out << s;
    }
    return out;
}

AppSettings demoSettings(AppearanceMode appearance) {
    AppSettings s;
    s.appearanceMode = appearance;
    s.taskNames = QList<QString>{QStringLiteral("力扣"), QStringLiteral("AI 学习"),
                                 QStringLiteral("论文阅读")};
    s.selectedTaskName = QStringLiteral("AI 学习");
    s.selectedDurationMinutes = 50;
    s.showNextReminder = true;
    return s;
}

} // namespace quill::screenshots

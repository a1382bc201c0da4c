#include "SyntheticHistory.h"

#include <random>

namespace quill::bench {

namespace {
const QStringList& taskNames() {
    static const QStringList names{QStringLiteral("数学"),       QStringLiteral("英语阅读"),
                                   QStringLiteral("论文 第3章"), QStringLiteral("Deep work"),
                                   QStringLiteral("写作"),       QStringLiteral("吉他练习"),
                                   QStringLiteral("LeetCode"),   QStringLiteral("  复习 高数 "),
                                   QStringLiteral("b2"),         QStringLiteral("b10")};
    return names;
}

const QStringList& notes() {
    static const QStringList texts{QString(),
                                   QStringLiteral("状态不错"),
                                   QStringLiteral("有点困，下次早点开始"),
                                   QStringLiteral("finished chapter 3, \"proofs\" are hard"),
                                   QStringLiteral("手机放远一点 / 关掉通知"),
                                   QStringLiteral("走神两次，都是因为消息")};
    return texts;
}
} // namespace

QDateTime historyEnd() {
    return QDateTime(QDate(2026, 3, 5), QTime(14, 0), Qt::UTC);
}

QList<StudySession> syntheticHistory(qsizetype count) {
    std::mt19937 rng(20260305);
    auto between = [&](int lo, int hi) { return std::uniform_int_distribution<int>(lo, hi)(rng); };
    QList<StudySession> sessions;
    sessions.reserve(count);
    QDateTime start = historyEnd().addSecs(-3600);
    for (qsizetype i = 0; i < count; ++i) {
        StudySession s;
        s.id = QUuid::createUuid();
        s.startedAt = start;
        s.plannedMinutes = 5 * between(4, 12);
        s.focusedSeconds = s.plannedMinutes * 60 - (between(0, 3) == 0 ? between(0, 900) : 0);
        s.endedAt = start.addSecs(s.focusedSeconds + between(60, 600));
        const int task = between(0, taskNames().size());
        if (task < taskNames().size())
            s.taskName = taskNames()[task];
        s.reminderMinimumMinutes = 3;
        s.reminderMaximumMinutes = 5;
        s.microBreakSeconds = 10;
        qint64 elapsed = 0;
        const int events = between(6, 10);
        for (int e = 0; e < events && elapsed < s.focusedSeconds; ++e) {
            elapsed += between(60, 300);
            const int roll = between(0, 9);
            const FocusEventKind kind = roll < 5   ? FocusEventKind::reminder
                                        : roll < 7 ? FocusEventKind::mindWander
                                        : roll < 8 ? FocusEventKind::fatigue
                                        : roll < 9 ? FocusEventKind::pause
                                                   : FocusEventKind::resume;
            s.events.append(FocusEvent{QUuid::createUuid(), start.addSecs(elapsed), elapsed, kind});
        }
        s.startEnergy = between(1, 5);
        s.endEnergy = between(1, 5);
        s.focusRating = between(1, 5);
        s.completed = s.focusedSeconds == s.plannedMinutes * 60;
        s.note = notes()[between(0, notes().size() - 1)];
        sessions.append(s);
        // Three or four rounds a day, with a day off now and then.
        start = start.addSecs(-between(2, 6) * 3600 - between(0, 59) * 60);
    }
    return sessions;
}

AppSettings syntheticSettings() {
    AppSettings s;
    s.taskNames = taskNames();
    s.selectedTaskName = taskNames().first();
    s.ambientSounds = QList<QString>{QStringLiteral("rain"), QStringLiteral("brownNoise")};
    s.ambientVolumes = std::map<QString, double>{{QStringLiteral("rain"), 0.55},
                                                 {QStringLiteral("brownNoise"), 0.3}};
    s.playlistName = QStringLiteral("Lo-fi / 夜读");
    return s;
}

} // namespace quill::bench

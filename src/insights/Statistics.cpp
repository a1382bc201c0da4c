#include "insights/Statistics.h"

#include <QCollator>
#include <QLocale>
#include <QSet>
#include <algorithm>

namespace quill::Statistics {

namespace {
constexpr qsizetype kCapacitySample = 12;

QDate localDay(const QDateTime& t) {
    return t.toLocalTime().date();
}

// Per-session estimate of how long focus held, in minutes.
qint64 capacityEstimate(const StudySession& s) {
    for (const FocusEvent& e : s.events)
        if (e.kind == FocusEventKind::mindWander)
            return std::max<qint64>(e.elapsedSeconds / 60, 10);
    const qint64 m = s.roundedMinutes();
    if (s.focusRating > 3)
        return std::max<qint64>(m, 10);
    const auto threeQuarters = static_cast<qint64>(static_cast<double>(m) * 0.75);
    return std::max<qint64>(std::min(m, threeQuarters), 10);
}

// The C locale collates by code unit and ignores numeric mode, so "b10" would sort before
// "b2"; a process started with LC_ALL=C still gets the ordering a file browser shows.
QLocale taskNameLocale() {
    const QLocale system;
    return system.language() == QLocale::C ? QLocale(QLocale::Chinese, QLocale::China) : system;
}

bool qualifiesForGrowth(const StudySession& s) {
    return s.completed && s.focusRating >= 4 && s.endEnergy >= 2 && s.mindWanderCount() <= 1;
}
} // namespace

QList<StudySession> todaySessions(const QList<StudySession>& sessions, const QDateTime& now) {
    const QDate today = localDay(now);
    QList<StudySession> out;
    for (const StudySession& s : sessions)
        if (localDay(s.startedAt) == today)
            out.append(s);
    return out;
}

qint64 todayMinutes(const QList<StudySession>& sessions, const QDateTime& now) {
    const QDate today = localDay(now);
    qint64 total = 0;
    for (const StudySession& s : sessions)
        if (localDay(s.startedAt) == today)
            total += s.roundedMinutes();
    return total;
}

qint64 todayWanderCount(const QList<StudySession>& sessions, const QDateTime& now) {
    const QDate today = localDay(now);
    qint64 total = 0;
    for (const StudySession& s : sessions)
        if (localDay(s.startedAt) == today)
            total += s.mindWanderCount();
    return total;
}

qint64 streakDays(const QList<StudySession>& sessions, const QDateTime& now) {
    QSet<QDate> days;
    for (const StudySession& s : sessions)
        days.insert(localDay(s.startedAt));
    QDate cursor = localDay(now);
    if (!days.contains(cursor))
        cursor = cursor.addDays(-1);
    qint64 count = 0;
    while (days.contains(cursor)) {
        ++count;
        cursor = cursor.addDays(-1);
    }
    return count;
}

QList<DaySummary> weeklySummaries(const QList<StudySession>& sessions, const QDateTime& now) {
    const QDate today = localDay(now);
    QList<DaySummary> rows;
    for (int offset = -6; offset <= 0; ++offset) {
        const QDate day = today.addDays(offset);
        if (!day.isValid())
            continue;
        DaySummary row;
        row.date = day.startOfDay();
        rows.append(row);
    }
    for (const StudySession& s : sessions) {
        const qint64 back = localDay(s.startedAt).daysTo(today);
        if (back < 0 || back > 6)
            continue;
        for (DaySummary& row : rows) {
            if (row.date.date() == localDay(s.startedAt)) {
                row.minutes += s.roundedMinutes();
                row.sessions += 1;
                row.wanderCount += s.mindWanderCount();
            }
        }
    }
    return rows;
}

QList<TaskSummary> taskSummaries(const QList<StudySession>& sessions) {
    QList<TaskSummary> rows;
    QHash<QString, qsizetype> index;
    QList<qint64> ratingSums;
    for (const StudySession& s : sessions) {
        const QString name = s.displayTaskName();
        auto it = index.find(name);
        if (it == index.end()) {
            it = index.insert(name, rows.size());
            rows.append(TaskSummary{name, 0, 0, 0});
            ratingSums.append(0);
        }
        TaskSummary& row = rows[*it];
        row.focusedMinutes += s.roundedMinutes();
        row.sessions += 1;
        ratingSums[*it] += s.focusRating;
    }
    for (qsizetype i = 0; i < rows.size(); ++i)
        rows[i].averageFocus =
            rows[i].sessions > 0 ? double(ratingSums[i]) / double(rows[i].sessions) : 0;

    QCollator collator(taskNameLocale());
    collator.setNumericMode(true);
    collator.setCaseSensitivity(Qt::CaseInsensitive);
    std::stable_sort(rows.begin(), rows.end(), [&](const TaskSummary& a, const TaskSummary& b) {
        if (a.focusedMinutes != b.focusedMinutes)
            return a.focusedMinutes > b.focusedMinutes;
        return collator.compare(a.name, b.name) < 0;
    });
    return rows;
}

qint64 attentionCapacityMinutes(const QList<StudySession>& sessions) {
    if (sessions.isEmpty())
        return 30;
    const qsizetype n = std::min(sessions.size(), kCapacitySample);
    std::vector<qint64> estimates;
    estimates.reserve(n);
    for (qsizetype i = 0; i < n; ++i)
        estimates.push_back(capacityEstimate(sessions[i]));
    std::sort(estimates.begin(), estimates.end());
    return std::min<qint64>(estimates[estimates.size() / 2], 120);
}

qint64 recommendedMinutes(const QList<StudySession>& sessions) {
    if (sessions.size() < 3)
        return 30;
    const bool grow = std::all_of(sessions.begin(), sessions.begin() + 3, qualifiesForGrowth);
    const qint64 base = attentionCapacityMinutes(sessions) + (grow ? 5 : 0);
    return std::clamp<qint64>(base, 20, 120);
}

qint64 taskSessionCount(const QList<StudySession>& sessions, const QString& name) {
    return std::count_if(sessions.begin(), sessions.end(),
                         [&](const StudySession& s) { return s.displayTaskName() == name; });
}

QList<StudySession> completedSessions(const QList<StudySession>& sessions) {
    QList<StudySession> out;
    for (const StudySession& s : sessions)
        if (s.focusedSeconds >= 1)
            out.append(s);
    return out;
}

qint64 sampleSize(const QList<StudySession>& sessions) {
    return std::min<qint64>(sessions.size(), kCapacitySample);
}

QString wanderRateText(const QList<StudySession>& sessions) {
    qint64 minutes = 0;
    qint64 wanders = 0;
    for (const StudySession& s : sessions) {
        if (s.focusedSeconds < 1)
            continue;
        minutes += s.roundedMinutes();
        wanders += s.mindWanderCount();
    }
    if (minutes < 1)
        return QStringLiteral("—");
    return QString::asprintf("%.1f 次/时", double(wanders) / double(minutes) * 60.0);
}

QString energyDropText(const QList<StudySession>& sessions) {
    qint64 count = 0;
    double sum = 0;
    for (const StudySession& s : sessions) {
        if (s.focusedSeconds < 1)
            continue;
        sum += double(s.endEnergy - s.startEnergy);
        ++count;
    }
    if (count == 0)
        return QStringLiteral("—");
    return QString::asprintf("%+.1f 格", sum / double(count));
}

QList<StudySession> trendPoints(const QList<StudySession>& sessions) {
    QList<StudySession> out = sessions.mid(0, 10);
    std::reverse(out.begin(), out.end());
    return out;
}

QList<TaskSummary> taskBreakdownRows(const QList<StudySession>& sessions) {
    return taskSummaries(sessions).mid(0, 8);
}

qint64 taskBreakdownScale(const QList<StudySession>& sessions) {
    qint64 largest = 0;
    for (const TaskSummary& row : taskBreakdownRows(sessions))
        largest = std::max(largest, row.focusedMinutes);
    return largest < 2 ? 1 : largest;
}

} // namespace quill::Statistics

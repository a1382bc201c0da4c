#include "insights/Statistics.h"

#include "insights/NumberText.h"
#include "model/LocalDayStarts.h"

#include <QCollator>
#include <QHash>
#include <QLocale>
#include <algorithm>
#include <limits>

namespace quill::Statistics {

namespace {
constexpr qsizetype kCapacitySample = 12;

QDate localDay(const QDateTime& t) {
    return t.toLocalTime().date();
}

// A local calendar day as a span of instants. Converting each session's start to local time
// costs a time-zone lookup; comparing instants against a few day boundaries costs nothing.
struct DaySpan {
    qint64 start; ///< ms since the epoch of the day's first instant
    qint64 end;   ///< ms since the epoch of the next day's first instant
    bool contains(qint64 t) const { return t >= start && t < end; }
};

DaySpan daySpan(LocalDayStarts& starts, const QDate& day) {
    return {starts.startMs(day), starts.startMs(day.addDays(1))};
}

DaySpan daySpan(const QDate& day) {
    LocalDayStarts starts;
    return daySpan(starts, day);
}

qint64 startMs(const StudySession& s) {
    return s.startedAt.toMSecsSinceEpoch();
}

// The display task name without building it: the trimmed task name, or "未分类".
QStringView displayNameView(const StudySession& s) {
    static const QString uncategorized = uncategorizedTaskName();
    const QStringView trimmed = s.taskName ? QStringView(*s.taskName).trimmed() : QStringView();
    return trimmed.isEmpty() ? QStringView(uncategorized) : trimmed;
}

// The display name in one canonical form, so a name typed with a combining accent and the
// same name precomposed are one task, as the task list treats them.
QString groupKey(const StudySession& s) {
    const QStringView name = displayNameView(s);
    // Sharing the stored name when it needs no trimming keeps the common case allocation-free;
    // normalising text that is already composed only checks it.
    const bool whole =
        s.taskName && name.data() == s.taskName->constData() && name.size() == s.taskName->size();
    const QString owned = whole ? *s.taskName : name.toString();
    return owned.normalized(QString::NormalizationForm_C);
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
    const DaySpan today = daySpan(localDay(now));
    QList<StudySession> out;
    for (const StudySession& s : sessions)
        if (today.contains(startMs(s)))
            out.append(s);
    return out;
}

qint64 todayMinutes(const QList<StudySession>& sessions, const QDateTime& now) {
    const DaySpan today = daySpan(localDay(now));
    qint64 total = 0;
    for (const StudySession& s : sessions)
        if (today.contains(startMs(s)))
            total += s.roundedMinutes();
    return total;
}

qint64 todayWanderCount(const QList<StudySession>& sessions, const QDateTime& now) {
    const DaySpan today = daySpan(localDay(now));
    qint64 total = 0;
    for (const StudySession& s : sessions)
        if (today.contains(startMs(s)))
            total += s.mindWanderCount();
    return total;
}

qint64 streakDays(const QList<StudySession>& sessions, const QDateTime& now) {
    // Walk back day by day over the sorted start instants; a long streak costs few
    // time-zone lookups.
    std::vector<qint64> starts;
    starts.reserve(sessions.size());
    for (const StudySession& s : sessions)
        starts.push_back(startMs(s));
    std::sort(starts.begin(), starts.end());
    LocalDayStarts dayStarts;
    QDate cursor = localDay(now);
    auto hasSession = [&] {
        const qint64 begin = dayStarts.startMs(cursor);
        const qint64 end = dayStarts.startMs(cursor.addDays(1));
        const auto it = std::lower_bound(starts.begin(), starts.end(), begin);
        return it != starts.end() && *it < end;
    };
    if (!hasSession())
        cursor = cursor.addDays(-1);
    qint64 count = 0;
    while (cursor.isValid() && hasSession()) {
        ++count;
        cursor = cursor.addDays(-1);
    }
    return count;
}

QList<DaySummary> weeklySummaries(const QList<StudySession>& sessions, const QDateTime& now) {
    const QDate today = localDay(now);
    LocalDayStarts starts;
    QList<DaySummary> rows;
    std::vector<DaySpan> spans;
    for (int offset = -6; offset <= 0; ++offset) {
        const QDate day = today.addDays(offset);
        if (!day.isValid())
            continue;
        DaySummary row;
        spans.push_back(daySpan(starts, day));
        row.date = QDateTime::fromMSecsSinceEpoch(spans.back().start, Qt::LocalTime);
        rows.append(row);
    }
    for (const StudySession& s : sessions) {
        const qint64 t = startMs(s);
        for (std::size_t i = 0; i < spans.size(); ++i) {
            if (spans[i].contains(t)) {
                DaySummary& row = rows[qsizetype(i)];
                row.minutes += s.roundedMinutes();
                row.sessions += 1;
                row.wanderCount += s.mindWanderCount();
                break;
            }
        }
    }
    return rows;
}

qint64 saturatingAdd(qint64 a, qint64 b) {
    qint64 sum = 0;
    if (!__builtin_add_overflow(a, b, &sum))
        return sum;
    return b > 0 ? std::numeric_limits<qint64>::max() : std::numeric_limits<qint64>::min();
}

qint64 totalMinutes(const QList<StudySession>& sessions) {
    qint64 minutes = 0;
    for (const StudySession& s : sessions)
        minutes = saturatingAdd(minutes, s.roundedMinutes());
    return minutes;
}

double averageFocusRating(const QList<StudySession>& sessions) {
    __int128 sum = 0;
    for (const StudySession& s : sessions)
        sum += s.focusRating;
    return sessions.isEmpty() ? 0.0 : double(sum) / double(sessions.size());
}

QList<TaskSummary> taskSummaries(const QList<StudySession>& sessions) {
    QList<TaskSummary> rows;
    // Wide enough that no stored ratings, however absurd, overflow the sum.
    QList<__int128> ratingSums;
    // A group shows the name as its newest session wrote it.
    QHash<QString, qsizetype> index;
    for (const StudySession& s : sessions) {
        auto it = index.find(groupKey(s));
        if (it == index.end()) {
            it = index.insert(groupKey(s), rows.size());
            rows.append(TaskSummary{displayNameView(s).toString(), 0, 0, 0});
            ratingSums.append(0);
        }
        TaskSummary& row = rows[it.value()];
        row.focusedMinutes = saturatingAdd(row.focusedMinutes, s.roundedMinutes());
        row.sessions += 1;
        ratingSums[it.value()] += s.focusRating;
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
    // Display names are trimmed and never empty, so nothing else can match.
    if (name.isEmpty() || QStringView(name).trimmed().size() != name.size())
        return 0;
    const QString key = name.normalized(QString::NormalizationForm_C);
    return std::count_if(sessions.begin(), sessions.end(), [&](const StudySession& s) {
        // A stored name equal to `name` is its own display name: no trimming or normalising.
        if (s.taskName && *s.taskName == name)
            return true;
        return groupKey(s) == key;
    });
}

QList<StudySession> completedSessions(const QList<StudySession>& sessions) {
    QList<StudySession> out;
    out.reserve(sessions.size());
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
    return numbertext::oneDecimal(double(wanders) / double(minutes) * 60.0) +
           QStringLiteral(" 次/时");
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
    return numbertext::signedOneDecimal(sum / double(count)) + QStringLiteral(" 格");
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

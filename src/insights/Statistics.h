#pragma once

#include "insights/TaskSummary.h"
#include "model/StudySession.h"

#include <QList>

// Every figure about past rounds, computed on demand from the newest-first session list.
// Days are calendar days in the local time zone; `now` comes from the store's clock.
namespace quill::Statistics {

QList<StudySession> todaySessions(const QList<StudySession>& sessions, const QDateTime& now);
qint64 todayMinutes(const QList<StudySession>& sessions, const QDateTime& now);
qint64 todayWanderCount(const QList<StudySession>& sessions, const QDateTime& now);
qint64 streakDays(const QList<StudySession>& sessions, const QDateTime& now);
/// Seven rows, oldest first, today last.
QList<DaySummary> weeklySummaries(const QList<StudySession>& sessions, const QDateTime& now);
QList<TaskSummary> taskSummaries(const QList<StudySession>& sessions);
qint64 attentionCapacityMinutes(const QList<StudySession>& sessions);
qint64 recommendedMinutes(const QList<StudySession>& sessions);
qint64 taskSessionCount(const QList<StudySession>& sessions, const QString& name);
/// a + b, held at the ends of qint64 instead of wrapping (stored numbers may be absurd).
qint64 saturatingAdd(qint64 a, qint64 b);
/// Every session's rounded minutes, saturating.
qint64 totalMinutes(const QList<StudySession>& sessions);
/// The mean focus rating, 0 without sessions; exact whatever ratings were stored.
double averageFocusRating(const QList<StudySession>& sessions);

/// Sessions with at least one focused second, in store order.
QList<StudySession> completedSessions(const QList<StudySession>& sessions);
qint64 sampleSize(const QList<StudySession>& sessions);
QString wanderRateText(const QList<StudySession>& sessions);
QString energyDropText(const QList<StudySession>& sessions);
/// The ten most recent sessions, oldest first.
QList<StudySession> trendPoints(const QList<StudySession>& sessions);
QList<TaskSummary> taskBreakdownRows(const QList<StudySession>& sessions);
qint64 taskBreakdownScale(const QList<StudySession>& sessions);

} // namespace quill::Statistics

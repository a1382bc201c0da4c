#pragma once

#include "model/FocusEvent.h"

#include <QList>
#include <optional>

namespace quill {

/// One stored round, the unit of the history.
struct StudySession {
    QUuid id;
    QDateTime startedAt;
    QDateTime endedAt;
    std::optional<QString> taskName;
    qint64 plannedMinutes = 0;
    qint64 focusedSeconds = 0;
    qint64 reminderMinimumMinutes = 0;
    qint64 reminderMaximumMinutes = 0;
    qint64 microBreakSeconds = 0;
    QList<FocusEvent> events;
    qint64 startEnergy = 0;
    qint64 endEnergy = 0;
    qint64 focusRating = 0;
    bool completed = false;
    QString note;

    bool operator==(const StudySession&) const = default;

    qint64 reminderCount() const { return count(FocusEventKind::reminder); }
    qint64 mindWanderCount() const { return count(FocusEventKind::mindWander); }
    qint64 fatigueCount() const { return count(FocusEventKind::fatigue); }
    /// Trimmed task name, or "未分类" when there is none.
    QString displayTaskName() const;
    /// focusedSeconds / 60, rounded half away from zero: how stored minutes are shown and summed.
    qint64 roundedMinutes() const;

private:
    qint64 count(FocusEventKind kind) const;
};

/// The display name used for sessions without a task.
QString uncategorizedTaskName();

} // namespace quill

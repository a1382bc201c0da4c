#pragma once

#include <QDateTime>
#include <QString>

namespace quill {

/// One row per display task name.
struct TaskSummary {
    QString name;
    qint64 focusedMinutes = 0;
    qint64 sessions = 0;
    double averageFocus = 0;
    bool operator==(const TaskSummary&) const = default;
};

/// One row per calendar day.
struct DaySummary {
    QDateTime date; ///< start of the day, local time
    qint64 minutes = 0;
    qint64 sessions = 0;
    qint64 wanderCount = 0;
    bool operator==(const DaySummary&) const = default;
};

} // namespace quill

#pragma once

#include "model/StudySession.h"

#include <QDateTime>
#include <QUuid>
#include <ostream>

namespace quill::test {

/// A completed round rated 4 with every required field set to plain values: 25 minutes
/// planned, reminders every 3–5 minutes, 10-second breaks, energy 4 → 3. Callers adjust
/// what their case is about.
inline StudySession sampleSession(const QDateTime& start, qint64 focusedSeconds = 1500,
                                  qint64 wallSeconds = 1800) {
    StudySession s;
    s.id = QUuid::createUuid();
    s.startedAt = start;
    s.endedAt = start.addSecs(wallSeconds);
    s.plannedMinutes = 25;
    s.focusedSeconds = focusedSeconds;
    s.reminderMinimumMinutes = 3;
    s.reminderMaximumMinutes = 5;
    s.microBreakSeconds = 10;
    s.startEnergy = 4;
    s.endEnergy = 3;
    s.focusRating = 4;
    s.completed = true;
    return s;
}

} // namespace quill::test

// Readable failure messages for Qt strings.
inline void PrintTo(const QString& s, std::ostream* os) {
    *os << '"' << s.toStdString() << '"';
}

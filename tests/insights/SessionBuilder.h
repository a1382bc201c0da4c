#pragma once

#include "model/StudySession.h"
#include "support/SampleSession.h"

#include <QDateTime>
#include <QTimeZone>

namespace quill::test {

/// A local wall-clock instant; the insights tests run with TZ=Asia/Shanghai.
inline QDateTime local(int y, int mo, int d, int h = 12, int mi = 0, int s = 0) {
    return QDateTime(QDate(y, mo, d), QTime(h, mi, s), Qt::LocalTime);
}

/// Fluent maker of sessions: a 25-minute completed round rated 4 unless told otherwise.
class SessionBuilder {
public:
    explicit SessionBuilder(const QDateTime& start = local(2026, 3, 5, 9))
        : m_s(sampleSession(start)) {}
    SessionBuilder& seconds(qint64 s) { return m_s.focusedSeconds = s, *this; }
    SessionBuilder& minutes(qint64 m) { return seconds(m * 60); }
    SessionBuilder& rating(qint64 r) { return m_s.focusRating = r, *this; }
    SessionBuilder& energy(qint64 start, qint64 end) {
        m_s.startEnergy = start;
        m_s.endEnergy = end;
        return *this;
    }
    SessionBuilder& completed(bool c) { return m_s.completed = c, *this; }
    SessionBuilder& task(const QString& name) { return m_s.taskName = name, *this; }
    SessionBuilder& note(const QString& text) { return m_s.note = text, *this; }
    SessionBuilder& event(FocusEventKind kind, qint64 elapsed = 0) {
        m_s.events.append(
            FocusEvent{QUuid::createUuid(), m_s.startedAt.addSecs(elapsed), elapsed, kind});
        return *this;
    }
    SessionBuilder& wanderAt(qint64 elapsed) { return event(FocusEventKind::mindWander, elapsed); }
    SessionBuilder& wanders(int count) {
        for (int i = 0; i < count; ++i)
            wanderAt(60 * (i + 1));
        return *this;
    }
    operator StudySession() const { return m_s; }

private:
    StudySession m_s;
};

} // namespace quill::test

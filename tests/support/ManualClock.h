#pragma once

#include "store/Clock.h"

#include <QDateTime>

namespace quill::test {

/// Both clocks only move when a test moves them.
class ManualClock final : public Clock {
public:
    explicit ManualClock(QDateTime start = QDateTime(QDate(2026, 3, 5), QTime(8, 30), Qt::UTC))
        : m_now(std::move(start)) {}
    QDateTime now() const override { return m_now; }
    qint64 monotonicMs() const override { return m_monotonicMs; }
    qint64 suspendedMs() const override { return m_suspendedMs; }

    /// Sets the wall clock only.
    void set(const QDateTime& t) { m_now = t; }
    /// Moves the wall clock only (NTP, a manual change), firing nothing.
    void jump(qint64 ms) { m_now = m_now.addMSecs(ms); }
    /// Time passes while awake: both clocks move, nothing fires.
    void elapse(qint64 ms) {
        m_now = m_now.addMSecs(ms);
        m_monotonicMs += ms;
    }
    /// The computer sleeps: the wall clock moves, the monotonic clock stands still.
    void sleep(qint64 ms) {
        m_now = m_now.addMSecs(ms);
        m_suspendedMs += ms;
    }

private:
    QDateTime m_now;
    qint64 m_monotonicMs = 1'000'000;
    qint64 m_suspendedMs = 0;
};

} // namespace quill::test

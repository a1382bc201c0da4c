#pragma once

#include "store/Clock.h"
#include "store/Scheduler.h"

#include <QDateTime>
#include <map>
#include <memory>

namespace quill::test {

/// A clock that only moves when a test moves it.
class ManualClock final : public Clock {
public:
    explicit ManualClock(QDateTime start = QDateTime(QDate(2026, 3, 5), QTime(8, 30), Qt::UTC))
        : m_now(std::move(start)) {}
    QDateTime now() const override { return m_now; }
    void set(const QDateTime& t) { m_now = t; }
    /// Jumps the clock without firing anything (a sleep or a clock change).
    void jump(qint64 ms) { m_now = m_now.addMSecs(ms); }

private:
    QDateTime m_now;
};

/// Timers and delayed calls in virtual time. Like real timers they run on a monotonic
/// clock of their own: advance() moves both it and the wall clock to each due firing in
/// time order, while ManualClock::jump() moves only the wall clock (a sleep, a clock change).
class VirtualScheduler final : public Scheduler {
public:
    explicit VirtualScheduler(std::shared_ptr<ManualClock> clock);
    ~VirtualScheduler() override;

    std::unique_ptr<Handle> every(std::chrono::milliseconds period, Callback fn) override;
    std::unique_ptr<Handle> after(std::chrono::milliseconds delay, Callback fn) override;

    /// Runs everything due within the next `ms` milliseconds, then sets the clock to the end.
    void advance(qint64 ms);
    /// Runs whatever is due at the current instant without moving the clock.
    void runDue();
    /// Number of pending delayed calls (repeating timers excluded).
    int pendingDelayedCalls() const;

    struct Entry;

private:
    class EntryHandle;
    std::shared_ptr<ManualClock> m_clock;
    qint64 m_monotonicMs = 0;
    std::multimap<qint64, std::shared_ptr<Entry>> m_queue;
    void schedule(const std::shared_ptr<Entry>& entry, qint64 at);
};

} // namespace quill::test

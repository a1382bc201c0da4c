#pragma once

#include "store/Scheduler.h"
#include "support/ManualClock.h"

#include <QDateTime>
#include <map>
#include <memory>

namespace quill::test {

/// Timers and delayed calls in virtual time. Like real timers they run on the monotonic
/// clock: advance() moves both clocks to each due firing in time order. ManualClock::jump()
/// and sleep() leave the monotonic clock alone, so nothing fires for a clock change or a
/// sleep until the next advance(). Calls on the wall clock (afterWallTime) then fire at once,
/// as the kernel fires them for a set clock or a resume.
class VirtualScheduler final : public Scheduler {
public:
    explicit VirtualScheduler(std::shared_ptr<ManualClock> clock);
    ~VirtualScheduler() override;

    std::unique_ptr<Handle> every(std::chrono::milliseconds period, Callback fn) override;
    std::unique_ptr<Handle> after(std::chrono::milliseconds delay, Callback fn) override;
    std::unique_ptr<Handle> afterWallTime(std::chrono::milliseconds delay, Callback fn) override;

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
    std::multimap<qint64, std::shared_ptr<Entry>> m_queue;
    void schedule(const std::shared_ptr<Entry>& entry, qint64 at);
    qint64 wallOffset() const;
    void fireWallCallsOfAMovedClock();
};

} // namespace quill::test

#pragma once

#include "store/Scheduler.h"

#include <QDateTime>
#include <functional>
#include <memory>

namespace quill {

class Clock;

/// When the store's step runs. In a round, every 0.25 s. At rest nothing the step shows can
/// change before the next local minute (the greeting's hour, the day of today's figures), so
/// it waits for that minute to begin, on the wall clock: a wake from sleep or a set clock
/// steps at once and plans again. An app left open all day then wakes once a minute.
class StepTimer {
public:
    StepTimer(std::shared_ptr<Scheduler> scheduler, std::shared_ptr<Clock> clock,
              std::function<void()> step);
    /// Starts, or switches between the round's pace and the rest's; the rest begins with a
    /// step at once.
    void setResting(bool resting);
    bool isResting() const { return m_resting; }

    /// Milliseconds from `now` to the start of the next minute of local time.
    static qint64 msToNextLocalMinute(const QDateTime& now);

private:
    void waitForNextMinute();

    std::shared_ptr<Scheduler> m_scheduler;
    std::shared_ptr<Clock> m_clock;
    std::function<void()> m_step;
    bool m_resting = false;
    std::unique_ptr<Scheduler::Handle> m_timer;
};

} // namespace quill

#include "store/StepTimer.h"

#include "store/Clock.h"

namespace quill {

using namespace std::chrono_literals;

namespace {
constexpr qint64 kMinuteMs = 60'000;
} // namespace

StepTimer::StepTimer(std::shared_ptr<Scheduler> scheduler, std::shared_ptr<Clock> clock,
                     std::function<void()> step, std::function<qint64()> msToNextChange)
    : m_scheduler(std::move(scheduler)), m_clock(std::move(clock)), m_step(std::move(step)),
      m_msToNextChange(std::move(msToNextChange)) {}

qint64 StepTimer::msToNextLocalMinute(const QDateTime& now) {
    // Zones are offset from UTC by whole minutes, except local mean times before 1900.
    const qint64 localMs = now.toMSecsSinceEpoch() + qint64(now.offsetFromUtc()) * 1000;
    const qint64 into = ((localMs % kMinuteMs) + kMinuteMs) % kMinuteMs;
    return kMinuteMs - into;
}

void StepTimer::setResting(bool resting) {
    if (!resting) {
        m_resting = false;
        waitForNextChange();
        return;
    }
    if (m_timer && m_resting)
        return;
    m_resting = true;
    // Whatever the round left behind is shown now, not a minute later.
    m_timer = m_scheduler->after(0ms, [this] {
        m_step();
        waitForNextMinute();
    });
}

void StepTimer::replan() {
    if (m_timer && !m_resting)
        waitForNextChange();
}

void StepTimer::waitForNextChange() {
    m_timer = m_scheduler->after(std::chrono::milliseconds(m_msToNextChange()), [this] {
        m_step();
        if (!m_resting)
            waitForNextChange();
    });
}

void StepTimer::waitForNextMinute() {
    const QDateTime now = m_clock->now().toLocalTime();
    m_timer =
        m_scheduler->afterWallTime(std::chrono::milliseconds(msToNextLocalMinute(now)), [this] {
            m_step();
            waitForNextMinute();
        });
}

} // namespace quill

#include "store/StepTimer.h"

#include "store/Clock.h"

namespace quill {

using namespace std::chrono_literals;

namespace {
constexpr auto kRoundPeriod = 250ms;
constexpr qint64 kMinuteMs = 60'000;
} // namespace

StepTimer::StepTimer(std::shared_ptr<Scheduler> scheduler, std::shared_ptr<Clock> clock,
                     std::function<void()> step)
    : m_scheduler(std::move(scheduler)), m_clock(std::move(clock)), m_step(std::move(step)) {}

qint64 StepTimer::msToNextLocalMinute(const QDateTime& now) {
    // Zones are offset from UTC by whole minutes, except local mean times before 1900.
    const qint64 localMs = now.toMSecsSinceEpoch() + qint64(now.offsetFromUtc()) * 1000;
    const qint64 into = ((localMs % kMinuteMs) + kMinuteMs) % kMinuteMs;
    return kMinuteMs - into;
}

void StepTimer::setResting(bool resting) {
    if (m_timer && resting == m_resting)
        return;
    m_resting = resting;
    if (!resting) {
        m_timer = m_scheduler->every(kRoundPeriod, [this] { m_step(); });
        return;
    }
    // Whatever the round left behind is shown now, not a minute later.
    m_timer = m_scheduler->after(0ms, [this] {
        m_step();
        waitForNextMinute();
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

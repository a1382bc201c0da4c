#include "store/RoundClock.h"

#include <algorithm>
#include <cmath>

namespace quill {

namespace {
// NaN and negative spans count as nothing left.
double clampedLeft(double seconds) {
    return (std::isnan(seconds) || seconds < 0) ? 0.0 : seconds;
}

double secondsBetween(qint64 nowMs, qint64 deadlineMs) {
    return static_cast<double>(deadlineMs - nowMs) / 1000.0;
}
} // namespace

void RoundClock::start(qint64 nowMs, qint64 plannedSeconds) {
    m_heldSeconds = static_cast<double>(plannedSeconds);
    m_focusDeadlineMs = nowMs + plannedSeconds * 1000;
    m_breakDeadlineMs.reset();
}

void RoundClock::pause(qint64 nowMs, double shownSeconds) {
    m_heldSeconds =
        clampedLeft(m_focusDeadlineMs ? secondsBetween(nowMs, *m_focusDeadlineMs) : shownSeconds);
    m_focusDeadlineMs.reset();
    m_reminderDeadlineMs.reset();
}

void RoundClock::startBreak(qint64 nowMs, qint64 seconds) {
    m_breakDeadlineMs = nowMs + seconds * 1000;
}

void RoundClock::resume(qint64 nowMs) {
    m_breakDeadlineMs.reset();
    m_focusDeadlineMs = nowMs + static_cast<qint64>(std::llround(m_heldSeconds * 1000));
}

double RoundClock::focusLeft(qint64 nowMs) const {
    return clampedLeft(m_focusDeadlineMs ? secondsBetween(nowMs, *m_focusDeadlineMs)
                                         : m_heldSeconds);
}

double RoundClock::breakLeft(qint64 nowMs) const {
    return clampedLeft(m_breakDeadlineMs ? secondsBetween(nowMs, *m_breakDeadlineMs) : 0);
}

void RoundClock::scheduleReminder(qint64 nowMs, qint64 delaySeconds) {
    if (delaySeconds < static_cast<qint64>(m_heldSeconds))
        m_reminderDeadlineMs = nowMs + delaySeconds * 1000;
    else
        m_reminderDeadlineMs.reset();
}

bool RoundClock::reminderDue(qint64 nowMs) const {
    return m_reminderDeadlineMs && nowMs >= *m_reminderDeadlineMs;
}

std::optional<qint64> RoundClock::secondsToReminder(qint64 nowMs) const {
    if (!m_reminderDeadlineMs)
        return std::nullopt;
    return std::max<qint64>((*m_reminderDeadlineMs - nowMs) / 1000, 0);
}

} // namespace quill

#pragma once

#include <QtGlobal>
#include <optional>

namespace quill {

/// The running round's deadlines on the monotonic clock, in milliseconds, and the net focus
/// seconds held while no focus deadline runs (paused or in a micro-break). Callers pass the
/// current monotonic time, so the value holds no clock of its own.
class RoundClock {
public:
    /// A round of `plannedSeconds` starts at `nowMs`; no break or reminder is due yet.
    void start(qint64 nowMs, qint64 plannedSeconds);
    /// Holds the focus time left and drops the focus and reminder deadlines. Without a focus
    /// deadline, `shownSeconds` (what the screens show) is held instead.
    void pause(qint64 nowMs, double shownSeconds);
    /// A micro-break of `seconds` after pause().
    void startBreak(qint64 nowMs, qint64 seconds);
    /// Focus runs again from the held time; any break ends.
    void resume(qint64 nowMs);
    /// Drops every deadline and the held time.
    void clear() { *this = RoundClock(); }

    /// Net focus seconds left, never negative: to the focus deadline, or the held time.
    double focusLeft(qint64 nowMs) const;
    /// Seconds left in the micro-break, never negative; 0 without one.
    double breakLeft(qint64 nowMs) const;

    /// The next reminder `delaySeconds` from now, if that comes before the held time runs out.
    void scheduleReminder(qint64 nowMs, qint64 delaySeconds);
    bool reminderDue(qint64 nowMs) const;
    /// Whole seconds to the next reminder, never negative; none when no reminder is due.
    std::optional<qint64> secondsToReminder(qint64 nowMs) const;

private:
    std::optional<qint64> m_focusDeadlineMs;
    std::optional<qint64> m_breakDeadlineMs;
    std::optional<qint64> m_reminderDeadlineMs;
    double m_heldSeconds = 0;
};

} // namespace quill

#pragma once

#include <QDateTime>
#include <QElapsedTimer>

namespace quill {

/// The two clocks a round needs, injected so tests move each on its own in virtual time.
/// Stored dates come from the wall clock; the round's deadlines run on the monotonic one,
/// so neither time asleep nor a change of the wall clock ever counts as focus.
class Clock {
public:
    virtual ~Clock() = default;
    /// Wall-clock time.
    virtual QDateTime now() const = 0;
    /// Milliseconds on a clock that never jumps and stands still while the computer sleeps.
    virtual qint64 monotonicMs() const {
        static const QElapsedTimer started = [] {
            QElapsedTimer t;
            t.start();
            return t;
        }();
        return started.elapsed();
    }
    /// Milliseconds spent suspended since some fixed moment: growth between two reads means
    /// the computer slept in between.
    virtual qint64 suspendedMs() const { return 0; }
};

} // namespace quill

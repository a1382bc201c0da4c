#pragma once

#include <QCoreApplication>
#include <QDeadlineTimer>
#include <QEventLoop>
#include <functional>

namespace quill::test {

/// Runs the event loop until `done` holds. Used only for work that really happens outside
/// the test (a child process, a bus round trip); the limit is a safety net against a hang,
/// never a measurement.
inline bool waitUntil(const std::function<bool()>& done, int limitMs = 20000) {
    QDeadlineTimer limit(limitMs);
    while (!done()) {
        if (limit.hasExpired())
            return false;
        QCoreApplication::processEvents(QEventLoop::AllEvents | QEventLoop::WaitForMoreEvents, 20);
    }
    return true;
}

/// Handles whatever is already queued, without waiting for anything new.
inline void drainEvents() {
    for (int i = 0; i < 5; ++i)
        QCoreApplication::processEvents(QEventLoop::AllEvents);
}

} // namespace quill::test

#include "store/WallClockTimer.h"

#include <QSocketNotifier>
#include <QTimer>
#include <algorithm>
#include <cstdint>

#if defined(Q_OS_LINUX)
#include <sys/timerfd.h>
#include <time.h>
#include <unistd.h>
#endif

namespace quill {

namespace {

// The callback may drop the handle that runs it, so it lives in shared state.
struct CallState {
    Scheduler::Callback fn;
    bool done = false;
    void fire() {
        if (done)
            return;
        done = true;
        auto keep = fn; // survives the handle being dropped by fn
        keep();
    }
};

class QtTimerHandle final : public Scheduler::Handle {
public:
    QtTimerHandle(std::chrono::milliseconds delay, std::shared_ptr<CallState> state)
        : m_state(std::move(state)), m_timer(new QTimer) {
        m_timer->setSingleShot(true);
        m_timer->setTimerType(Qt::PreciseTimer);
        QObject::connect(m_timer, &QTimer::timeout, m_timer, [s = m_state] { s->fire(); });
        m_timer->start(delay);
    }
    ~QtTimerHandle() override {
        m_state->done = true;
        m_timer->stop();
        m_timer->deleteLater();
    }
    bool isActive() const override { return !m_state->done; }

private:
    std::shared_ptr<CallState> m_state;
    QTimer* m_timer;
};

#if defined(Q_OS_LINUX)
class TimerFdHandle final : public Scheduler::Handle {
public:
    TimerFdHandle(int fd, std::shared_ptr<CallState> state)
        : m_state(std::move(state)), m_notifier(new QSocketNotifier(fd, QSocketNotifier::Read)) {
        QObject::connect(m_notifier, &QSocketNotifier::activated, m_notifier, [s = m_state, fd] {
            // Drains the expiry count, or ECANCELED when the clock was set: either way, due.
            std::uint64_t expirations = 0;
            [[maybe_unused]] const ssize_t n = ::read(fd, &expirations, sizeof expirations);
            s->fire();
        });
        // The notifier goes with the event loop's next pass; the descriptor only after it.
        QObject::connect(m_notifier, &QObject::destroyed, [fd] { ::close(fd); });
    }
    ~TimerFdHandle() override {
        m_state->done = true;
        m_notifier->setEnabled(false);
        m_notifier->deleteLater();
    }
    bool isActive() const override { return !m_state->done; }

private:
    std::shared_ptr<CallState> m_state;
    QSocketNotifier* m_notifier;
};

int armedTimerFd(std::chrono::milliseconds delay) {
    const int fd = timerfd_create(CLOCK_REALTIME, TFD_NONBLOCK | TFD_CLOEXEC);
    if (fd < 0)
        return -1;
    timespec now{};
    clock_gettime(CLOCK_REALTIME, &now);
    const auto due = std::chrono::seconds(now.tv_sec) + std::chrono::nanoseconds(now.tv_nsec) +
                     std::max(delay, std::chrono::milliseconds(0));
    itimerspec spec{};
    const auto seconds = std::chrono::duration_cast<std::chrono::seconds>(due);
    spec.it_value.tv_sec = time_t(seconds.count());
    spec.it_value.tv_nsec = long((due - seconds).count());
    if (spec.it_value.tv_sec == 0 && spec.it_value.tv_nsec == 0)
        spec.it_value.tv_nsec = 1; // all zero would disarm it
    if (timerfd_settime(fd, TFD_TIMER_ABSTIME | TFD_TIMER_CANCEL_ON_SET, &spec, nullptr) != 0) {
        ::close(fd);
        return -1;
    }
    return fd;
}
#endif

} // namespace

std::unique_ptr<Scheduler::Handle> makeWallClockTimer(std::chrono::milliseconds delay,
                                                      Scheduler::Callback fn) {
    auto state = std::make_shared<CallState>();
    state->fn = std::move(fn);
#if defined(Q_OS_LINUX)
    if (const int fd = armedTimerFd(delay); fd >= 0)
        return std::make_unique<TimerFdHandle>(fd, std::move(state));
#endif
    return std::make_unique<QtTimerHandle>(delay, std::move(state));
}

} // namespace quill

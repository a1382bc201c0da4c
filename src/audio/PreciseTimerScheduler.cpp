#include "audio/PreciseTimerScheduler.h"

#include <QTimer>

namespace quill {

namespace {
class TimerHandle final : public Scheduler::Handle {
public:
    TimerHandle(std::chrono::milliseconds interval, bool repeating, Scheduler::Callback fn)
        : m_timer(new QTimer) {
        m_timer->setTimerType(Qt::PreciseTimer);
        m_timer->setSingleShot(!repeating);
        m_timer->setInterval(interval);
        // The callback may destroy this handle, so it must not reach back into it.
        QObject::connect(m_timer, &QTimer::timeout, m_timer, std::move(fn));
        m_timer->start();
    }
    ~TimerHandle() override {
        // The handle may die inside the timer's own timeout; let the loop free it.
        m_timer->stop();
        m_timer->deleteLater();
    }
    TimerHandle(const TimerHandle&) = delete;
    TimerHandle& operator=(const TimerHandle&) = delete;
    bool isActive() const override { return m_timer->isActive(); }

private:
    QTimer* m_timer;
};
} // namespace

std::unique_ptr<Scheduler::Handle> PreciseTimerScheduler::every(std::chrono::milliseconds period,
                                                                Callback fn) {
    return std::make_unique<TimerHandle>(period, true, std::move(fn));
}

std::unique_ptr<Scheduler::Handle> PreciseTimerScheduler::after(std::chrono::milliseconds delay,
                                                                Callback fn) {
    return std::make_unique<TimerHandle>(delay, false, std::move(fn));
}

} // namespace quill

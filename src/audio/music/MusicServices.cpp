#include "audio/music/MusicServices.h"

#include "audio/music/AppleScriptMusicBackend.h"
#include "audio/music/AppleScripts.h"
#include "audio/music/DesktopEntryLauncher.h"
#include "audio/music/MprisMusicBackend.h"
#include "audio/music/MusicController.h"
#include "audio/music/QtProcessLauncher.h"

#include <QTimer>

#ifdef Q_OS_MACOS
#include "audio/music/MacNetEaseEnvironment.h"
#endif

namespace quill {

namespace {

// Deadlines and polls of the MPRIS backend on real timers. Each firing is queued, so a
// callback never runs inside the timer's own signal.
class TimerHandle final : public Scheduler::Handle {
public:
    TimerHandle(std::chrono::milliseconds interval, bool repeating, Scheduler::Callback fn)
        : m_fn(std::move(fn)) {
        m_timer.setInterval(interval);
        m_timer.setSingleShot(!repeating);
        QObject::connect(
            &m_timer, &QTimer::timeout, &m_timer, [this] { m_fn(); }, Qt::QueuedConnection);
        m_timer.start();
    }
    bool isActive() const override { return m_timer.isActive(); }

private:
    QTimer m_timer;
    Scheduler::Callback m_fn;
};

class TimerScheduler final : public Scheduler {
public:
    std::unique_ptr<Handle> every(std::chrono::milliseconds period, Callback fn) override {
        return std::make_unique<TimerHandle>(period, true, std::move(fn));
    }
    std::unique_ptr<Handle> after(std::chrono::milliseconds delay, Callback fn) override {
        return std::make_unique<TimerHandle>(delay, false, std::move(fn));
    }
};

std::unique_ptr<MusicPlayer> createPlatformBackend() {
#ifdef Q_OS_MACOS
    return std::make_unique<AppleScriptMusicBackend>(std::make_shared<QtProcessLauncher>(),
                                                     std::make_shared<MacNetEaseEnvironment>(),
                                                     applescript::defaultInterpreter());
#else
    return std::make_unique<MprisMusicBackend>(
        MprisMusicBackend::sessionBus(), createMusicScheduler(),
        std::make_shared<DesktopEntryLauncher>(),
        std::make_shared<DesktopEntryLauncher>(DesktopEntryLauncher::musicPlayerEntryNames()));
#endif
}

} // namespace

std::shared_ptr<Scheduler> createMusicScheduler() {
    return std::make_shared<TimerScheduler>();
}

std::shared_ptr<MusicPlayer> createMusicPlayer() {
    return std::make_shared<MusicController>(createPlatformBackend());
}

} // namespace quill

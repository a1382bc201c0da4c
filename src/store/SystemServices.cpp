#include "store/SystemServices.h"

#include "store/FileSystemFolderWatcher.h"

#include "store/ThreadWorkQueue.h"
#include "store/WallClockTimer.h"

#include <QDir>
#include <QFileDialog>
#include <QRandomGenerator>
#include <QStandardPaths>
#include <QTimer>
#include <time.h>

namespace quill {

namespace {

class SystemClock final : public Clock {
public:
    QDateTime now() const override { return QDateTime::currentDateTimeUtc(); }
#if defined(Q_OS_LINUX)
    // CLOCK_MONOTONIC stops during suspend; CLOCK_BOOTTIME runs on. Their difference only
    // grows across a suspend.
    qint64 monotonicMs() const override {
        return msOf(CLOCK_MONOTONIC);
    }
    qint64 suspendedMs() const override {
        return msOf(CLOCK_BOOTTIME) - msOf(CLOCK_MONOTONIC);
    }

private:
    static qint64 msOf(clockid_t id) {
        timespec ts{};
        clock_gettime(id, &ts);
        return qint64(ts.tv_sec) * 1000 + ts.tv_nsec / 1'000'000;
    }
#elif defined(Q_OS_MACOS)
    // The uptime clock stops during sleep (as mach_absolute_time does); the raw monotonic
    // clock keeps counting (as mach_continuous_time does).
    qint64 monotonicMs() const override {
        return qint64(clock_gettime_nsec_np(CLOCK_UPTIME_RAW) / 1'000'000);
    }
    qint64 suspendedMs() const override {
        return qint64(clock_gettime_nsec_np(CLOCK_MONOTONIC_RAW) / 1'000'000) - monotonicMs();
    }
#endif
};

// A handle may be dropped from inside its own callback (a debounce that re-arms itself),
// so the callback lives in shared state and the timer is deleted later, never under itself.
class TimerHandle final : public Scheduler::Handle {
public:
    TimerHandle(std::chrono::milliseconds interval, bool repeating, Scheduler::Callback fn)
        : m_state(std::make_shared<State>()), m_timer(new QTimer) {
        m_state->fn = std::move(fn);
        m_state->repeating = repeating;
        m_timer->setInterval(interval);
        m_timer->setSingleShot(!repeating);
        m_timer->setTimerType(repeating ? Qt::CoarseTimer : Qt::PreciseTimer);
        // Runs straight from the timer's event: queueing it again would cost every step of
        // the app at rest another wake-up of the event loop.
        QObject::connect(m_timer, &QTimer::timeout, m_timer, [state = m_state] {
            if (state->cancelled)
                return;
            if (!state->repeating)
                state->fired = true;
            auto keep = state; // survives the handle being dropped by fn
            keep->fn();
        });
        m_timer->start();
    }
    ~TimerHandle() override {
        m_state->cancelled = true;
        m_timer->stop();
        m_timer->deleteLater();
    }
    bool isActive() const override { return !m_state->cancelled && !m_state->fired; }

private:
    struct State {
        Scheduler::Callback fn;
        bool repeating = false;
        bool cancelled = false;
        bool fired = false;
    };
    std::shared_ptr<State> m_state;
    QTimer* m_timer;
};

class QtScheduler final : public Scheduler {
public:
    std::unique_ptr<Handle> every(std::chrono::milliseconds period, Callback fn) override {
        return std::make_unique<TimerHandle>(period, true, std::move(fn));
    }
    std::unique_ptr<Handle> after(std::chrono::milliseconds delay, Callback fn) override {
        return std::make_unique<TimerHandle>(delay, false, std::move(fn));
    }
    std::unique_ptr<Handle> afterWallTime(std::chrono::milliseconds delay, Callback fn) override {
        return makeWallClockTimer(delay, std::move(fn));
    }
};

class SystemRandom final : public RandomSource {
public:
    qint64 between(qint64 lowest, qint64 highest) override {
        if (highest <= lowest)
            return lowest;
        return QRandomGenerator::system()->bounded(lowest, highest + 1);
    }
};

class StandardDataLocation final : public DataLocation {
public:
    QString directory() const override { return defaultDataDirectory(); }
    QString rescueDirectory() const override {
        // Qt 6.4 has no state location; the base directory spec's default stands in.
        QString base = qEnvironmentVariable("XDG_STATE_HOME");
        if (!QDir::isAbsolutePath(base))
            base = QDir::homePath() + QStringLiteral("/.local/state");
        return QDir(base).filePath(QStringLiteral("Quillmere"));
    }
};

class DialogFileChooser final : public FileChooser {
public:
    std::optional<QString> chooseSaveLocation(const QString& suggestedName,
                                              const QString& filter) override {
        const QString start =
            QDir(QStandardPaths::writableLocation(QStandardPaths::DocumentsLocation))
                .filePath(suggestedName);
        const QString path = QFileDialog::getSaveFileName(nullptr, QString(), start, filter);
        if (path.isEmpty())
            return std::nullopt;
        return path;
    }
};

} // namespace

QString defaultDataDirectory() {
    const QString base = QStandardPaths::writableLocation(QStandardPaths::GenericDataLocation);
    if (base.isEmpty())
        return {};
    return QDir(base).filePath(QStringLiteral("Quillmere"));
}

Services makeSystemServices() {
    Services s;
    s.clock = std::make_shared<SystemClock>();
    s.scheduler = std::make_shared<QtScheduler>();
    s.random = std::make_shared<SystemRandom>();
    s.dataLocation = std::make_shared<StandardDataLocation>();
    s.fileChooser = std::make_shared<DialogFileChooser>();
    s.work = std::make_shared<ThreadWorkQueue>();
    s.folderWatcher = std::make_shared<FileSystemFolderWatcher>();
    return s;
}

} // namespace quill

#include "store/SystemServices.h"

#include <QDir>
#include <QFileDialog>
#include <QRandomGenerator>
#include <QStandardPaths>
#include <QTimer>

namespace quill {

namespace {

class SystemClock final : public Clock {
public:
    QDateTime now() const override { return QDateTime::currentDateTimeUtc(); }
};

class TimerHandle final : public Scheduler::Handle {
public:
    TimerHandle(std::chrono::milliseconds interval, bool repeating, Scheduler::Callback fn)
        : m_fn(std::move(fn)) {
        m_timer.setInterval(interval);
        m_timer.setSingleShot(!repeating);
        m_timer.setTimerType(repeating ? Qt::CoarseTimer : Qt::PreciseTimer);
        // Each firing queues its work, so a step never runs inside another event's handler.
        QObject::connect(
            &m_timer, &QTimer::timeout, &m_timer, [this] { m_fn(); }, Qt::QueuedConnection);
        m_timer.start();
    }
    bool isActive() const override { return m_timer.isActive(); }

private:
    QTimer m_timer;
    Scheduler::Callback m_fn;
};

class QtScheduler final : public Scheduler {
public:
    std::unique_ptr<Handle> every(std::chrono::milliseconds period, Callback fn) override {
        return std::make_unique<TimerHandle>(period, true, std::move(fn));
    }
    std::unique_ptr<Handle> after(std::chrono::milliseconds delay, Callback fn) override {
        return std::make_unique<TimerHandle>(delay, false, std::move(fn));
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
    return s;
}

} // namespace quill

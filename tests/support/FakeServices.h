#pragma once

#include "store/Services.h"
#include "support/VirtualScheduler.h"

#include <QStringList>
#include <QTemporaryDir>
#include <deque>
#include <vector>

namespace quill::test {

/// Returns scripted values first, then the lowest value of each range (or a seeded draw).
class ScriptedRandom final : public RandomSource {
public:
    qint64 between(qint64 lowest, qint64 highest) override;
    std::deque<qint64> script;                     ///< values returned as they are, in order
    std::vector<std::pair<qint64, qint64>> ranges; ///< every range asked for
    bool useHighest = false;
};

class TempDataLocation final : public DataLocation {
public:
    TempDataLocation();
    QString directory() const override {
        return m_overridden ? m_override : m_dir.path() + QStringLiteral("/Quillmere");
    }
    QString filePath() const { return directory() + QStringLiteral("/focus-data.json"); }
    QString rescueDirectory() const override { return m_dir.path() + QStringLiteral("/state"); }
    void setDirectory(const QString& d) {
        m_override = d;
        m_overridden = true;
    }

private:
    QTemporaryDir m_dir;
    QString m_override;
    bool m_overridden = false;
};

class FakeFileChooser final : public FileChooser {
public:
    std::optional<QString> chooseSaveLocation(const QString& suggestedName,
                                              const QString& filter) override {
        suggestedNames << suggestedName;
        filters << filter;
        return answer;
    }
    std::optional<QString> answer;
    QStringList suggestedNames, filters;
};

class RecordingSoundPlayer final : public SoundPlayer {
public:
    void play(const QString& name) override { played << name; }
    QStringList played;
};

class RecordingAmbientOutput final : public AmbientOutput {
public:
    void setLevels(const AmbientLevels& levels) override { levelUpdates.push_back(levels); }
    bool play() override {
        ++playCalls;
        return playResult;
    }
    void stop() override { ++stopCalls; }
    /// The output failed after play() returned, or was lost for good.
    void endByItself() const { reportStopped(); }
    std::vector<AmbientLevels> levelUpdates;
    int playCalls = 0, stopCalls = 0;
    bool playResult = true;
};

class RecordingMusicPlayer final : public MusicPlayer {
public:
    struct Request {
        MusicService service;
        MusicSource source;
        QString playlistName;
        Completion completion;
    };
    void playRandom(MusicService service, MusicSource source, const QString& playlistName,
                    Completion completion) override {
        requests.push_back({service, source, playlistName, std::move(completion)});
    }
    std::vector<Request> requests;
};

/// Runs each job at once on the calling thread, or holds the jobs until runHeld() while
/// `hold` is set. As with the real queue, `done` comes later, as a delayed call due at once:
/// it runs on the scheduler's next advance().
class InlineWorkQueue final : public WorkQueue {
public:
    explicit InlineWorkQueue(std::shared_ptr<VirtualScheduler> scheduler)
        : m_scheduler(std::move(scheduler)) {}
    void post(std::function<void()> work, std::function<void()> done) override;
    void waitForIdle() override { runHeld(); }
    /// Runs the held jobs in order, each followed by its completion.
    void runHeld();
    int heldJobs() const { return int(m_held.size()); }
    bool hold = false;
    int jobsRun = 0;

private:
    std::shared_ptr<VirtualScheduler> m_scheduler;
    std::deque<std::pair<std::function<void()>, std::function<void()>>> m_held;
    std::vector<std::unique_ptr<Scheduler::Handle>> m_deliveries;
};

/// Reports a change to the data folder when the test says so.
class ManualFolderWatcher final : public FolderWatcher {
public:
    std::unique_ptr<Handle> watch(const QString& directory, const QString& fileName,
                                  std::function<void()> changed) override;
    /// Calls every live watch's callback, as a change in the folder would.
    void announceChange();
    int liveWatches() const;

private:
    struct Entry {
        std::function<void()> changed;
    };
    std::vector<std::weak_ptr<Entry>> m_entries;
};

/// A complete set of fakes plus the Services bundle that shares them.
struct FakeServices {
    FakeServices();
    std::shared_ptr<ManualClock> clock;
    std::shared_ptr<VirtualScheduler> scheduler;
    std::shared_ptr<ScriptedRandom> random;
    std::shared_ptr<TempDataLocation> data;
    std::shared_ptr<FakeFileChooser> files;
    std::shared_ptr<RecordingSoundPlayer> sounds;
    std::shared_ptr<RecordingAmbientOutput> ambient;
    std::shared_ptr<RecordingMusicPlayer> music;
    std::shared_ptr<InlineWorkQueue> work;
    /// None unless a test gives them.
    std::shared_ptr<NotificationHold> notificationHold;
    std::shared_ptr<ScreenLockWatch> screenLock;
    std::shared_ptr<ManualFolderWatcher> watcher;
    Services services() const;
};

} // namespace quill::test

#include "support/FakeServices.h"

namespace quill::test {

qint64 ScriptedRandom::between(qint64 lowest, qint64 highest) {
    ranges.emplace_back(lowest, highest);
    if (!script.empty()) {
        const qint64 v = script.front();
        script.pop_front();
        return v;
    }
    return useHighest ? highest : lowest;
}

TempDataLocation::TempDataLocation() = default;

void InlineWorkQueue::post(std::function<void()> work, std::function<void()> done) {
    m_held.emplace_back(std::move(work), std::move(done));
    if (!hold)
        runHeld();
}

void InlineWorkQueue::runHeld() {
    while (!m_held.empty()) {
        auto [work, done] = std::move(m_held.front());
        m_held.pop_front();
        work();
        ++jobsRun;
        std::erase_if(m_deliveries, [](const auto& h) { return !h->isActive(); });
        if (done)
            m_deliveries.push_back(m_scheduler->after(std::chrono::milliseconds(0), done));
    }
}

namespace {
class ManualWatch final : public FolderWatcher::Handle {
public:
    std::shared_ptr<void> entry;
};
} // namespace

std::unique_ptr<FolderWatcher::Handle> ManualFolderWatcher::watch(const QString&, const QString&,
                                                                  std::function<void()> changed) {
    auto entry = std::make_shared<Entry>(Entry{std::move(changed)});
    m_entries.push_back(entry);
    auto handle = std::make_unique<ManualWatch>();
    handle->entry = entry;
    return handle;
}

void ManualFolderWatcher::announceChange() {
    std::erase_if(m_entries, [](const auto& e) { return e.expired(); });
    for (const auto& weak : std::vector(m_entries))
        if (auto entry = weak.lock())
            entry->changed();
}

int ManualFolderWatcher::liveWatches() const {
    return int(std::count_if(m_entries.begin(), m_entries.end(),
                             [](const auto& e) { return !e.expired(); }));
}

FakeServices::FakeServices()
    : clock(std::make_shared<ManualClock>()), scheduler(std::make_shared<VirtualScheduler>(clock)),
      random(std::make_shared<ScriptedRandom>()), data(std::make_shared<TempDataLocation>()),
      files(std::make_shared<FakeFileChooser>()), sounds(std::make_shared<RecordingSoundPlayer>()),
      ambient(std::make_shared<RecordingAmbientOutput>()),
      music(std::make_shared<RecordingMusicPlayer>()),
      work(std::make_shared<InlineWorkQueue>(scheduler)),
      watcher(std::make_shared<ManualFolderWatcher>()) {}

Services FakeServices::services() const {
    return Services{clock, scheduler, random,           data,      files, sounds, ambient, music,
                    work,  watcher,   notificationHold, screenLock};
}

} // namespace quill::test

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

FakeServices::FakeServices()
    : clock(std::make_shared<ManualClock>()), scheduler(std::make_shared<VirtualScheduler>(clock)),
      random(std::make_shared<ScriptedRandom>()), data(std::make_shared<TempDataLocation>()),
      files(std::make_shared<FakeFileChooser>()), sounds(std::make_shared<RecordingSoundPlayer>()),
      ambient(std::make_shared<RecordingAmbientOutput>()),
      music(std::make_shared<RecordingMusicPlayer>()) {}

Services FakeServices::services() const {
    return Services{clock, scheduler, random, data, files, sounds, ambient, music};
}

} // namespace quill::test

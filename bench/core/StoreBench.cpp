// The UI thread's share of saving and the settings repair on large inputs.
#include "SyntheticHistory.h"
#include "storage/Persistence.h"
#include "store/AppStore.h"
#include "store/SystemServices.h"

#include <QTemporaryDir>
#include <benchmark/benchmark.h>

namespace quill::bench {
namespace {

class FolderLocation final : public DataLocation {
public:
    explicit FolderLocation(QString folder) : m_folder(std::move(folder)) {}
    QString directory() const override { return m_folder; }

private:
    QString m_folder;
};

class NoSounds final : public SoundPlayer {
public:
    void play(const QString&) override {}
};
class NoAmbient final : public AmbientOutput {
public:
    void setLevels(const AmbientLevels&) override {}
    bool play() override { return true; }
    void stop() override {}
};
class NoMusic final : public MusicPlayer {
public:
    void playRandom(MusicService, MusicSource, const QString&, Completion) override {}
};

// Target: deleting one of 10,000 sessions costs the UI thread under 16 ms, save included;
// serialising and writing happen on the worker and are not counted.
void BM_DeleteSessionOnUiThread(benchmark::State& state) {
    QTemporaryDir dir;
    const QString folder = dir.path() + QStringLiteral("/Quillmere");
    Persistence::save(folder, syntheticSettings(), syntheticHistory(state.range(0) + 200));
    Services services = makeSystemServices();
    services.dataLocation = std::make_shared<FolderLocation>(folder);
    services.sounds = std::make_shared<NoSounds>();
    services.ambient = std::make_shared<NoAmbient>();
    services.music = std::make_shared<NoMusic>();
    AppStore store(services);
    for (auto _ : state) {
        store.removeSession(store.sessions().at(store.sessions().size() / 2));
        state.PauseTiming();
        store.waitForSaves();
        state.ResumeTiming();
    }
}
BENCHMARK(BM_DeleteSessionOnUiThread)->Arg(10000)->Iterations(100)->Unit(benchmark::kMillisecond);

// Target: 20,000 task names repaired within 50 ms.
void BM_RepairTaskNames(benchmark::State& state) {
    static const QString kStems[] = {QStringLiteral("Mathématiques"), QStringLiteral("写作"),
                                     QStringLiteral("  reading "), QStringLiteral("Ünïcode")};
    AppSettings settings;
    QList<QString> names;
    for (qint64 i = 0; i < state.range(0); ++i) {
        QString name = kStems[i % 4] + QString::number(i / 2); // every other one a duplicate
        names << ((i % 2) ? name.toUpper() : name);
    }
    settings.taskNames = names;
    settings.selectedTaskName = names.last();
    for (auto _ : state)
        benchmark::DoNotOptimize(normalizedSettings(settings));
}
BENCHMARK(BM_RepairTaskNames)->Arg(5000)->Arg(20000)->Unit(benchmark::kMillisecond);

} // namespace
} // namespace quill::bench

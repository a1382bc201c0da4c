// Speed of the headless core on long histories: saving, loading, the insight figures and the
// CSV text. Build with -DCMAKE_BUILD_TYPE=Release and run bench/core/bench_core. Leave TZ unset
// as on a desktop: local-time conversions then cost the most. Save times include QSaveFile's
// fdatasync and rename, so they depend on the disk as much as on the code.
#include "SyntheticHistory.h"
#include "insights/Statistics.h"
#include "storage/CsvExport.h"
#include "storage/DataFileCodec.h"
#include "storage/DataFileSync.h"
#include "storage/Persistence.h"

#include <QCoreApplication>
#include <QJsonDocument>
#include <QTemporaryDir>
#include <benchmark/benchmark.h>

namespace quill::bench {
namespace {

const QList<StudySession>& history(qsizetype count) {
    static std::map<qsizetype, QList<StudySession>> cache;
    auto it = cache.find(count);
    if (it == cache.end())
        it = cache.emplace(count, syntheticHistory(count)).first;
    return it->second;
}

void sizes(benchmark::internal::Benchmark* b) {
    b->Arg(1000)->Arg(3000)->Arg(10000)->Arg(100000)->Unit(benchmark::kMillisecond);
}

void BM_Encode(benchmark::State& state) {
    const auto& sessions = history(state.range(0));
    const AppSettings settings = syntheticSettings();
    qsizetype bytes = 0;
    for (auto _ : state) {
        const QByteArray encoded = DataFileCodec::encode(settings, sessions);
        bytes = encoded.size();
        benchmark::DoNotOptimize(encoded.constData());
    }
    state.counters["fileMB"] = double(bytes) / 1e6;
}
BENCHMARK(BM_Encode)->Apply(sizes);

// Target: 3,000 sessions under 16 ms.
void BM_Save(benchmark::State& state) {
    const auto& sessions = history(state.range(0));
    const AppSettings settings = syntheticSettings();
    QTemporaryDir dir;
    const QString folder = dir.path() + QStringLiteral("/Quillmere");
    for (auto _ : state)
        benchmark::DoNotOptimize(Persistence::save(folder, settings, sessions));
}
BENCHMARK(BM_Save)->Apply(sizes);

void BM_Decode(benchmark::State& state) {
    const QByteArray bytes = DataFileCodec::encode(syntheticSettings(), history(state.range(0)));
    for (auto _ : state) {
        auto decoded = DataFileCodec::decode(bytes);
        if (!decoded)
            state.SkipWithError("decode failed");
        benchmark::DoNotOptimize(decoded);
    }
}
BENCHMARK(BM_Decode)->Apply(sizes);

// The share of decoding spent in Qt's JSON parser, for comparison with BM_Decode.
void BM_ParseJsonOnly(benchmark::State& state) {
    const QByteArray bytes = DataFileCodec::encode(syntheticSettings(), history(state.range(0)));
    for (auto _ : state)
        benchmark::DoNotOptimize(QJsonDocument::fromJson(bytes));
}
BENCHMARK(BM_ParseJsonOnly)->Apply(sizes);

// Target: 10,000 sessions under 150 ms.
void BM_Load(benchmark::State& state) {
    QTemporaryDir dir;
    const QString folder = dir.path() + QStringLiteral("/Quillmere");
    Persistence::save(folder, syntheticSettings(), history(state.range(0)));
    for (auto _ : state) {
        Persistence::LoadResult loaded = Persistence::load(folder);
        if (loaded.unreadableFileExists)
            state.SkipWithError("load failed");
        benchmark::DoNotOptimize(loaded);
    }
}
BENCHMARK(BM_Load)->Apply(sizes);

// The saver's usual write: the file is still the version it wrote last, so nothing is read or
// merged. Compare with BM_Save: the difference is what watching for other writers costs.
void BM_SaveUnchangedFile(benchmark::State& state) {
    QTemporaryDir dir;
    const QString folder = dir.path() + QStringLiteral("/Quillmere");
    const PersistedData data{syntheticSettings(), history(state.range(0)), {}};
    DataFileSync sync({}, {});
    sync.save(folder, data, historyEnd(), 0);
    for (auto _ : state)
        benchmark::DoNotOptimize(sync.save(folder, data, historyEnd(), 0));
}
BENCHMARK(BM_SaveUnchangedFile)->Apply(sizes);

// Another writer replaced the file with one session more: read, merge and write, all on the
// worker thread.
void BM_SaveAfterOutsideChange(benchmark::State& state) {
    QTemporaryDir dir;
    const QString folder = dir.path() + QStringLiteral("/Quillmere");
    const PersistedData data{syntheticSettings(), history(state.range(0)), {}};
    QList<StudySession> theirs = data.sessions;
    theirs.prepend(theirs.front());
    DataFileSync sync({}, {});
    sync.save(folder, data, historyEnd(), 0);
    for (auto _ : state) {
        state.PauseTiming();
        theirs.front().id = QUuid::createUuid();
        Persistence::save(folder, data.settings, theirs);
        state.ResumeTiming();
        const DataFileSync::Result result = sync.save(folder, data, historyEnd(), 0);
        if (!result.merged)
            state.SkipWithError("nothing merged");
    }
}
BENCHMARK(BM_SaveAfterOutsideChange)->Arg(10000)->Arg(100000)->Unit(benchmark::kMillisecond);

// Target: 10,000 sessions under 5 ms for every figure the screens show, each computed afresh.
void BM_AllInsights(benchmark::State& state) {
    const auto& sessions = history(state.range(0));
    const QDateTime now = historyEnd();
    const QStringList tasks = syntheticSettings().effectiveTaskNames();
    for (auto _ : state) {
        benchmark::DoNotOptimize(Statistics::todaySessions(sessions, now));
        benchmark::DoNotOptimize(Statistics::todayMinutes(sessions, now));
        benchmark::DoNotOptimize(Statistics::todayWanderCount(sessions, now));
        benchmark::DoNotOptimize(Statistics::streakDays(sessions, now));
        benchmark::DoNotOptimize(Statistics::weeklySummaries(sessions, now));
        benchmark::DoNotOptimize(Statistics::taskSummaries(sessions));
        benchmark::DoNotOptimize(Statistics::attentionCapacityMinutes(sessions));
        benchmark::DoNotOptimize(Statistics::recommendedMinutes(sessions));
        benchmark::DoNotOptimize(Statistics::completedSessions(sessions));
        benchmark::DoNotOptimize(Statistics::sampleSize(sessions));
        benchmark::DoNotOptimize(Statistics::wanderRateText(sessions));
        benchmark::DoNotOptimize(Statistics::energyDropText(sessions));
        benchmark::DoNotOptimize(Statistics::trendPoints(sessions));
        benchmark::DoNotOptimize(Statistics::taskBreakdownRows(sessions));
        benchmark::DoNotOptimize(Statistics::taskBreakdownScale(sessions));
        for (const QString& task : tasks)
            benchmark::DoNotOptimize(Statistics::taskSessionCount(sessions, task));
    }
}
BENCHMARK(BM_AllInsights)->Apply(sizes);

// Target: 10,000 sessions under 50 ms.
void BM_CsvText(benchmark::State& state) {
    const auto& sessions = history(state.range(0));
    for (auto _ : state)
        benchmark::DoNotOptimize(CsvExport::csvText(sessions));
}
BENCHMARK(BM_CsvText)->Apply(sizes);

// The same with one session dated at the epoch (an unset date from an imported file),
// which sorts first and so is the first day the export converts.
void BM_CsvTextWithStrayDate(benchmark::State& state) {
    QList<StudySession> sessions = history(state.range(0));
    StudySession stray = sessions.front();
    stray.startedAt = QDateTime::fromMSecsSinceEpoch(0, Qt::UTC);
    stray.endedAt = stray.startedAt.addSecs(60);
    sessions.prepend(stray);
    for (auto _ : state)
        benchmark::DoNotOptimize(CsvExport::csvText(sessions));
}
BENCHMARK(BM_CsvTextWithStrayDate)->Arg(10000);

} // namespace
} // namespace quill::bench

int main(int argc, char** argv) {
    QCoreApplication app(argc, argv);
    benchmark::Initialize(&argc, argv);
    if (benchmark::ReportUnrecognizedArguments(argc, argv))
        return 1;
    benchmark::RunSpecifiedBenchmarks();
    benchmark::Shutdown();
    return 0;
}

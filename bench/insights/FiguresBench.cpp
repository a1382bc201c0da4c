// What the insights and history screens compute when the history changes, on a large history.
#include "storage/Persistence.h"
#include "support/FakeServices.h"
#include "support/SampleSession.h"
#include "ui/viewmodels/HistoryViewModel.h"
#include "ui/viewmodels/InsightsViewModel.h"

#include <QCoreApplication>
#include <benchmark/benchmark.h>

using namespace quill;

namespace {

QList<StudySession> history(int count, const QDateTime& now) {
    QList<StudySession> out;
    for (int i = 0; i < count; ++i) {
        StudySession s = test::sampleSession(now.addSecs(-qint64(i) * 4 * 3600), 600 + i % 3000);
        if (i % 7 != 0)
            s.taskName = QStringLiteral("任务 %1").arg(i % 12);
        s.focusRating = 1 + i % 5;
        out << s;
    }
    return out;
}

struct World {
    explicit World(int count) {
        Persistence::save(fakes.data->directory(), AppSettings{},
                          history(count, fakes.clock->now()));
        store = std::make_unique<AppStore>(fakes.services());
    }
    test::FakeServices fakes;
    std::unique_ptr<AppStore> store;
};

void insightsFigures(benchmark::State& state) {
    World world(int(state.range(0)));
    for (auto _ : state) {
        InsightsViewModel vm(*world.store);
        benchmark::DoNotOptimize(vm.tiles());
    }
}
BENCHMARK(insightsFigures)->Arg(10'000)->Arg(100'000)->Unit(benchmark::kMillisecond);

void historyTotals(benchmark::State& state) {
    World world(int(state.range(0)));
    for (auto _ : state) {
        HistoryViewModel vm(*world.store);
        benchmark::DoNotOptimize(vm.countText());
    }
}
BENCHMARK(historyTotals)->Arg(10'000)->Arg(100'000)->Unit(benchmark::kMillisecond);

} // namespace

int main(int argc, char** argv) {
    QCoreApplication app(argc, argv);
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    return 0;
}

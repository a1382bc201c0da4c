// What one timer step of a running round costs with the screens' view logic attached:
// the store's step alone, then with the focus, tray and review view models following it.
#include "store/AppStore.h"
#include "support/FakeServices.h"
#include "ui/viewmodels/CompletionViewModel.h"
#include "ui/viewmodels/FocusViewModel.h"
#include "ui/viewmodels/MenuBarViewModel.h"
#include "ui/viewmodels/ShellViewModel.h"

#include <QCoreApplication>
#include <benchmark/benchmark.h>

namespace {

void runSteps(benchmark::State& state, bool withViewModels) {
    quill::test::FakeServices fakes;
    fakes.random->script.push_back(24 * 3600); // no micro-break while measuring
    quill::AppStore store(fakes.services());
    std::optional<quill::FocusViewModel> focus;
    std::optional<quill::MenuBarViewModel> menu;
    std::optional<quill::ShellViewModel> shell;
    std::optional<quill::CompletionViewModel> review;
    if (withViewModels) {
        focus.emplace(store);
        menu.emplace(store);
        shell.emplace(store);
        review.emplace(store);
    }
    store.editSettings([](quill::AppSettings& s) { s.selectedDurationMinutes = 1440; });
    store.startSession();
    for (auto _ : state)
        fakes.scheduler->advance(250);
    state.SetItemsProcessed(state.iterations());
}

void BM_RoundStep_StoreOnly(benchmark::State& state) {
    runSteps(state, false);
}
void BM_RoundStep_WithViewModels(benchmark::State& state) {
    runSteps(state, true);
}
BENCHMARK(BM_RoundStep_StoreOnly);
BENCHMARK(BM_RoundStep_WithViewModels);

} // namespace

int main(int argc, char** argv) {
    QCoreApplication app(argc, argv);
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    benchmark::Shutdown();
    return 0;
}

#include "ui/viewmodels/FloatingTimerViewModel.h"
#include "ViewModelFixture.h"

#include <QSignalSpy>

using namespace quill;
using namespace quill::test;

namespace {

class FloatingTimerViewModelTest : public ViewModelTest {
protected:
    FloatingTimerViewModel vm{*store};
};

TEST_F(FloatingTimerViewModelTest, UnsetSettingsMeanCountdownOnButtonsOffDark) {
    edit([](AppSettings& s) {
        s.floatingTimerOnMinimize.reset();
        s.floatingSignalButtons.reset();
        s.appearanceMode.reset();
    });
    EXPECT_EQ(vm.panelHeight(), 116);
    const QColor dark = vm.backgroundColor();
    store->toggleAppearance();
    EXPECT_NE(vm.backgroundColor(), dark) << "unset was the dark appearance";
}

TEST_F(FloatingTimerViewModelTest, TheRingStartsVisibleAndFollowsNetFocus) {
    start(); // 50 minutes, first reminder after an hour
    EXPECT_DOUBLE_EQ(vm.ringProgress(), 0.02);
    EXPECT_EQ(vm.timeText(), "50:00");
    EXPECT_EQ(vm.statusWord(), "专注中");
    EXPECT_EQ(vm.roundSymbol(), "pause.fill");
    EXPECT_EQ(vm.roundHelp(), "暂停");
    advance(1500'000);
    EXPECT_NEAR(vm.ringProgress(), 0.5, 0.001);
    EXPECT_EQ(vm.timeText(), "25:00");

    vm.roundAction();
    EXPECT_EQ(store->phase(), SessionPhase::paused);
    EXPECT_EQ(vm.statusWord(), "已暂停");
    EXPECT_EQ(vm.roundSymbol(), "play.fill");
    EXPECT_EQ(vm.roundHelp(), "继续");

    // While paused nothing it shows moves, so steps repaint nothing.
    QSignalSpy time(&vm, &FloatingTimerViewModel::timeChanged);
    QSignalSpy phase(&vm, &FloatingTimerViewModel::phaseStateChanged);
    advance(60'000);
    EXPECT_EQ(time.count(), 0);
    EXPECT_EQ(phase.count(), 0);
}

TEST_F(FloatingTimerViewModelTest, AMicroBreakFillsTheRingAndDimsTheSignals) {
    start(180);
    vm.recordMindWander();
    vm.recordFatigue();
    vm.recordMindWander();
    EXPECT_EQ(vm.wanderCount(), 2);
    EXPECT_EQ(vm.wanderHelp(), "我走神了，本轮已记录 2 次");
    EXPECT_EQ(vm.fatigueHelp(), "我开始累了，本轮已记录 1 次");

    advance(180'000);
    ASSERT_EQ(store->phase(), SessionPhase::microBreak);
    EXPECT_DOUBLE_EQ(vm.ringProgress(), 1.0);
    EXPECT_EQ(vm.statusWord(), "微休息");
    EXPECT_EQ(vm.roundHelp(), "提前继续");
    vm.recordMindWander(); // the store ignores signals during a break
    EXPECT_EQ(vm.wanderCount(), 2);
}

} // namespace

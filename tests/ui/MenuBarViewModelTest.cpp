#include "ui/viewmodels/MenuBarViewModel.h"
#include "ViewModelFixture.h"

using namespace quill;
using namespace quill::test;

namespace {

class MenuBarViewModelTest : public ViewModelTest {
protected:
    MenuBarViewModel vm{*store};
};

TEST_F(MenuBarViewModelTest, IdleOffersToStartTheSelectedLength) {
    EXPECT_FALSE(vm.active());
    EXPECT_EQ(vm.title(), "Quillmere");
    EXPECT_EQ(vm.headerSymbol(), "leaf.fill");
    EXPECT_EQ(vm.startTitle(), "开始 50 分钟");
    edit([](AppSettings& s) { s.selectedDurationMinutes = 25; });
    EXPECT_EQ(vm.startTitle(), "开始 25 分钟");
    vm.start();
    EXPECT_EQ(store->phase(), SessionPhase::focusing);
    EXPECT_EQ(store->plannedSeconds(), 1500);
}

TEST_F(MenuBarViewModelTest, ARunningRoundShowsItsTimeAndPauses) {
    fakes.random->script.push_back(3600);
    vm.start();
    EXPECT_EQ(vm.title(), "专注中");
    EXPECT_EQ(vm.timeLine(), "50:00");
    advance(1'250);
    EXPECT_EQ(vm.timeLine(), "49:59");
    EXPECT_EQ(vm.pauseTitle(), "暂停");
    vm.togglePause();
    EXPECT_EQ(vm.pauseTitle(), "继续");
    EXPECT_EQ(vm.title(), "专注中");
    vm.recordMindWander();
    EXPECT_EQ(store->currentEventCount(), 2); // pause, then the signal
}

TEST_F(MenuBarViewModelTest, AMicroBreakCountsDownAndCanBeSkipped) {
    start(180);
    advance(180'250);
    ASSERT_TRUE(vm.microBreak());
    EXPECT_EQ(vm.title(), "微休息");
    EXPECT_EQ(vm.headerSymbol(), "sparkles");
    EXPECT_EQ(vm.timeLine(), "10 秒后继续");
    advance(2'000);
    EXPECT_EQ(vm.timeLine(), "8 秒后继续");
    vm.skipMicroBreak();
    EXPECT_FALSE(vm.microBreak());
    EXPECT_EQ(store->phase(), SessionPhase::focusing);
}

TEST_F(MenuBarViewModelTest, AWaitingReviewReplacesTheStart) {
    start();
    EXPECT_FALSE(vm.reviewPending());
    advance(50 * 60'000 + 250);
    ASSERT_EQ(store->phase(), SessionPhase::completed);
    EXPECT_TRUE(vm.reviewPending());
    EXPECT_FALSE(vm.active());
    vm.start();
    EXPECT_EQ(store->phase(), SessionPhase::completed) << "the finished round is kept";
    store->saveCompletion(4, 3, QString());
    EXPECT_FALSE(vm.reviewPending());
}

TEST_F(MenuBarViewModelTest, TheAmbientRowFollowsThePlayingFlag) {
    EXPECT_EQ(vm.ambientLabel(), "环境音");
    EXPECT_EQ(vm.ambientButtonTitle(), "播放");
    vm.toggleAmbient();
    EXPECT_EQ(vm.ambientLabel(), "环境音播放中");
    EXPECT_EQ(vm.ambientButtonTitle(), "暂停");
    vm.toggleAmbient();
    EXPECT_EQ(vm.ambientButtonTitle(), "播放");
}

} // namespace

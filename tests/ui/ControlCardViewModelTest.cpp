#include "ui/viewmodels/ControlCardViewModel.h"
#include "ViewModelFixture.h"

#include <QSignalSpy>

using namespace quill;
using namespace quill::test;

namespace {

class ControlCardTest : public ViewModelTest {
protected:
    ControlCardViewModel vm{*store};
    void SetUp() override {
        edit([](AppSettings& s) { s.taskNames = QList<QString>{"Math", "Reading"}; });
    }
};

// The screen test shows the headings and the dimmed controls; the commands hold the lock too.
TEST_F(ControlCardTest, TheLockHoldsTheCommandsAndEndsWithTheRound) {
    start();
    EXPECT_TRUE(vm.locked());
    vm.chooseTask(1);
    vm.chooseDuration(90);
    vm.setEnergy(1);
    EXPECT_EQ(store->selectedTaskName(), std::nullopt);
    EXPECT_EQ(store->settings().selectedDurationMinutes, 50);
    EXPECT_EQ(store->currentStartEnergy(), 4);
    store->endSessionForReview();
    EXPECT_FALSE(vm.locked()); // a round waiting for review no longer runs
}

TEST_F(ControlCardTest, ThePickerListsUncategorisedFirstAndChoosesByIndex) {
    EXPECT_EQ(vm.taskOptions(), (QStringList{"未分类", "Math", "Reading"}));
    EXPECT_EQ(vm.taskIndex(), 0);
    EXPECT_EQ(vm.taskLabel(), "未分类");
    vm.chooseTask(2);
    EXPECT_EQ(store->selectedTaskName(), std::optional<QString>("Reading"));
    EXPECT_EQ(vm.taskIndex(), 2);
    EXPECT_EQ(vm.taskLabel(), "Reading");
    vm.chooseTask(0);
    EXPECT_EQ(store->selectedTaskName(), std::nullopt);
    vm.chooseTask(1);
    vm.chooseTask(17); // out of range means no task
    EXPECT_EQ(store->selectedTaskName(), std::nullopt);
}

TEST_F(ControlCardTest, OnlySettingsTheCardShowsRedrawIt) {
    QSignalSpy derived(&vm, &ControlCardViewModel::settingsDerivedChanged);
    edit([](AppSettings& s) { s.ambientMasterVolume = 0.2; }); // a slider on another card
    EXPECT_EQ(derived.count(), 0);
    edit([](AppSettings& s) { s.autoPlayMusic = true; });
    EXPECT_EQ(derived.count(), 1);
}

TEST_F(ControlCardTest, TheMusicLineDescribesTheEndOfRoundMusic) {
    EXPECT_EQ(vm.musicLineText(), "可在设置中开启结束音乐");
    EXPECT_EQ(vm.musicLineSymbol(), "music.note");
    edit([](AppSettings& s) { s.autoPlayMusic = true; });
    EXPECT_EQ(vm.musicLineText(), "结束后随机播放本机音乐播放器");
    edit([](AppSettings& s) { s.musicService.reset(); });
    EXPECT_EQ(vm.musicLineText(), "结束后随机播放本机音乐播放器");
    edit([](AppSettings& s) { s.musicService = MusicService::netEase; });
    EXPECT_EQ(vm.musicLineText(), "结束后播放网易云音乐");
    EXPECT_EQ(vm.musicLineSymbol(), "cloud.fill");
    edit([](AppSettings& s) { s.autoPlayMusic = false; });
    EXPECT_EQ(vm.musicLineSymbol(), "music.note");
}

TEST_F(ControlCardTest, TheNewTaskRowClosesOnlyWhenTheStoreTakesTheName) {
    vm.toggleTaskCreator();
    EXPECT_EQ(vm.creatorToggleHelp(), "取消新增任务");
    EXPECT_FALSE(vm.canAddTask());

    vm.setNewTaskName("   ");
    EXPECT_TRUE(vm.canAddTask());
    EXPECT_FALSE(vm.commitNewTask()); // blank names are refused: the row stays as typed
    EXPECT_TRUE(vm.showTaskCreator());
    EXPECT_EQ(vm.newTaskName(), "   ");

    vm.setNewTaskName("  Writing ");
    EXPECT_TRUE(vm.commitNewTask());
    EXPECT_FALSE(vm.showTaskCreator());
    EXPECT_EQ(vm.newTaskName(), "");
    EXPECT_EQ(store->selectedTaskName(), std::optional<QString>("Writing"));
    EXPECT_EQ(vm.taskOptions().last(), "Writing");
}

TEST_F(ControlCardTest, ARefusedTaskDuringARoundKeepsTheRowOpen) {
    vm.toggleTaskCreator();
    vm.setNewTaskName("Later");
    start();
    EXPECT_FALSE(vm.commitNewTask());
    EXPECT_TRUE(vm.showTaskCreator());
    EXPECT_EQ(vm.newTaskName(), "Later");
}

} // namespace

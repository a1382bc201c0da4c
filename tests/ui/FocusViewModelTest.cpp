#include "ui/viewmodels/FocusViewModel.h"
#include "ViewModelFixture.h"

#include <QSignalSpy>
#include <QTimeZone>

using namespace quill;
using namespace quill::test;

namespace {

class FocusViewModelTest : public ViewModelTest {
protected:
    FocusViewModel vm{*store};
};

TEST_F(FocusViewModelTest, TheGreetingFollowsTheLocalHourAndTheHintNamesTheSuggestion) {
    EXPECT_EQ(vm.recommendationText(), "今天的建议：先做 30 分钟");
    // The fake clock starts at 08:30 UTC, 16:30 in Shanghai.
    EXPECT_EQ(vm.greeting(), "下午好");
    fakes.clock->set(QDateTime(QDate(2026, 3, 5), QTime(11, 0), Qt::UTC)); // 19:00 local
    advance(250);
    EXPECT_EQ(vm.greeting(), "晚上好");
}

TEST_F(FocusViewModelTest, ACaptionNamesTheDraftsTaskAndThePhase) {
    edit([](AppSettings& s) {
        s.taskNames = QList<QString>{"Math"};
        s.selectedTaskName = "Math";
    });
    start(180);
    EXPECT_EQ(vm.timerCaption(), "Math · 净专注剩余");
    store->togglePause();
    EXPECT_EQ(vm.timerCaption(), "Math · 已暂停");
    EXPECT_EQ(vm.phaseTint(), "amber");
    EXPECT_EQ(vm.primaryTitle(), "继续");
    EXPECT_TRUE(vm.endAvailable());
    store->togglePause();
    fakes.random->script.push_back(3600);
    advance(180'250);
    EXPECT_EQ(store->phase(), SessionPhase::microBreak);
    EXPECT_EQ(vm.timerCaption(), "Math · 闭眼 · 松肩 · 慢呼吸");
}

// The screen test drives the micro-break itself; here the metric only the settings reveal.
TEST_F(FocusViewModelTest, TheNextReminderMetricCountsDownOnlyWhenAskedFor) {
    start(180);
    EXPECT_FALSE(vm.nextReminderVisible());
    edit([](AppSettings& s) { s.showNextReminder = true; });
    EXPECT_TRUE(vm.nextReminderVisible());
    advance(250);
    EXPECT_EQ(vm.nextReminderText(), "02:59"); // truncated, not rounded
    advance(118'000);
    EXPECT_EQ(vm.nextReminderText(), "01:01");
    advance(62'000);
    ASSERT_EQ(store->phase(), SessionPhase::microBreak);
    EXPECT_FALSE(vm.nextReminderVisible());
    vm.primaryAction();
    // Paused rounds keep the metric, with no reminder due.
    store->togglePause();
    EXPECT_TRUE(vm.nextReminderVisible());
    EXPECT_EQ(vm.nextReminderText(), "—");
    store->abandonSession();
    EXPECT_FALSE(vm.nextReminderVisible());
}

TEST_F(FocusViewModelTest, TheRingGrowsWithNetFocusOnlyAndLongRoundsShowUncappedMinutes) {
    edit([](AppSettings& s) { s.selectedDurationMinutes = 120; });
    EXPECT_EQ(vm.timerText(), "120:00");
    edit([](AppSettings& s) { s.selectedDurationMinutes = 10; });
    start();
    EXPECT_DOUBLE_EQ(vm.progress(), 0.01);
    advance(150'000);
    EXPECT_DOUBLE_EQ(vm.progress(), 0.25);
    store->togglePause();
    advance(60'000);
    EXPECT_DOUBLE_EQ(vm.progress(), 0.25);
}

TEST_F(FocusViewModelTest, ATimerStepThatChangesNoTextRedrawsNothing) {
    start();
    advance(1'000);
    QSignalSpy timer(&vm, &FocusViewModel::timerChanged);
    QSignalSpy header(&vm, &FocusViewModel::headerChanged);
    QSignalSpy phase(&vm, &FocusViewModel::phaseStateChanged);
    // Four steps a second: the time text changes once a second.
    advance(4'000);
    EXPECT_EQ(timer.count(), 4);
    EXPECT_EQ(header.count(), 0);
    EXPECT_EQ(phase.count(), 0);
    // Idle steps change nothing at all.
    store->abandonSession();
    timer.clear();
    advance(10'000);
    EXPECT_EQ(timer.count(), 0);
}

} // namespace

#include "UiHarness.h"

#include <QTest>
#include <gtest/gtest.h>

using namespace quill;
using namespace quill::test;

namespace {

// Reminders come after the lowest delay of the range unless a test scripts another:
// 3 minutes of net focus, then a 10-second micro-break.
constexpr qint64 kFirstReminderMs = 180'000;

class FocusScreenTest : public ::testing::Test {
protected:
    UiHarness ui;
    bool enabled(const QString& name) { return ui.item(name) && ui.item(name)->isEnabled(); }
    double ringProgress() { return ui.item("focus.ring")->property("progress").toDouble(); }
};

TEST_F(FocusScreenTest, BeforeAnyRoundTheRingIsFullAndShowsTheSelectedLength) {
    EXPECT_EQ(ui.text("focus.timerText"), "50:00");
    EXPECT_EQ(ui.text("focus.timerCaption"), "准备开始");
    EXPECT_DOUBLE_EQ(ringProgress(), 1.0);
    EXPECT_EQ(ui.text("focus.primary"), "开始这一轮");
    EXPECT_FALSE(ui.isShown("focus.end"));
    EXPECT_TRUE(ui.isShown("focus.hint"));
    EXPECT_FALSE(ui.isShown("focus.signals"));
    EXPECT_EQ(ui.text("focus.heading.title"), "今天，练习一次完整的注意");
    EXPECT_EQ(ui.text("focus.heading.subtitle"),
              "目标不是硬撑得更久，而是越来越了解自己的注意力。");
}

TEST_F(FocusScreenTest, TheStartButtonStartsARoundAndTheRingAndTimeMove) {
    ui.click("focus.primary");
    ASSERT_EQ(ui.store().phase(), SessionPhase::focusing);
    EXPECT_EQ(ui.text("focus.primary"), "暂停");
    EXPECT_TRUE(ui.isShown("focus.end"));
    EXPECT_TRUE(ui.isShown("focus.signals"));
    EXPECT_FALSE(ui.isShown("focus.hint"));
    EXPECT_EQ(ui.text("focus.heading.title"), "把注意力放回眼前");
    EXPECT_EQ(ui.text("toast.text"), "开始这一轮。先只做好眼前的一小段。");
    EXPECT_DOUBLE_EQ(ringProgress(), 0.01); // the sliver before any focus time counts

    ui.advance(60'000);
    EXPECT_EQ(ui.text("focus.timerText"), "49:00");
    EXPECT_EQ(ui.text("focus.timerCaption"), "未分类 · 净专注剩余");
    EXPECT_DOUBLE_EQ(ringProgress(), 60.0 / 3000.0);

    ui.advance(30'500);
    EXPECT_EQ(ui.text("focus.timerText"), "48:30");
}

TEST_F(FocusScreenTest, AHiddenWindowCatchesUpWhenShownAgain) {
    ui.click("focus.primary");
    ui.window()->hide();
    ui.advance(60'000);
    ui.window()->show();
    ui.settle();
    EXPECT_EQ(ui.text("focus.timerText"), "49:00");
    EXPECT_DOUBLE_EQ(ringProgress(), 60.0 / 3000.0);
}

TEST_F(FocusScreenTest, PauseStopsTheClockAndResumeContinuesIt) {
    ui.click("focus.primary");
    ui.advance(20'000);
    ui.click("focus.primary");
    ASSERT_EQ(ui.store().phase(), SessionPhase::paused);
    EXPECT_EQ(ui.text("focus.primary"), "继续");
    EXPECT_EQ(ui.text("focus.timerCaption"), "未分类 · 已暂停");
    EXPECT_EQ(ui.text("focus.heading.title"), "暂停不是中断，是选择");
    const QString frozen = ui.text("focus.timerText");
    EXPECT_EQ(frozen, "49:40");

    ui.advance(120'000);
    EXPECT_EQ(ui.text("focus.timerText"), frozen);
    EXPECT_TRUE(ui.isShown("focus.end")); // a paused round can still be ended

    ui.click("focus.primary");
    EXPECT_EQ(ui.store().phase(), SessionPhase::focusing);
    ui.advance(10'000);
    EXPECT_EQ(ui.text("focus.timerText"), "49:30");
}

TEST_F(FocusScreenTest, AMicroBreakShowsItsSecondsAndDisablesTheSignals) {
    ui.click("focus.primary");
    ui.advance(kFirstReminderMs + 250);
    ASSERT_EQ(ui.store().phase(), SessionPhase::microBreak);

    EXPECT_EQ(ui.text("focus.timerText"), "10");
    EXPECT_TRUE(ui.text("focus.timerCaption").endsWith(" · 闭眼 · 松肩 · 慢呼吸"));
    EXPECT_EQ(ui.text("focus.heading.title"), "让大脑安静十秒");
    EXPECT_EQ(ui.text("focus.primary"), "提前继续");
    EXPECT_FALSE(ui.isShown("focus.end"));
    EXPECT_FALSE(enabled("focus.signal.wander"));
    EXPECT_FALSE(enabled("focus.signal.fatigue"));

    ui.advance(3'000);
    EXPECT_EQ(ui.text("focus.timerText"), "7");

    ui.click("focus.signal.wander"); // dimmed: logs nothing
    EXPECT_EQ(ui.text("focus.signal.wander.count"), "0 次");
    EXPECT_EQ(ui.store().currentEventCount(), 1); // just the reminder

    ui.click("focus.primary");
    EXPECT_EQ(ui.store().phase(), SessionPhase::focusing);
    EXPECT_TRUE(enabled("focus.signal.wander"));
}

TEST_F(FocusScreenTest, SignalButtonsCountThisRoundsEvents) {
    ui.click("focus.primary");
    ui.advance(5'000);
    ui.click("focus.signal.wander");
    ui.click("focus.signal.wander");
    ui.click("focus.signal.fatigue");
    EXPECT_EQ(ui.text("focus.signal.wander.count"), "2 次");
    EXPECT_EQ(ui.text("focus.signal.fatigue.count"), "1 次");
    EXPECT_EQ(ui.text("toast.text"), "已记录疲劳信号。必要时提前结束比硬撑更有价值。");
    ui.store().abandonSession();
    EXPECT_EQ(ui.text("focus.signal.wander.count"), "0 次");
}

TEST_F(FocusScreenTest, TheRoundsSettingsAreLockedWhileItRuns) {
    ui.click("control.duration.30");
    EXPECT_EQ(ui.store().settings().selectedDurationMinutes, 30);
    EXPECT_EQ(ui.text("control.title"), "设计这一轮");

    ui.click("focus.primary");
    EXPECT_EQ(ui.text("control.title"), "本轮设置");
    EXPECT_EQ(ui.text("control.subtitle"), "开始后锁定，避免反复调整。");
    for (const char* name :
         {"control.duration.60", "control.taskPicker", "control.taskToggle", "control.energy.1",
          "control.durationField", "control.reminderMin.stepper.up"})
        EXPECT_FALSE(enabled(name)) << name; // the commands hold the lock: the card's test
}

TEST_F(FocusScreenTest, ControlsDesignTheNextRound) {
    ui.click("control.energy.2");
    EXPECT_EQ(ui.store().currentStartEnergy(), 2);
    EXPECT_EQ(ui.text("control.energyLabel.value"), "偏低");

    ui.click("control.reminderMin.stepper.up");
    ui.click("control.reminderMin.stepper.up");
    EXPECT_EQ(ui.store().settings().reminderMinimumMinutes, 5);
    EXPECT_EQ(ui.text("control.reminderLabel.value"), "5–5 分钟");
    // "最晚" cannot step below "最早".
    EXPECT_FALSE(enabled("control.reminderMax.stepper.down"));

    ui.click("control.durationStepper.down");
    EXPECT_EQ(ui.store().settings().selectedDurationMinutes, 49);
    EXPECT_EQ(ui.text("focus.timerText"), "49:00");
    EXPECT_EQ(ui.text("focus.metric.duration.value"), "49 分钟");
}

TEST_F(FocusScreenTest, TheNewTaskRowAddsAndSelectsATask) {
    EXPECT_FALSE(ui.isShown("control.newTaskRow"));
    ui.click("control.taskToggle");
    ASSERT_TRUE(ui.isShown("control.newTaskRow"));
    EXPECT_FALSE(enabled("control.addTask"));

    ui.click("control.newTaskField");
    ui.typeText("Reading");
    EXPECT_TRUE(enabled("control.addTask"));
    ui.click("control.addTask");

    EXPECT_EQ(ui.store().selectedTaskName(), std::optional<QString>("Reading"));
    EXPECT_FALSE(ui.isShown("control.newTaskRow"));
    EXPECT_EQ(ui.text("control.taskLabel.value"), "Reading");
    EXPECT_EQ(ui.text("toast.text"), "已新增并选择任务“Reading”。");
}

TEST_F(FocusScreenTest, AdoptingTheSuggestionSetsTheLength) {
    ui.click("focus.hint.adopt");
    EXPECT_EQ(ui.store().settings().selectedDurationMinutes, ui.store().recommendedMinutes());
}

} // namespace

#include "UiHarness.h"

#include "storage/Persistence.h"

#include <QFile>
#include <gtest/gtest.h>

using namespace quill;
using namespace quill::test;

namespace {

class RoundEndTest : public ::testing::Test {
protected:
    UiHarness ui;

    /// Starts a round with the start button and runs it for `ms` of net focus.
    void runRound(qint64 ms) {
        ui.fakes.random->script.push_back(3600); // no reminder in these rounds
        ui.click("focus.primary");
        ui.advance(ms);
    }
    void openReview() {
        ui.click("focus.end");
        ui.click("endDialog.review");
        ASSERT_TRUE(ui.store().showCompletionSheet());
        ASSERT_TRUE(ui.isShown("review.save"));
    }
    QString dataFile() const { return Persistence::dataFilePath(ui.fakes.data->directory()); }
};

TEST_F(RoundEndTest, EndReviewSaveStoresOneSessionAndSaysSo) {
    runRound(5 * 60'000 + 30'000);
    ui.click("focus.signal.wander");
    openReview();
    EXPECT_FALSE(ui.isShown("endDialog"));
    EXPECT_EQ(ui.text("review.focusedMinutes.value"), "5");
    EXPECT_EQ(ui.text("review.wanderCount.value"), "1");
    EXPECT_EQ(ui.text("review.reminderCount.value"), "0");
    EXPECT_EQ(ui.text("review.taskChip.text"), "未分类");

    ui.click("review.focus.5");
    ui.click("review.energy.2");
    ui.click("review.note");
    ui.typeText("steady");
    ui.click("review.save");

    ASSERT_EQ(ui.store().sessionCount(), 1);
    const StudySession saved = ui.store().sessions().first();
    EXPECT_EQ(saved.focusRating, 5);
    EXPECT_EQ(saved.endEnergy, 2);
    EXPECT_EQ(saved.note, "steady");
    EXPECT_EQ(saved.focusedSeconds, 330);
    EXPECT_FALSE(saved.completed);
    EXPECT_FALSE(ui.isShown("review.save"));
    ui.advance(0); // confirmed once the write is done
    EXPECT_EQ(ui.text("toast.text"), "这一轮已存入你的专注档案。");
    EXPECT_EQ(ui.item("toast.symbol")->property("name").toString(), "checkmark.circle.fill");
    EXPECT_EQ(ui.text("sidebar.todaySessions"), "1");
    EXPECT_EQ(ui.text("sidebar.todayMinutes"), "6"); // 330 s rounds to 6 minutes
    EXPECT_EQ(Persistence::load(ui.fakes.data->directory()).data.sessions.size(), 1);
}

TEST_F(RoundEndTest, SavingAtOnceKeepsTheFixedStartingValues) {
    runRound(40'000);
    openReview();
    EXPECT_EQ(ui.text("review.focusedMinutes.value"), "0"); // under a minute
    ui.click("review.save");
    ASSERT_EQ(ui.store().sessionCount(), 1);
    EXPECT_EQ(ui.store().sessions().first().focusRating, 4);
    EXPECT_EQ(ui.store().sessions().first().endEnergy, 3);
    EXPECT_EQ(ui.store().sessions().first().note, "");

    // The next review starts afresh, not from what the last one chose.
    runRound(40'000);
    openReview();
    ui.click("review.focus.1");
    ui.click("review.save");
    runRound(40'000);
    openReview();
    ui.click("review.save");
    EXPECT_EQ(ui.store().sessions().first().focusRating, 4);
}

TEST_F(RoundEndTest, AbandonFromTheEndDialogLeavesNoTrace) {
    runRound(120'000);
    ui.click("focus.signal.fatigue");
    ui.click("focus.end");
    ui.click("endDialog.abandon");

    EXPECT_EQ(ui.store().phase(), SessionPhase::idle);
    EXPECT_EQ(ui.store().sessionCount(), 0);
    EXPECT_EQ(ui.store().currentEventCount(), 0);
    EXPECT_FALSE(ui.isShown("endDialog"));
    EXPECT_FALSE(ui.isShown("review.save"));
    EXPECT_EQ(ui.text("toast.text"), "这轮已放弃，不会计入任何专注数据。");
    EXPECT_EQ(ui.text("focus.timerText"), "50:00");
    EXPECT_EQ(ui.text("sidebar.todaySessions"), "0");
    EXPECT_TRUE(Persistence::load(ui.fakes.data->directory()).data.sessions.isEmpty());
}

TEST_F(RoundEndTest, TheScrimBehindTheEndDialogMeansContinue) {
    runRound(60'000);
    ui.click("focus.end");
    ASSERT_TRUE(ui.isShown("endDialog.panel"));
    ui.clickAt(QPointF(40, 40)); // the sidebar corner, under the scrim
    EXPECT_FALSE(ui.store().showSessionEndDialog());
    EXPECT_FALSE(ui.isShown("endDialog"));
    EXPECT_EQ(ui.store().phase(), SessionPhase::focusing);
    EXPECT_EQ(ui.store().selectedSection(), AppSection::focus); // the click never reached it
    for (const char* control : {"endDialog.close", "endDialog.continue"}) {
        ui.click("focus.end");
        ui.click(control);
        EXPECT_FALSE(ui.store().showSessionEndDialog()) << control;
        EXPECT_EQ(ui.store().phase(), SessionPhase::focusing) << control;
    }

    // A click on the panel itself (its empty top corner) changes nothing.
    ui.click("focus.end");
    ui.clickAt(ui.item("endDialog.panel")->mapToScene(QPointF(8, 8)));
    EXPECT_TRUE(ui.store().showSessionEndDialog());
}

TEST_F(RoundEndTest, TheRoundRunsOnWhileTheEndDialogIsOpen) {
    ui.store().editSettings([](AppSettings& s) { s.selectedDurationMinutes = 1; });
    runRound(30'000);
    ui.click("focus.end");
    ui.advance(31'000);
    EXPECT_FALSE(ui.isShown("endDialog"));
    EXPECT_TRUE(ui.isShown("review.save"));
    EXPECT_EQ(ui.text("review.focusedMinutes.value"), "1");
}

// Escape and the cancel button are the keyboard test's; here, clicks outside the sheet and
// on the confirmation's scrim.
TEST_F(RoundEndTest, TheReviewSheetIgnoresClicksOutsideAndTheAbandonScrimCancels) {
    runRound(90'000);
    openReview();
    ui.clickAt(QPointF(20, 20));
    ui.clickAt(QPointF(1160, 770));
    EXPECT_TRUE(ui.isShown("review.save"));
    EXPECT_EQ(ui.store().phase(), SessionPhase::completed);

    ui.click("review.abandon");
    ASSERT_TRUE(ui.isShown("abandonDialog.confirm"));
    ui.clickAt(ui.item("abandonDialog.scrim")->mapToScene(QPointF(12, 12)));
    EXPECT_FALSE(ui.isShown("abandonDialog"));
    EXPECT_EQ(ui.store().phase(), SessionPhase::completed);

    ui.click("review.abandon");
    ui.click("abandonDialog.confirm");
    EXPECT_EQ(ui.store().phase(), SessionPhase::idle);
    EXPECT_EQ(ui.store().sessionCount(), 0);
    EXPECT_EQ(ui.text("toast.text"), "这轮已放弃，不会计入任何专注数据。");
}

TEST_F(RoundEndTest, TheReviewShowsTheMusicStatusWhenThereIsOne) {
    ui.store().editSettings([](AppSettings& s) { s.autoPlayMusic = true; });
    runRound(60'000);
    EXPECT_FALSE(ui.isShown("review.music"));
    openReview();
    EXPECT_TRUE(ui.isShown("review.music"));
    EXPECT_EQ(ui.text("review.music.text"), "正在连接“本机音乐播放器”…");
    ASSERT_EQ(ui.fakes.music->requests.size(), 1u);
    ui.fakes.music->requests.front().completion(MusicOutcome{true, "Song — Artist"});
    ui.settle();
    EXPECT_EQ(ui.text("review.music.text"), "正在播放：Song — Artist");
}

} // namespace

// Ending a round: by time, early for review, saving the review and abandoning.
#include "StoreHarness.h"

namespace quill::test {
namespace {

class EndingTest : public StoreTest {
protected:
    void SetUp() override {
        AppSettings s;
        s.reminderMinimumMinutes = 60;
        s.reminderMaximumMinutes = 60;
        s.taskNames = QList<QString>{QStringLiteral("数学")};
        s.selectedTaskName = QStringLiteral("数学");
        writeData(s);
        createStore();
    }
};

TEST_F(EndingTest, RunningOutShowsTheReviewAndSavingStoresTheSessionAtOnce) {
    const QDateTime start = now();
    store->setCurrentStartEnergy(2);
    store->startSession(1);
    advanceSeconds(30);
    store->recordMindWander();
    advanceSeconds(31);
    ASSERT_EQ(store->phase(), SessionPhase::completed);
    EXPECT_TRUE(store->showCompletionSheet());
    EXPECT_EQ(fakes.sounds->played.back(), QStringLiteral("Hero"));
    store->startSession(2); // no round starts while a review waits

    advanceSeconds(120); // the review takes two minutes; settings debounce has long settled
    EXPECT_EQ(store->phase(), SessionPhase::completed) << "no round runs behind the sheet";
    updateSettings([](AppSettings& s) { s.microBreakSeconds = 42; }); // changed during review
    store->saveCompletion(5, 3, QStringLiteral("  专注 \"很好\"  "));

    ASSERT_EQ(store->sessions().size(), 1);
    const StudySession& saved = store->sessions().front();
    EXPECT_EQ(saved.startedAt, start);
    EXPECT_EQ(saved.endedAt, now()) << "ended at the moment of saving, not of running out";
    EXPECT_EQ(saved.taskName, QStringLiteral("数学"));
    EXPECT_EQ(saved.plannedMinutes, 1);
    EXPECT_EQ(saved.focusedSeconds, 60);
    EXPECT_EQ(saved.microBreakSeconds, 42);
    EXPECT_EQ(saved.startEnergy, 2);
    EXPECT_EQ(saved.endEnergy, 3);
    EXPECT_EQ(saved.focusRating, 5);
    EXPECT_TRUE(saved.completed);
    EXPECT_EQ(saved.note, QStringLiteral("  专注 \"很好\"  ")) << "the note is stored unchanged";
    EXPECT_EQ(saved.mindWanderCount(), 1);
    EXPECT_EQ(store->phase(), SessionPhase::idle);
    EXPECT_FALSE(store->showCompletionSheet());
    advanceMs(0); // the write's outcome arrives
    EXPECT_EQ(store->toastMessageText(), QStringLiteral("这一轮已存入你的专注档案。"));

    // Written at once, not debounced: the file already holds the session.
    EXPECT_EQ(readDataFile().sessions.size(), 1);

    store->saveCompletion(1, 1, QString()); // no draft any more
    EXPECT_EQ(store->sessions().size(), 1);
}

TEST_F(EndingTest, EndingEarlyFromPauseKeepsTheLastFocusingStep) {
    store->startSession(25);
    advanceSeconds(90);
    store->togglePause();
    advanceSeconds(300);
    store->setShowSessionEndDialog(true);
    store->endSessionForReview();
    EXPECT_FALSE(store->showSessionEndDialog());
    EXPECT_EQ(store->phase(), SessionPhase::completed);
    store->saveCompletion(3, 2, QString());
    EXPECT_FALSE(store->sessions().front().completed);
    EXPECT_EQ(store->sessions().front().focusedSeconds, 90);
}

TEST_F(EndingTest, EndDialogChoices) {
    store->startSession(1);
    store->setShowSessionEndDialog(true);
    store->continueSession();
    EXPECT_FALSE(store->showSessionEndDialog());
    EXPECT_EQ(store->phase(), SessionPhase::focusing);

    // The round runs on while the dialog is open and running out closes it.
    store->setShowSessionEndDialog(true);
    advanceSeconds(61);
    EXPECT_EQ(store->phase(), SessionPhase::completed);
    EXPECT_FALSE(store->showSessionEndDialog());
    const auto sounds = fakes.sounds->played.size();
    store->endSessionForReview(); // nothing active: only hides the dialog
    EXPECT_EQ(fakes.sounds->played.size(), sounds);
}

TEST_F(EndingTest, AbandonLeavesNoTrace) {
    store->abandonSession();
    EXPECT_FALSE(store->toastMessage().has_value()) << "nothing to abandon: no toast";

    store->startSession(25);
    advanceSeconds(5);
    const QByteArray afterStart = [&] {
        QFile f(dataFile());
        return f.open(QIODevice::ReadOnly) ? f.readAll() : QByteArray();
    }();
    store->recordFatigue();
    store->setShowSessionEndDialog(true);
    store->abandonSession();
    EXPECT_EQ(store->toastMessageText(), QStringLiteral("这轮已放弃，不会计入任何专注数据。"));
    advanceSeconds(5);

    EXPECT_EQ(store->phase(), SessionPhase::idle);
    EXPECT_TRUE(store->sessions().isEmpty());
    EXPECT_TRUE(store->currentEvents().isEmpty());
    EXPECT_FALSE(store->draft().has_value());
    EXPECT_EQ(store->remainingSeconds(), 0);
    EXPECT_EQ(store->focusedElapsedSeconds(), 0);
    EXPECT_FALSE(store->showSessionEndDialog());
    QFile f(dataFile());
    ASSERT_TRUE(f.open(QIODevice::ReadOnly));
    EXPECT_EQ(f.readAll(), afterStart) << "abandoning writes nothing";
}

TEST_F(EndingTest, AbandonFromTheReviewClearsTheMusicLineButNotTheMusic) {
    updateSettings([](AppSettings& s) { s.autoPlayMusic = true; });
    store->startSession(1);
    advanceSeconds(61);
    ASSERT_EQ(fakes.music->requests.size(), 1u);
    fakes.music->requests[0].completion({true, QStringLiteral("Song — Artist")});
    EXPECT_EQ(store->musicMessageText(), QStringLiteral("正在播放：Song — Artist"));
    store->abandonSession();
    EXPECT_FALSE(store->musicMessage().has_value());
    EXPECT_EQ(fakes.music->requests.size(), 1u);
}

TEST_F(EndingTest, ClearingHistoryDuringARoundStillSavesThatRound) {
    writeData(store->settings(), {sessionAt(now().addDays(-1))});
    createStore();
    ASSERT_EQ(store->sessions().size(), 1);
    store->startSession(1);
    store->clearHistory();
    EXPECT_EQ(store->toastMessageText(), QStringLiteral("专注记录已清空。"));
    EXPECT_TRUE(readDataFile().sessions.isEmpty()) << "cleared at once";
    advanceSeconds(61);
    store->saveCompletion(4, 4, QString());
    EXPECT_EQ(store->sessions().size(), 1);
    EXPECT_EQ(readDataFile().sessions.size(), 1);
}

TEST_F(EndingTest, ARoundStartsOnceTheReviewIsSavedOrAbandoned) {
    store->startSession(1);
    advanceSeconds(61);
    ASSERT_TRUE(store->isReviewPending());
    store->saveCompletion(4, 3, QString());
    EXPECT_FALSE(store->isReviewPending());
    store->startSession(2);
    EXPECT_EQ(store->phase(), SessionPhase::focusing);

    store->endSessionForReview();
    store->abandonSession();
    EXPECT_FALSE(store->isReviewPending());
    store->startSession(3);
    EXPECT_EQ(store->draft()->plannedMinutes, 3) << "after abandoning, a start goes through";
}

} // namespace
} // namespace quill::test

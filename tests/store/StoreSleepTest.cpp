// A round across a suspend of the computer and changes of the wall clock, each clock moved
// on its own: neither time asleep nor a clock change ever counts as focus.
#include "StoreHarness.h"

namespace quill::test {
namespace {

const QString kSleptToast = QStringLiteral("电脑休眠期间本轮已暂停。");

class SleepTest : public StoreTest {
protected:
    void SetUp() override {
        startWith(3, 3, 20); // reminders every 180 s of net focus, 20 s breaks
        QObject::connect(store.get(), &AppStore::toastMessageChanged, [this] {
            if (store->toastMessageText() == kSleptToast)
                ++sleptToasts;
        });
        store->startSession(50);
    }
    void sleepFor(qint64 ms) {
        fakes.clock->sleep(ms);
        advanceMs(250); // the first step after waking
    }
    /// Ends the round for review and saves it, returning what was stored.
    StudySession endAndSave() {
        store->endSessionForReview();
        advanceSeconds(5);
        store->saveCompletion(4, 3, QString());
        return store->sessions().first();
    }
    qint64 count(FocusEventKind kind) const {
        return std::count_if(store->currentEvents().begin(), store->currentEvents().end(),
                             [kind](const FocusEvent& e) { return e.kind == kind; });
    }
    int sleptToasts = 0;
};

TEST_F(SleepTest, ASleepWhileFocusingPausesWithNoTimeAsleepCounted) {
    advanceSeconds(100);
    fakes.clock->elapse(1200); // focus between the last step and the suspend still counts
    sleepFor(2 * 3600'000);
    EXPECT_EQ(store->phase(), SessionPhase::paused);
    EXPECT_EQ(store->focusedElapsedSeconds(), 101);
    EXPECT_EQ(store->currentEvents().back().kind, FocusEventKind::pause);
    EXPECT_EQ(sleptToasts, 1);

    advanceSeconds(30);
    EXPECT_EQ(sleptToasts, 1) << "the toast is shown once per sleep";
    store->togglePause();
    advanceSeconds(60);
    EXPECT_EQ(store->focusedElapsedSeconds(), 161);
    const StudySession saved = endAndSave();
    EXPECT_EQ(saved.focusedSeconds, 161);
    EXPECT_GE(saved.startedAt.secsTo(saved.endedAt), saved.focusedSeconds);
}

TEST_F(SleepTest, ASleepInABreakEndsTheBreakAsSkippedThenPauses) {
    advanceSeconds(185);
    ASSERT_EQ(store->phase(), SessionPhase::microBreak);
    sleepFor(600'000);
    EXPECT_EQ(store->phase(), SessionPhase::paused);
    EXPECT_EQ(store->breakRemainingSeconds(), 0);
    EXPECT_EQ(store->focusedElapsedSeconds(), 180);
    EXPECT_EQ(count(FocusEventKind::reminder), 1);
    EXPECT_EQ(count(FocusEventKind::pause), 1);
    EXPECT_EQ(sleptToasts, 1);
    store->togglePause();
    advanceSeconds(10);
    EXPECT_EQ(store->remainingSeconds(), 3000 - 190);
}

TEST_F(SleepTest, ASleepWhilePausedLeavesThePauseAsItWasWithoutAToast) {
    advanceSeconds(60);
    store->togglePause();
    const auto events = store->currentEvents().size();
    sleepFor(3600'000);
    EXPECT_EQ(store->phase(), SessionPhase::paused);
    EXPECT_EQ(store->currentEvents().size(), events);
    EXPECT_EQ(sleptToasts, 0);
    store->togglePause();
    advanceSeconds(1);
    EXPECT_EQ(store->remainingSeconds(), 3000 - 61);
}

TEST_F(SleepTest, ARoundThatRanOutBeforeTheSleepCompletesWithItsPlannedTime) {
    store->abandonSession();
    store->startSession(2);       // shorter than the first reminder
    fakes.clock->elapse(120'100); // the round ran out, then the lid closed before a step
    sleepFor(3600'000);
    EXPECT_EQ(store->phase(), SessionPhase::completed);
    EXPECT_EQ(store->focusedElapsedSeconds(), 120);
    EXPECT_EQ(sleptToasts, 0);
}

TEST_F(SleepTest, WallClockChangesWhileAwakeNeitherMoveTheRoundNorDateItBackwards) {
    advanceSeconds(24 * 60);
    store->skipMicroBreak();
    fakes.clock->jump(2 * 3600'000); // NTP or the user moves the clock forward
    advanceMs(250);
    EXPECT_EQ(store->phase(), SessionPhase::focusing);
    EXPECT_EQ(sleptToasts, 0);
    const qint64 focused = store->focusedElapsedSeconds();
    EXPECT_LE(focused, 24 * 60);

    fakes.clock->jump(-4 * 3600'000); // and back, to before the round began
    advanceSeconds(60);
    store->skipMicroBreak();
    store->recordMindWander();
    const QDateTime started = store->draft()->startedAt;
    EXPECT_GE(store->currentEvents().back().date, started);
    const StudySession saved = endAndSave();
    EXPECT_GE(saved.focusedSeconds, focused);
    EXPECT_LE(saved.focusedSeconds, focused + 60);
    EXPECT_GE(saved.startedAt.secsTo(saved.endedAt), saved.focusedSeconds)
        << "the stored span is never shorter than the focus it holds";
    for (const FocusEvent& e : saved.events)
        EXPECT_GE(e.date, saved.startedAt);
}

TEST_F(SleepTest, RepeatedSleepsAndClockChangesNeverAddToNetFocus) {
    // A day of lid closes and clock corrections across one round: focus only grows with
    // awake, focusing time.
    qint64 awakeFocusMs = 0;
    for (int i = 0; i < 12; ++i) {
        if (store->phase() == SessionPhase::paused)
            store->togglePause();
        if (store->phase() == SessionPhase::microBreak)
            store->skipMicroBreak();
        ASSERT_EQ(store->phase(), SessionPhase::focusing);
        advanceSeconds(50);
        awakeFocusMs += 50'000 + 250; // and the awake moment until the step after waking
        fakes.clock->jump(i % 2 ? -900'000 : 900'000);
        sleepFor(3600'000);
    }
    EXPECT_EQ(store->phase(), SessionPhase::paused);
    EXPECT_EQ(sleptToasts, 12);
    EXPECT_EQ(store->focusedElapsedSeconds(), awakeFocusMs / 1000);
    EXPECT_LT(store->focusedElapsedSeconds(), 3000);
}

} // namespace
} // namespace quill::test

// The phase machine of a round in virtual time: net focus time, reminders, micro-breaks,
// pauses and signals. Sleeps and clock changes are in StoreSleepTest.
#include "StoreHarness.h"

namespace quill::test {
namespace {

class RoundTest : public StoreTest {
protected:
    /// Advances in timer steps until the phase changes or `limitSeconds` pass.
    QDateTime runUntilPhase(SessionPhase phase, double limitSeconds) {
        const QDateTime deadline = now().addMSecs(qint64(limitSeconds * 1000));
        while (store->phase() != phase && now() < deadline)
            advanceMs(250);
        return now();
    }
    qint64 eventCount(FocusEventKind kind) const {
        return std::count_if(store->currentEvents().begin(), store->currentEvents().end(),
                             [kind](const FocusEvent& e) { return e.kind == kind; });
    }
};

TEST_F(RoundTest, WorkedExampleKeepsNetFocusAndMovesTheEndByEachBreak) {
    startWith(3, 5, 20);
    fakes.random->script = {200};
    fakes.random->useHighest = true; // later draws: 300 s
    const QDateTime start = now();
    store->startSession(25);

    EXPECT_EQ(store->phase(), SessionPhase::focusing);
    EXPECT_EQ(store->remainingSeconds(), 1500);
    ASSERT_EQ(fakes.random->ranges.front(), std::make_pair(qint64(180), qint64(300)));

    const QDateTime firstBreak = runUntilPhase(SessionPhase::microBreak, 400);
    EXPECT_EQ(start.msecsTo(firstBreak), 200'000);
    ASSERT_EQ(store->currentEvents().size(), 1);
    EXPECT_EQ(store->currentEvents()[0].kind, FocusEventKind::reminder);
    EXPECT_EQ(store->currentEvents()[0].elapsedSeconds, 200);
    EXPECT_EQ(store->breakRemainingSeconds(), 20);
    EXPECT_EQ(fakes.sounds->played, QStringList{QStringLiteral("Glass")});

    advanceSeconds(10);
    EXPECT_EQ(store->breakRemainingSeconds(), 10);
    EXPECT_EQ(store->focusedElapsedSeconds(), 200) << "focus time stands still in a break";

    const QDateTime end = runUntilPhase(SessionPhase::completed, 2000);
    const qint64 breaks =
        std::count_if(store->draft()->events.begin(), store->draft()->events.end(),
                      [](const FocusEvent& e) { return e.kind == FocusEventKind::reminder; });
    EXPECT_GE(breaks, 4);
    const qint64 expectedMs = (1500 + 20 * breaks) * 1000;
    EXPECT_GE(start.msecsTo(end), expectedMs);
    EXPECT_LT(start.msecsTo(end), expectedMs + 250);
    EXPECT_EQ(store->focusedElapsedSeconds(), 1500);
    EXPECT_EQ(store->remainingSeconds(), 0);
    EXPECT_TRUE(store->showCompletionSheet());
}

TEST_F(RoundTest, ReminderDrawsAreBoundedByTheNetTimeLeft) {
    startWith(15, 20, 10);
    store->startSession(10);
    runUntilPhase(SessionPhase::completed, 700);
    EXPECT_EQ(store->phase(), SessionPhase::completed);
    EXPECT_EQ(eventCount(FocusEventKind::reminder), 0) << "a 15-20 min draw never fits 10 min";

    // A draw equal to the time left also yields no reminder.
    store->abandonSession();
    updateSettings([](AppSettings& s) {
        s.reminderMinimumMinutes = 10;
        s.reminderMaximumMinutes = 10;
    });
    advanceMs(300);
    store->startSession(10);
    runUntilPhase(SessionPhase::completed, 700);
    EXPECT_EQ(eventCount(FocusEventKind::reminder), 0);
}

TEST_F(RoundTest, EqualBoundsSpaceRemindersByExactlyThatMuchNetFocus) {
    startWith(2, 2, 5);
    store->startSession(7);
    runUntilPhase(SessionPhase::completed, 1000);
    ASSERT_EQ(store->phase(), SessionPhase::completed);
    const auto& events = store->draft()->events;
    ASSERT_EQ(events.size(), 3); // at 2, 4 and 6 minutes of net focus
    for (int i = 0; i < 3; ++i)
        EXPECT_EQ(events[i].elapsedSeconds, 120 * (i + 1));
    for (const auto& [low, high] : fakes.random->ranges)
        EXPECT_EQ(low, high);
}

TEST_F(RoundTest, NextReminderDescriptionCountsDownOnlyWhileFocusing) {
    startWith(2, 2, 10);
    EXPECT_EQ(store->nextReminderDescription(), QStringLiteral("—"));
    store->startSession(30);
    EXPECT_EQ(store->nextReminderDescription(), QStringLiteral("02:00"));
    fakes.clock->elapse(120'000 - 61'900);
    EXPECT_EQ(store->nextReminderDescription(), QStringLiteral("01:01"));
    fakes.clock->elapse(61'900 - 400);
    EXPECT_EQ(store->nextReminderDescription(), QStringLiteral("00:00"));
    store->togglePause();
    EXPECT_EQ(store->nextReminderDescription(), QStringLiteral("—"));
}

TEST_F(RoundTest, LastFractionOfASecondShowsAsOneAndEndsOnTheNextStep) {
    startWith(60, 90, 10);
    store->startSession(1);
    advanceMs(59'750); // a step lands exactly here: 0.25 s left
    EXPECT_EQ(store->remainingSeconds(), 1);
    EXPECT_EQ(store->phase(), SessionPhase::focusing);
    advanceMs(250);
    EXPECT_EQ(store->phase(), SessionPhase::completed);
    EXPECT_EQ(store->focusedElapsedSeconds(), 60);
}

TEST_F(RoundTest, PauseStopsTheCountDropsTheReminderAndResumeDrawsAgain) {
    startWith(3, 5, 10);
    const QDateTime start = now();
    store->startSession(25);
    advanceSeconds(60);
    store->togglePause();
    EXPECT_EQ(store->phase(), SessionPhase::paused);
    EXPECT_EQ(store->nextReminderDescription(), QStringLiteral("—"));
    advanceSeconds(600);
    EXPECT_EQ(store->focusedElapsedSeconds(), 60) << "no focus time passes while paused";
    EXPECT_EQ(store->remainingSeconds(), 1440);

    const auto drawsBefore = fakes.random->ranges.size();
    store->togglePause();
    EXPECT_EQ(fakes.random->ranges.size(), drawsBefore + 1);
    EXPECT_EQ(eventCount(FocusEventKind::pause), 1);
    EXPECT_EQ(eventCount(FocusEventKind::resume), 1);

    updateSettings([](AppSettings& s) {
        s.reminderMinimumMinutes = 60;
        s.reminderMaximumMinutes = 60;
    });
    store->togglePause();
    store->togglePause(); // a fresh draw with the new range: none fits
    const QDateTime end = runUntilPhase(SessionPhase::completed, 2000);
    EXPECT_GE(start.msecsTo(end), 2100'000) << "the round ends 600 s later than unpaused";
    EXPECT_LT(start.msecsTo(end), 2100'250);
    EXPECT_EQ(store->focusedElapsedSeconds(), 1500);
}

TEST_F(RoundTest, SignalsRecordTheLastStepsSecondsAndOnlyWhenFocusingOrPaused) {
    startWith(60, 60, 10);
    store->recordMindWander();
    EXPECT_FALSE(store->toastMessage().has_value()) << "ignored silently when idle";

    store->startSession(25);
    advanceMs(10'000);
    fakes.clock->elapse(900); // between steps: the event still carries the last step's value
    store->recordMindWander();
    EXPECT_EQ(store->currentEvents().back().elapsedSeconds, 10);
    EXPECT_EQ(store->toastMessageText(),
              QStringLiteral("记下了。发现走神，本身就是注意力回来了。"));
    store->togglePause();
    store->recordFatigue();
    EXPECT_EQ(store->currentEvents().back().kind, FocusEventKind::fatigue);
    EXPECT_EQ(store->toastMessageText(),
              QStringLiteral("已记录疲劳信号。必要时提前结束比硬撑更有价值。"));
    EXPECT_EQ(store->draft()->events, store->currentEvents());
}

TEST_F(RoundTest, CommandsThatDoNotApplyAreIgnored) {
    startWith(1, 1, 30);
    store->skipMicroBreak();
    store->togglePause();
    EXPECT_EQ(store->phase(), SessionPhase::idle);

    store->startSession(25);
    const QDateTime started = store->draft()->startedAt;
    advanceSeconds(10);
    store->startSession(5); // already running
    EXPECT_EQ(store->draft()->startedAt, started);
    EXPECT_EQ(store->plannedSeconds(), 1500);

    store->skipMicroBreak(); // not in a break
    EXPECT_EQ(store->phase(), SessionPhase::focusing);
    runUntilPhase(SessionPhase::microBreak, 120);
    store->togglePause(); // no pausing in a break
    EXPECT_EQ(store->phase(), SessionPhase::microBreak);
    const auto events = store->currentEvents().size();
    store->recordMindWander();
    store->recordFatigue();
    EXPECT_EQ(store->currentEvents().size(), events);
    store->skipMicroBreak();
    EXPECT_EQ(store->phase(), SessionPhase::focusing);
    EXPECT_EQ(store->breakRemainingSeconds(), 0);
}

TEST_F(RoundTest, TheCountersNotifyOnlyWhenTheShownSecondChanges) {
    startWith(60, 60, 10);
    int remainingNotifications = 0;
    QObject::connect(store.get(), &AppStore::remainingSecondsChanged,
                     [&] { ++remainingNotifications; });
    store->startSession(25);
    remainingNotifications = 0;
    advanceMs(1000);
    EXPECT_EQ(remainingNotifications, 1) << "four steps, one second";
    store->togglePause();
    remainingNotifications = 0;
    advanceMs(1000);
    EXPECT_EQ(remainingNotifications, 0) << "paused steps do nothing";
}

} // namespace
} // namespace quill::test

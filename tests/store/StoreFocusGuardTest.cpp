// The focus guard's rules in virtual time: banners held exactly while a round runs, and a
// locked screen pausing the round.
#include "StoreHarness.h"
#include "support/FakeFocusGuard.h"

namespace quill::test {
namespace {

const QString kLockedToast = QStringLiteral("锁屏期间本轮已暂停。");

class FocusGuardTest : public StoreTest {
protected:
    void startGuarded(std::optional<bool> holdBanners, std::optional<bool> pauseOnLock) {
        AppSettings s;
        s.reminderMinimumMinutes = 3;
        s.reminderMaximumMinutes = 3;
        s.microBreakSeconds = 20;
        s.pauseNotificationsWhileFocusing = holdBanners;
        s.pauseRoundOnScreenLock = pauseOnLock;
        writeData(s);
        fakes.notificationHold = hold;
        fakes.screenLock = screenLock;
        createStore();
        QObject::connect(store.get(), &AppStore::toastMessageChanged, [this] {
            if (store->toastMessageText() == kLockedToast)
                ++lockedToasts;
        });
    }
    qint64 count(FocusEventKind kind) const {
        return std::count_if(store->currentEvents().begin(), store->currentEvents().end(),
                             [kind](const FocusEvent& e) { return e.kind == kind; });
    }
    std::shared_ptr<RecordingNotificationHold> hold = std::make_shared<RecordingNotificationHold>();
    std::shared_ptr<FakeScreenLock> screenLock = std::make_shared<FakeScreenLock>();
    int lockedToasts = 0;
};

TEST_F(FocusGuardTest, BannersAreHeldExactlyWhileFocusingOrInABreak) {
    startGuarded(true, std::nullopt);
    EXPECT_TRUE(hold->calls.empty()) << "nothing is held at rest";
    store->startSession(50);
    EXPECT_EQ(hold->calls, std::vector<bool>{true});
    advanceSeconds(185);
    ASSERT_EQ(store->phase(), SessionPhase::microBreak);
    advanceSeconds(30);
    ASSERT_EQ(store->phase(), SessionPhase::focusing);
    EXPECT_EQ(hold->calls, std::vector<bool>{true}) << "a break changes nothing";

    store->togglePause();
    EXPECT_FALSE(hold->held());
    store->togglePause();
    EXPECT_TRUE(hold->held());

    // The round-end notification follows the review sheet: banners are back by then.
    bool heldWhenReviewShown = true;
    const auto watch = QObject::connect(store.get(), &AppStore::showCompletionSheetChanged,
                                        [&] { heldWhenReviewShown = hold->held(); });
    store->endSessionForReview();
    QObject::disconnect(watch);
    EXPECT_FALSE(heldWhenReviewShown);
    store->saveCompletion(4, 3, QString());

    store->startSession(50);
    EXPECT_TRUE(hold->held());
    store->abandonSession();
    EXPECT_FALSE(hold->held());

    store->startSession(1);
    advanceSeconds(61);
    EXPECT_EQ(store->phase(), SessionPhase::completed);
    EXPECT_FALSE(hold->held()) << "a round that ran out gives banners back";
    EXPECT_EQ(hold->calls, (std::vector<bool>{true, false, true, false, true, false, true, false}));
}

TEST_F(FocusGuardTest, TheSwitchTakesEffectMidRoundAndQuittingGivesBannersBack) {
    startGuarded(std::nullopt, std::nullopt);
    store->startSession(50);
    EXPECT_TRUE(hold->calls.empty()) << "off unless the user turned it on";
    updateSettings([](AppSettings& s) { s.pauseNotificationsWhileFocusing = true; });
    EXPECT_TRUE(hold->held());
    updateSettings([](AppSettings& s) { s.pauseNotificationsWhileFocusing = false; });
    EXPECT_FALSE(hold->held());
    updateSettings([](AppSettings& s) { s.pauseNotificationsWhileFocusing = true; });
    store.reset();
    EXPECT_EQ(hold->calls, (std::vector<bool>{true, false, true, false}));
}

TEST_F(FocusGuardTest, BothSwitchesOffLeaveRoundsAndTheFileAsBefore) {
    startGuarded(false, false);
    store->startSession(50);
    advanceSeconds(100);
    screenLock->lock();
    EXPECT_EQ(store->phase(), SessionPhase::focusing);
    store->endSessionForReview();
    store->saveCompletion(4, 3, QString());
    advanceSeconds(1);
    EXPECT_TRUE(hold->calls.empty());
    EXPECT_EQ(lockedToasts, 0);

    // Users who never touch the switches keep files without their keys.
    startGuarded(std::nullopt, std::nullopt);
    store->startSession(5);
    store->abandonSession();
    store.reset();
    QFile file(dataFile());
    ASSERT_TRUE(file.open(QIODevice::ReadOnly));
    const QByteArray bytes = file.readAll();
    EXPECT_FALSE(bytes.contains("pauseNotificationsWhileFocusing"));
    EXPECT_FALSE(bytes.contains("pauseRoundOnScreenLock"));
}

TEST_F(FocusGuardTest, ALockPausesARunningRoundOnceAndNeverResumesIt) {
    startGuarded(true, std::nullopt);
    screenLock->lock();
    EXPECT_EQ(store->phase(), SessionPhase::idle) << "at rest a lock changes nothing";
    store->startSession(50);
    advanceSeconds(100);
    screenLock->lock();
    EXPECT_EQ(store->phase(), SessionPhase::paused);
    EXPECT_EQ(store->focusedElapsedSeconds(), 100);
    EXPECT_EQ(store->currentEvents().back().kind, FocusEventKind::pause);
    EXPECT_EQ(store->toastMessageText(), kLockedToast);
    EXPECT_FALSE(hold->held());

    // Locking again while paused (the screensaver and logind both report it) adds nothing.
    screenLock->lock();
    advanceSeconds(600);
    EXPECT_EQ(store->phase(), SessionPhase::paused);
    EXPECT_EQ(count(FocusEventKind::pause), 1);
    EXPECT_EQ(lockedToasts, 1);
    EXPECT_EQ(store->focusedElapsedSeconds(), 100);
}

TEST_F(FocusGuardTest, ALockInABreakEndsTheBreakAsSkippedThenPauses) {
    startGuarded(std::nullopt, true);
    store->startSession(50);
    advanceSeconds(185);
    ASSERT_EQ(store->phase(), SessionPhase::microBreak);
    screenLock->lock();
    EXPECT_EQ(store->phase(), SessionPhase::paused);
    EXPECT_EQ(store->breakRemainingSeconds(), 0);
    EXPECT_EQ(store->focusedElapsedSeconds(), 180);
    EXPECT_EQ(count(FocusEventKind::reminder), 1);
    EXPECT_EQ(count(FocusEventKind::pause), 1);
    store->togglePause();
    advanceSeconds(10);
    EXPECT_EQ(store->remainingSeconds(), 3000 - 190);
}

TEST_F(FocusGuardTest, TheSwitchIsAvailableOnlyOnceTheDesktopSaysSo) {
    startGuarded(std::nullopt, std::nullopt);
    EXPECT_FALSE(store->notificationHoldAvailable());
    hold->answerProbes(true);
    EXPECT_TRUE(store->notificationHoldAvailable());

    startGuarded(std::nullopt, std::nullopt);
    hold->answerProbes(false);
    EXPECT_FALSE(store->notificationHoldAvailable());

    startGuarded(std::nullopt, std::nullopt);
    store.reset();
    hold->answerProbes(true); // a late answer finds the store gone and touches nothing
}

} // namespace
} // namespace quill::test

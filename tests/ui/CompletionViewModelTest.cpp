#include "ui/viewmodels/CompletionViewModel.h"
#include "ViewModelFixture.h"

#include <QSignalSpy>

using namespace quill;
using namespace quill::test;

namespace {

class CompletionViewModelTest : public ViewModelTest {
protected:
    CompletionViewModel vm{*store};
    void endRound(qint64 focusMs) {
        start(3600);
        advance(focusMs);
        store->endSessionForReview();
    }
};

TEST_F(CompletionViewModelTest, TheSummaryShowsWholeMinutesAndCounts) {
    start(180);
    store->recordMindWander();
    fakes.random->script.push_back(3600);
    advance(200'000);
    store->recordMindWander();
    store->endSessionForReview();
    EXPECT_EQ(vm.focusedMinutesText(), "3"); // 190 s, remainder dropped
    EXPECT_EQ(vm.wanderCountText(), "2");
    EXPECT_EQ(vm.reminderCountText(), "1");
}

TEST_F(CompletionViewModelTest, ARunningRoundNotifiesTheSheetOncePerMinuteNotPerStep) {
    start();
    QSignalSpy spy(&vm, &CompletionViewModel::summaryChanged);
    advance(150'000);
    EXPECT_EQ(spy.count(), 2);
}

TEST_F(CompletionViewModelTest, TheTaskChipNamesTheChosenTask) {
    EXPECT_EQ(vm.taskChipText(), "未分类");
    EXPECT_FALSE(vm.taskChipIsTask());
    edit([](AppSettings& s) {
        s.taskNames = QList<QString>{"Math"};
        s.selectedTaskName = "Math";
    });
    EXPECT_EQ(vm.taskChipText(), "Math");
    EXPECT_TRUE(vm.taskChipIsTask());
}

TEST_F(CompletionViewModelTest, InputsAreClampedAndEachSheetStartsAfresh) {
    endRound(60'000);
    vm.setFocusRating(9);
    vm.setEndEnergy(0);
    vm.setNote("tired after lunch");
    EXPECT_EQ(vm.focusRating(), 5);
    EXPECT_EQ(vm.endEnergy(), 1);
    vm.save();
    EXPECT_EQ(store->sessions().first().focusRating, 5);
    EXPECT_EQ(store->sessions().first().note, "tired after lunch");

    endRound(60'000);
    EXPECT_EQ(vm.note(), "") << "each sheet starts afresh";
}

// The dialog's flag outlives the sheet: left set, the next review would open on it.
TEST_F(CompletionViewModelTest, ConfirmingTheAbandonDropsTheRoundAndClosesTheQuestion) {
    endRound(60'000);
    vm.setShowAbandonConfirmation(true);
    vm.confirmAbandon();
    EXPECT_FALSE(vm.showAbandonConfirmation());
    EXPECT_EQ(store->phase(), SessionPhase::idle);
}

} // namespace

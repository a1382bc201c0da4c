#include "ui/viewmodels/ShellViewModel.h"
#include "ViewModelFixture.h"

#include <QFile>
#include <QSignalSpy>
#include <QTemporaryDir>

using namespace quill;
using namespace quill::test;

namespace {

class ShellViewModelTest : public ViewModelTest {
protected:
    ShellViewModel vm{*store};
};

TEST_F(ShellViewModelTest, ASectionOutsideTheListIsIgnored) {
    vm.selectSection(2);
    EXPECT_EQ(store->selectedSection(), AppSection::history);
    EXPECT_EQ(vm.selectedKey(), "history");
    vm.selectSection(9);
    vm.selectSection(-1);
    EXPECT_EQ(vm.selectedIndex(), 2);
}

TEST_F(ShellViewModelTest, AfterAFailedSaveTheToastWarnsAndQuittingTriesAgainThenAsks) {
    EXPECT_FALSE(vm.holdQuit()) << "nothing failed: quit at once";
    // The disk refuses every write: a plain file where the data folder should be.
    QTemporaryDir root;
    const QString blocked = root.filePath(QStringLiteral("blocked"));
    QFile blocker(blocked);
    ASSERT_TRUE(blocker.open(QIODevice::WriteOnly));
    blocker.close();
    fakes.data->setDirectory(blocked + QStringLiteral("/Quillmere"));
    store->toggleAppearance();
    advance(300);
    EXPECT_EQ(vm.toastText(), "无法保存专注记录：Not a directory");
    EXPECT_TRUE(vm.toastWarning()) << "a warning, not the check mark";

    EXPECT_TRUE(vm.holdQuit());
    EXPECT_TRUE(vm.quitWarningVisible());
    const QString copy = fakes.data->rescueDirectory() + QStringLiteral("/focus-data.json");
    EXPECT_EQ(vm.quitWarningText(),
              "无法保存专注记录：Not a directory。现在退出，上次成功保存之后的记录都会丢失。"
              "已另存一份副本：" +
                  copy);
    EXPECT_TRUE(QFile::exists(copy));
    vm.keepRunning();
    EXPECT_FALSE(vm.quitWarningVisible());

    QFile::remove(blocked);
    EXPECT_FALSE(vm.holdQuit()) << "the try before quitting succeeded";
    store->toggleAppearance();
    advance(3300); // the failure toast has gone; an ordinary one shows the check mark
    store->toast(QStringLiteral("好"));
    EXPECT_FALSE(vm.toastWarning());
}

TEST_F(ShellViewModelTest, ReviewingWhenTheRoundHasAlreadyEndedOnlyHidesTheDialog) {
    store->setShowSessionEndDialog(true);
    vm.reviewRound();
    EXPECT_FALSE(vm.endDialogVisible());
    EXPECT_FALSE(vm.reviewVisible());
    EXPECT_EQ(store->phase(), SessionPhase::idle);
}

TEST_F(ShellViewModelTest, ClosingTheWindowNeverEndsARound) {
    using A = ShellViewModel;
    EXPECT_EQ(vm.closeAction(true), A::HideWindow);
    EXPECT_EQ(vm.closeAction(false), A::QuitApp) << "idle without a tray: nothing to come back to";
    start();
    store->togglePause();
    EXPECT_EQ(vm.closeAction(true), A::HideWindow);
    EXPECT_EQ(vm.closeAction(false), A::MinimiseWindow);
    store->endSessionForReview();
    EXPECT_EQ(vm.closeAction(false), A::MinimiseWindow) << "the review still waits";
    store->saveCompletion(4, 3, QString());
    EXPECT_EQ(vm.closeAction(false), A::QuitApp);
    EXPECT_EQ(store->sessions().size(), 1);
}

TEST_F(ShellViewModelTest, QuittingAsksWhileARoundIsUnderWay) {
    QSignalSpy approved(&vm, &ShellViewModel::quitApproved);
    QSignalSpy wanted(&vm, &ShellViewModel::windowWanted);
    vm.requestQuit();
    EXPECT_EQ(approved.count(), 1) << "idle quits without a question";
    EXPECT_FALSE(vm.quitConfirmVisible());

    start();
    vm.requestQuit();
    EXPECT_TRUE(vm.quitConfirmVisible());
    EXPECT_EQ(vm.quitCancelTitle(), "继续专注");
    EXPECT_EQ(wanted.count(), 1) << "the question shows in the main window";
    EXPECT_EQ(approved.count(), 1);
    vm.cancelQuit();
    EXPECT_FALSE(vm.quitConfirmVisible());
    EXPECT_EQ(store->phase(), SessionPhase::focusing);

    vm.requestQuit();
    advance(50 * 60'000 + 250); // the round runs out under the question
    EXPECT_TRUE(vm.quitConfirmVisible());
    EXPECT_EQ(vm.quitCancelTitle(), "返回复盘");
    vm.confirmQuit();
    EXPECT_EQ(approved.count(), 2);
    EXPECT_EQ(store->phase(), SessionPhase::idle);
    EXPECT_TRUE(store->sessions().isEmpty()) << "quitting abandons the round";

    start();
    vm.requestQuit();
    store->abandonSession(); // ended elsewhere (the tray panel, the floating timer)
    EXPECT_FALSE(vm.quitConfirmVisible()) << "nothing left to ask";
}

} // namespace

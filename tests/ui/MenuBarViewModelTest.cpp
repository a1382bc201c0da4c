#include "ui/viewmodels/MenuBarViewModel.h"
#include "ViewModelFixture.h"

using namespace quill;
using namespace quill::test;

namespace {

class MenuBarViewModelTest : public ViewModelTest {
protected:
    MenuBarViewModel vm{*store};
};

// The tray panel's own test drives its buttons; here what it does not reach.
TEST_F(MenuBarViewModelTest, TheStartFollowsTheLengthAndNeverReplacesAWaitingReview) {
    edit([](AppSettings& s) { s.selectedDurationMinutes = 25; });
    EXPECT_EQ(vm.startTitle(), "开始 25 分钟");
    start();
    advance(25 * 60'000 + 250);
    ASSERT_TRUE(vm.reviewPending());
    EXPECT_FALSE(vm.active());
    vm.start();
    EXPECT_EQ(store->phase(), SessionPhase::completed) << "the finished round is kept";
    store->saveCompletion(4, 3, QString());
    EXPECT_FALSE(vm.reviewPending());
}

} // namespace

#include "ui/viewmodels/SettingsBridge.h"
#include "ViewModelFixture.h"

using namespace quill;
using namespace quill::test;

namespace {

class SettingsBridgeTest : public ViewModelTest {
protected:
    SettingsBridge bridge{*store};
};

TEST_F(SettingsBridgeTest, AbsentFieldsReadAsTheirDocumentedValues) {
    edit([](AppSettings& s) {
        s.ambientMasterVolume.reset();
        s.ambientFollowsFocus.reset();
    });
    EXPECT_DOUBLE_EQ(bridge.ambientMasterVolume(), 0.7);
    EXPECT_TRUE(bridge.ambientFollowsFocus());
}

TEST_F(SettingsBridgeTest, MasterVolumeIsKeptBetweenZeroAndOne) {
    bridge.setAmbientMasterVolume(1.7);
    EXPECT_DOUBLE_EQ(bridge.ambientMasterVolume(), 1.0);
    bridge.setAmbientMasterVolume(std::nan(""));
    EXPECT_DOUBLE_EQ(bridge.ambientMasterVolume(), 0.0);
}

} // namespace

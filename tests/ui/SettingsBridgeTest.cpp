#include "ui/viewmodels/SettingsBridge.h"
#include "ViewModelFixture.h"

#include <QFile>
#include <QSignalSpy>

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

TEST_F(SettingsBridgeTest, WritesGoThroughTheStoreAndAreSavedAfterTheDebounce) {
    QSignalSpy notified(store.get(), &AppStore::settingsChanged);
    QSignalSpy changed(&bridge, &SettingsBridge::changed);
    bridge.setAmbientFollowsFocus(false);
    bridge.setAmbientMasterVolume(0.3);
    EXPECT_EQ(notified.count(), 2);
    EXPECT_EQ(changed.count(), 2);
    EXPECT_EQ(store->settings().ambientFollowsFocus, false);
    EXPECT_EQ(store->settings().ambientMasterVolume, 0.3);
    // The master volume reaches the ambient levels at once, squared.
    EXPECT_FLOAT_EQ(fakes.ambient->levelUpdates.back().master, float(0.3 * 0.3));
    EXPECT_FALSE(QFile::exists(fakes.data->filePath()));
    advance(250);
    EXPECT_TRUE(QFile::exists(fakes.data->filePath()));
}

TEST_F(SettingsBridgeTest, MasterVolumeIsKeptBetweenZeroAndOne) {
    bridge.setAmbientMasterVolume(1.7);
    EXPECT_DOUBLE_EQ(bridge.ambientMasterVolume(), 1.0);
    bridge.setAmbientMasterVolume(std::nan(""));
    EXPECT_DOUBLE_EQ(bridge.ambientMasterVolume(), 0.0);
}

} // namespace

#include "ui/viewmodels/SettingsBridge.h"
#include "ViewModelFixture.h"

#include <QFile>
#include <QSignalSpy>

using namespace quill;
using namespace quill::test;

namespace {

class SettingsBridgeTest : public ViewModelTest {
protected:
    SettingsBridge bridge;
    void SetUp() override { bridge.setStore(store.get()); }
};

TEST_F(SettingsBridgeTest, AbsentFieldsReadAsTheirDocumentedValues) {
    edit([](AppSettings& s) {
        s.ambientMasterVolume.reset();
        s.ambientFollowsFocus.reset();
        s.appearanceMode.reset();
        s.floatingTimerOnMinimize.reset();
        s.floatingSignalButtons.reset();
        s.taskNames.reset();
    });
    EXPECT_DOUBLE_EQ(bridge.ambientMasterVolume(), 0.7);
    EXPECT_TRUE(bridge.ambientFollowsFocus());
    EXPECT_TRUE(bridge.darkAppearance());
    EXPECT_TRUE(bridge.floatingTimerOnMinimize());
    EXPECT_FALSE(bridge.floatingSignalButtons());
    EXPECT_TRUE(bridge.taskNames().isEmpty());
}

TEST_F(SettingsBridgeTest, WritesGoThroughTheStoreAndAreSavedAfterTheDebounce) {
    QSignalSpy notified(store.get(), &AppStore::settingsChanged);
    QSignalSpy changed(&bridge, &SettingsBridge::changed);
    bridge.setSelectedDurationMinutes(25);
    bridge.setAmbientFollowsFocus(false);
    bridge.setAmbientMasterVolume(0.3);
    EXPECT_EQ(notified.count(), 3);
    EXPECT_EQ(changed.count(), 3);
    EXPECT_EQ(store->settings().selectedDurationMinutes, 25);
    EXPECT_EQ(store->settings().ambientFollowsFocus, false);
    EXPECT_EQ(store->settings().ambientMasterVolume, 0.3);
    // The master volume reaches the ambient levels at once, squared.
    EXPECT_FLOAT_EQ(fakes.ambient->levelUpdates.back().master, float(0.3 * 0.3));
    EXPECT_FALSE(QFile::exists(fakes.data->filePath()));
    advance(250);
    EXPECT_TRUE(QFile::exists(fakes.data->filePath()));
}

TEST_F(SettingsBridgeTest, TheLatestReminderNeverGoesBelowTheEarliest) {
    bridge.setReminderMinimumMinutes(8);
    EXPECT_EQ(bridge.reminderMaximumFloor(), 8);
    bridge.setReminderMaximumMinutes(4);
    EXPECT_EQ(store->settings().reminderMaximumMinutes, 8);
    bridge.setReminderMaximumMinutes(20);
    EXPECT_EQ(bridge.reminderMaximumMinutes(), 20);
    bridge.setReminderMinimumMinutes(0);
    EXPECT_EQ(bridge.reminderMaximumFloor(), 1);
}

TEST_F(SettingsBridgeTest, OutOfRangeLengthsAreRepairedByTheStore) {
    bridge.setSelectedDurationMinutes(5000);
    EXPECT_EQ(bridge.selectedDurationMinutes(), 5000); // as written, until the repair runs
    advance(250);
    EXPECT_EQ(bridge.selectedDurationMinutes(), 1440);
}

TEST_F(SettingsBridgeTest, MasterVolumeIsKeptBetweenZeroAndOne) {
    bridge.setAmbientMasterVolume(1.7);
    EXPECT_DOUBLE_EQ(bridge.ambientMasterVolume(), 1.0);
    bridge.setAmbientMasterVolume(std::nan(""));
    EXPECT_DOUBLE_EQ(bridge.ambientMasterVolume(), 0.0);
}

TEST_F(SettingsBridgeTest, WithoutAStoreWritesAreDropped) {
    SettingsBridge lonely;
    lonely.setSelectedDurationMinutes(10);
    EXPECT_EQ(lonely.selectedDurationMinutes(), 50);
}

} // namespace

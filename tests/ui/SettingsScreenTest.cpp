#include "UiHarness.h"
#include "support/FakeFocusGuard.h"

#include <QTemporaryDir>
#include <gtest/gtest.h>

using namespace quill;
using namespace quill::test;

namespace {

class SettingsScreenTest : public ::testing::Test {
protected:
    explicit SettingsScreenTest(const std::function<void(FakeServices&)>& seed = {})
        : ui(std::make_unique<UiHarness>(seed)) {
        ui->click("sidebar.section.settings");
    }
    std::unique_ptr<UiHarness> ui;

    bool enabled(const QString& name) { return ui->item(name)->isEnabled(); }
    /// A menu picker stepped from the keyboard, as a user without a mouse would.
    void chooseNext(const QString& picker) {
        ui->item(picker)->forceActiveFocus(Qt::TabFocusReason);
        ui->pressKey(Qt::Key_Down);
    }
    void typeInto(const QString& field, const QString& text) {
        ui->click(field);
        ui->typeText(text);
    }
};

TEST_F(SettingsScreenTest, TheEarliestStepperPushesTheLatestAndBoundsItsStepper) {
    EXPECT_EQ(ui->text("settings.heading.title"), "让工具适应你");
    EXPECT_EQ(ui->text("settings.reminderMaximum.label"), "5 分钟");
    for (int i = 0; i < 3; ++i)
        ui->click("settings.reminderMinimum.stepper.up");
    EXPECT_EQ(ui->text("settings.reminderMinimum.label"), "6 分钟");
    EXPECT_EQ(ui->text("settings.reminderMaximum.label"), "6 分钟");
    EXPECT_EQ(ui->store().settings().reminderMaximumMinutes, 6);
    EXPECT_FALSE(enabled("settings.reminderMaximum.stepper.down")); // at its lower bound
    ui->click("settings.reminderMaximum.stepper.up");
    EXPECT_EQ(ui->text("settings.reminderMaximum.label"), "7 分钟");
    EXPECT_TRUE(enabled("settings.reminderMaximum.stepper.down"));
}

TEST_F(SettingsScreenTest, TheDurationFieldShowsTheValueThatIsKept) {
    ui->click("settings.duration.field");
    ui->pressKey(Qt::Key_End);
    for (int i = 0; i < 2; ++i)
        ui->pressKey(Qt::Key_Backspace);
    ui->typeText(QStringLiteral("2000"));
    ui->pressKey(Qt::Key_Return);
    EXPECT_EQ(ui->text("settings.duration.field"), "1440");
    EXPECT_EQ(ui->store().settings().selectedDurationMinutes, 1440);
    EXPECT_FALSE(enabled("settings.duration.up"));
    ui->click("settings.duration.down");
    EXPECT_EQ(ui->text("settings.duration.field"), "1439");
}

TEST_F(SettingsScreenTest, NetEaseHidesTheSourceRowAndRetitlesTheSwitch) {
    EXPECT_TRUE(ui->isShown("settings.music.sourceRow"));
    EXPECT_FALSE(ui->isShown("settings.music.netEaseNote"));
    chooseNext("settings.music.service");
    EXPECT_EQ(ui->store().settings().musicService, MusicService::netEase);
    EXPECT_FALSE(ui->isShown("settings.music.sourceRow"));
    EXPECT_FALSE(ui->isShown("settings.music.playlist"));
    EXPECT_TRUE(ui->isShown("settings.music.netEaseNote"));
    EXPECT_EQ(ui->text("settings.music.autoPlay"), "结束后自动播放当前队列");
    EXPECT_EQ(ui->item("settings.music.symbol")->property("name").toString(), "cloud.fill");
}

TEST_F(SettingsScreenTest, TheMusicTestWaitsForAPlaylistName) {
    chooseNext("settings.music.source");
    ASSERT_TRUE(ui->isShown("settings.music.playlist"));
    EXPECT_FALSE(enabled("settings.music.test"));
    typeInto("settings.music.playlistField", QStringLiteral("   "));
    EXPECT_FALSE(enabled("settings.music.test"));
    ui->typeText(QStringLiteral("Deep"));
    EXPECT_TRUE(enabled("settings.music.test"));
    ui->click("settings.music.test");
    ASSERT_EQ(ui->fakes.music->requests.size(), 1u);
    EXPECT_EQ(ui->fakes.music->requests[0].playlistName, "   Deep");
    ui->fakes.music->requests[0].completion({false, QStringLiteral("没有找到播放器")});
    ui->settle();
    EXPECT_EQ(ui->text("settings.music.message"), "播放失败：没有找到播放器");
}

TEST_F(SettingsScreenTest, NoTaskCanBeAddedDuringARound) {
    EXPECT_TRUE(ui->isShown("settings.tasks.empty"));
    ui->store().startSession();
    ui->settle();
    typeInto("settings.tasks.field", QStringLiteral("Essay"));
    ui->pressKey(Qt::Key_Return);
    EXPECT_FALSE(enabled("settings.tasks.add"));
    ui->click("settings.tasks.add");
    EXPECT_TRUE(ui->store().settings().effectiveTaskNames().isEmpty());

    ui->store().abandonSession();
    ui->settle();
    typeInto("settings.tasks.field", QStringLiteral("Essay"));
    ui->pressKey(Qt::Key_Return);
    EXPECT_EQ(ui->store().settings().effectiveTaskNames(), QStringList({"Essay"}));
    EXPECT_EQ(ui->text("settings.tasks.field"), "");
    EXPECT_EQ(ui->text("settings.tasks.row.0.name"), "Essay");
    EXPECT_TRUE(ui->isShown("settings.tasks.row.0.current"));
    EXPECT_EQ(ui->text("settings.tasks.row.0.count"), "0 轮");
    ui->click("settings.tasks.row.0.remove");
    EXPECT_TRUE(ui->isShown("settings.tasks.empty"));
}

class ClearHistoryTest : public SettingsScreenTest {
protected:
    static QTemporaryDir& folder() {
        static QTemporaryDir dir;
        return dir;
    }
    static std::function<void(FakeServices&)> inFolder(bool seed) {
        return [seed](FakeServices& f) {
            f.data->setDirectory(folder().path());
            if (seed)
                seedSessions({sessionAt(QDateTime::currentDateTime().addDays(-1))})(f);
        };
    }
    ClearHistoryTest() : SettingsScreenTest(inFolder(true)) {}
};

TEST_F(ClearHistoryTest, ClearingThroughTheAlertEmptiesTheHistoryForGood) {
    ASSERT_EQ(ui->store().sessionCount(), 1);
    ui->click("settings.clear");
    ASSERT_TRUE(ui->isShown("settings.clearAlert"));
    ui->click("settings.clearAlert.cancel");
    EXPECT_FALSE(ui->isShown("settings.clearAlert"));
    EXPECT_EQ(ui->store().sessionCount(), 1);

    ui->click("settings.clear");
    ui->click("settings.clearAlert.confirm");
    EXPECT_FALSE(ui->isShown("settings.clearAlert"));
    EXPECT_EQ(ui->store().sessionCount(), 0);
    EXPECT_EQ(ui->text("toast.text"), "专注记录已清空。");
    EXPECT_FALSE(enabled("settings.clear"));
    EXPECT_TRUE(enabled("settings.export"));

    ui.reset();
    UiHarness restarted(inFolder(false));
    EXPECT_EQ(restarted.store().sessionCount(), 0);
}

} // namespace

namespace {

class FocusGuardCardTest : public SettingsScreenTest {
protected:
    static std::function<void(FakeServices&)> withHold(std::shared_ptr<NotificationHold> hold) {
        return [hold](FakeServices& f) { f.notificationHold = hold; };
    }
    FocusGuardCardTest() : SettingsScreenTest(withHold(hold)) {}
    static inline std::shared_ptr<RecordingNotificationHold> hold;
    void SetUp() override { ui->settle(); }
    void press(const QString& name) {
        ui->item(name)->forceActiveFocus(Qt::TabFocusReason);
        ui->pressKey(Qt::Key_Space);
    }

public:
    static void SetUpTestSuite() { hold = std::make_shared<RecordingNotificationHold>(); }
    static void TearDownTestSuite() { hold.reset(); }
};

// Below the fold: the switches are pressed from the keyboard.
TEST_F(FocusGuardCardTest, TheNotificationSwitchWaitsForTheDesktopAndSaysWhyNot) {
    EXPECT_EQ(ui->text("settings.guard.title"), "专注保护");
    EXPECT_FALSE(enabled("settings.guard.notifications"));
    EXPECT_EQ(ui->text("settings.guard.notificationsRow.detail"),
              "当前桌面无法暂停通知（支持 GNOME 和 KDE Plasma）");

    hold->answerProbes(true);
    ui->settle();
    ASSERT_TRUE(enabled("settings.guard.notifications"));
    EXPECT_EQ(ui->text("settings.guard.notificationsRow.detail"),
              "计时和微休息期间不弹出通知，暂停或结束后恢复原样");
    press("settings.guard.notifications");
    EXPECT_EQ(ui->store().settings().pauseNotificationsWhileFocusing, true);
    EXPECT_TRUE(ui->item("settings.guard.notifications")->property("checked").toBool());

    EXPECT_TRUE(ui->item("settings.guard.screenLock")->property("checked").toBool());
    press("settings.guard.screenLock");
    EXPECT_EQ(ui->store().settings().pauseRoundOnScreenLock, false);
}

} // namespace

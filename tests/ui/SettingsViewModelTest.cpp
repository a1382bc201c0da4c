#include "ui/viewmodels/SettingsViewModel.h"
#include "ViewModelFixture.h"
#include "ui/viewmodels/MusicSettingsViewModel.h"
#include "ui/viewmodels/TaskSettingsViewModel.h"

#include <QSignalSpy>

using namespace quill;
using namespace quill::test;

namespace {

class SettingsViewModelTest : public ViewModelTest {
protected:
    SettingsViewModel vm{*store};
    // What a control shows must already be what the store keeps after its repair.
    void expectRepaired() { EXPECT_EQ(store->settings(), normalizedSettings(store->settings())); }
};

TEST_F(SettingsViewModelTest, EarliestTimePushesTheLatestUpAndBoundsItsStepper) {
    vm.setReminderMinimum(8); // default latest is 5
    EXPECT_EQ(vm.reminderMinimum(), 8);
    EXPECT_EQ(vm.reminderMaximum(), 8);
    EXPECT_EQ(vm.reminderMaximumFrom(), 8);
    EXPECT_EQ(vm.reminderMaximumText(), "8 分钟");

    vm.setReminderMaximum(3); // below the earliest: held at it
    EXPECT_EQ(vm.reminderMaximum(), 8);
    vm.setReminderMinimum(75);
    EXPECT_EQ(vm.reminderMinimum(), 60);
    EXPECT_EQ(vm.reminderMaximum(), 60);
    vm.setReminderMaximum(120);
    EXPECT_EQ(vm.reminderMaximum(), 90);
    vm.setMicroBreakSeconds(3);
    EXPECT_EQ(vm.microBreakText(), "5 秒");
    vm.setMicroBreakSeconds(90);
    EXPECT_EQ(vm.microBreakSeconds(), 60);
    expectRepaired();
}

TEST_F(SettingsViewModelTest, TheDurationFieldKeepsOnlyWholeMinutesInRange) {
    QSignalSpy changed(&vm, &SettingsViewModel::changed);
    vm.commitDurationText(QStringLiteral("2000"));
    EXPECT_EQ(vm.selectedDuration(), 1440);
    vm.commitDurationText(QStringLiteral(" 0 "));
    EXPECT_EQ(vm.selectedDuration(), 1);
    vm.commitDurationText(QStringLiteral("99999999999999999999"));
    EXPECT_EQ(vm.selectedDuration(), 1);
    vm.commitDurationText(QStringLiteral("25"));
    changed.clear();
    // Nothing usable: the stored length stays and the field is told to show it again.
    vm.commitDurationText(QString());
    vm.commitDurationText(QStringLiteral("abc"));
    // Nor does a value the repair turns back into the stored one leave the field showing it.
    vm.commitDurationText(QStringLiteral("25"));
    EXPECT_EQ(vm.selectedDuration(), 25);
    EXPECT_EQ(changed.count(), 3);
    expectRepaired();
}

TEST_F(SettingsViewModelTest, SoundPickersFollowTheStoredNamesAndPreviewThem) {
    EXPECT_EQ(vm.reminderSoundOptions().first(), "随机");
    EXPECT_EQ(vm.completionSoundOptions().last(), "Hero");
    edit([](AppSettings& s) { s.reminderSound = QStringLiteral("Nonexistent"); });
    EXPECT_EQ(vm.reminderSoundIndex(), -1); // unknown names are kept, not shown as another
    vm.setReminderSoundIndex(0);
    EXPECT_EQ(store->settings().reminderSound, "随机");
    vm.setReminderSoundIndex(99);
    EXPECT_EQ(store->settings().reminderSound, "随机");
    const QString third = vm.reminderSoundOptions().at(2);
    vm.setReminderSoundIndex(2);
    vm.setCompletionSoundIndex(int(vm.completionSoundOptions().indexOf("Hero")));
    vm.previewReminderSound();
    vm.previewCompletionSound();
    EXPECT_EQ(fakes.sounds->played, QStringList({third, "Hero"}));
}

TEST_F(SettingsViewModelTest, WithNoStoredRoundsThereIsNothingToClear) {
    vm.requestClear();
    EXPECT_FALSE(vm.clearEnabled());
    EXPECT_FALSE(vm.clearConfirmationShown());
    vm.confirmClear(); // nothing open: nothing happens
    EXPECT_EQ(store->toastMessageText(), QString());
}

/// Answers with a prepared name, or holds the answer back until told.
class ScriptedProbe final : public MusicPlayerProbe {
public:
    void find(MusicService service, Done done) override {
        asked.push_back(service);
        if (holdBack)
            pending.push_back(std::move(done));
        else
            done(answer);
    }
    QString answer;
    bool holdBack = false;
    std::vector<MusicService> asked;
    std::vector<Done> pending;
};

class MusicSettingsTest : public ViewModelTest {
protected:
    MusicSettingsViewModel music{*store};
    std::shared_ptr<ScriptedProbe> probe = std::make_shared<ScriptedProbe>();
    void SetUp() override { music.setProbe(probe); }
};

TEST_F(MusicSettingsTest, TheTestNeedsAPlaylistNameOnlyForTheMusicAppsPlaylist) {
    EXPECT_TRUE(music.testEnabled());
    music.setSourceIndex(1);
    EXPECT_FALSE(music.testEnabled());
    music.setPlaylistName(QStringLiteral(" \n\t "));
    EXPECT_FALSE(music.testEnabled());
    music.testMusic(); // a disabled button's command does nothing
    EXPECT_TRUE(fakes.music->requests.empty());
    music.setServiceIndex(1);
    EXPECT_TRUE(music.testEnabled()); // NetEase plays its own queue
}

TEST_F(MusicSettingsTest, TheMessageIsCoralOnlyForFailures) {
    store->testMusic();
    ASSERT_EQ(fakes.music->requests.size(), 1u);
    fakes.music->requests[0].completion({false, QStringLiteral("没有找到播放器")});
    EXPECT_EQ(music.messageTint(), "coral");
    store->testMusic();
    fakes.music->requests[1].completion({true, QStringLiteral("Song — Artist")});
    EXPECT_EQ(music.message(), "正在播放：Song — Artist");
    EXPECT_EQ(music.messageTint(), "mint");
}

TEST_F(MusicSettingsTest, TheHintNamesThePlayerThatWouldBeDriven) {
    edit([](AppSettings& s) { s.musicService.reset(); }); // absent counts as the music app
    EXPECT_EQ(music.serviceIndex(), 0);
    EXPECT_EQ(music.hintTitle(), "没有找到正在运行的音乐播放器");
    probe->answer = QStringLiteral("Rhythmbox");
    music.refreshPlayer();
    EXPECT_EQ(music.hintTitle(), "将控制：Rhythmbox");
    EXPECT_EQ(music.hintDetail(), "通过 MPRIS 控制正在运行的播放器");

    // Switching the service looks again; an answer that arrives late for the old search
    // must not overwrite the newer one.
    probe->holdBack = true;
    music.refreshPlayer();
    music.setServiceIndex(1);
    ASSERT_EQ(probe->pending.size(), 2u);
    EXPECT_EQ(probe->asked.back(), MusicService::netEase);
    probe->pending[1](QString());
    probe->pending[0](QStringLiteral("Rhythmbox"));
    EXPECT_EQ(music.hintTitle(), "没有找到正在运行的网易云音乐");
    EXPECT_EQ(music.hintDetail(), "测试时会在后台打开客户端");
}

class TaskSettingsTest : public ViewModelTest {
protected:
    TaskSettingsViewModel tasks{*store};
};

// The screen test adds during and after a round; here blank names and the kept draft.
TEST_F(TaskSettingsTest, AddingNeedsTextAndADraftOutlivesARound) {
    tasks.setNewTaskName(QStringLiteral(" \n "));
    EXPECT_FALSE(tasks.addEnabled());
    EXPECT_FALSE(tasks.addTask());
    tasks.setNewTaskName(QStringLiteral("Reading"));
    start();
    EXPECT_FALSE(tasks.inputEnabled());
    EXPECT_FALSE(tasks.addTask());
    store->abandonSession();
    EXPECT_EQ(tasks.newTaskName(), "Reading");
    EXPECT_TRUE(tasks.addTask());
}

TEST_F(TaskSettingsTest, RowsShowTheCurrentBadgeAndStoredRoundCounts) {
    EXPECT_TRUE(tasks.rows().isEmpty());
    tasks.setNewTaskName(QStringLiteral("Math"));
    tasks.addTask();
    tasks.setNewTaskName(QStringLiteral("Essay"));
    tasks.addTask();
    store->selectTask(QStringLiteral("Math"));
    start();
    store->endSessionForReview();
    store->saveCompletion(4, 3, QString());

    const QVariantList rows = tasks.rows();
    ASSERT_EQ(rows.size(), 2);
    const QVariantMap math = rows[0].toMap(), essay = rows[1].toMap();
    EXPECT_EQ(math["name"].toString(), "Math");
    EXPECT_TRUE(math["current"].toBool());
    EXPECT_EQ(math["countText"].toString(), "1 轮");
    EXPECT_FALSE(essay["current"].toBool());
    EXPECT_EQ(essay["countText"].toString(), "0 轮");

    QSignalSpy rowsChanged(&tasks, &TaskSettingsViewModel::rowsChanged);
    store->setAmbientVolume(0.3, AmbientSound::rain); // unrelated settings write
    EXPECT_EQ(rowsChanged.count(), 0);
    tasks.removeTask(QStringLiteral("Math"));
    EXPECT_EQ(tasks.rows()[0].toMap()["name"].toString(), "Essay");
}

} // namespace

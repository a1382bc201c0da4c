// The store's ambient side (levels, toggles, following the round) and end-of-round music.
#include "StoreHarness.h"

namespace quill::test {
namespace {

class AmbientMusicTest : public StoreTest {
protected:
    void SetUp() override { createStore(); }
    const AmbientLevels& lastLevels() const { return fakes.ambient->levelUpdates.back(); }
};

TEST_F(AmbientMusicTest, LevelsPassAtOnceAndOnlyWhenTheyChange) {
    ASSERT_EQ(fakes.ambient->levelUpdates.size(), 1u) << "the current value passes at start-up";
    EXPECT_FLOAT_EQ(lastLevels().master, 0.49f);
    for (float level : lastLevels().sounds)
        EXPECT_EQ(level, 0.0f);

    store->setAmbientVolume(0.5, AmbientSound::wind); // not selected: level stays 0
    EXPECT_EQ(fakes.ambient->levelUpdates.size(), 1u);
    store->toggleAmbientSound(AmbientSound::wind);
    EXPECT_FLOAT_EQ(lastLevels().level(AmbientSound::wind), 0.25f);
    store->addTask(QStringLiteral("unrelated")); // settings change, same levels
    EXPECT_EQ(fakes.ambient->levelUpdates.size(), 2u);
}

TEST_F(AmbientMusicTest, PlayButtonPicksRainAndPlaysAgainAfterAStopOrAnEndByItself) {
    store->toggleAmbientPlayback();
    EXPECT_EQ(store->settings().ambientSounds, QList<QString>{QStringLiteral("rain")});
    EXPECT_TRUE(store->isAmbientPlaying());
    EXPECT_EQ(fakes.ambient->playCalls, 1);
    store->toggleAmbientPlayback();
    EXPECT_FALSE(store->isAmbientPlaying());
    EXPECT_EQ(fakes.ambient->stopCalls, 1);
    store->toggleAmbientPlayback(); // rain is still selected
    EXPECT_EQ(store->settings().ambientSounds, QList<QString>{QStringLiteral("rain")});
    ASSERT_TRUE(store->isAmbientPlaying());
    fakes.ambient->endByItself();
    EXPECT_FALSE(store->isAmbientPlaying());
    EXPECT_EQ(store->toastMessageText(), QStringLiteral("环境音无法播放，请检查声音输出设备。"));
    store->toggleAmbientPlayback();
    EXPECT_TRUE(store->isAmbientPlaying()) << "the next play tries again";
    EXPECT_EQ(fakes.ambient->playCalls, 3);
}

TEST_F(AmbientMusicTest, DeselectingTheLastSoundStopsAndOneOfTwoOnlyFades) {
    updateSettings([](AppSettings& s) {
        s.ambientSounds = QList<QString>{QStringLiteral("fire"), QStringLiteral("bogus")};
    });
    store->toggleAmbientSound(AmbientSound::birds);
    EXPECT_TRUE(store->isAmbientPlaying());
    EXPECT_EQ(store->settings().ambientSounds,
              (QList<QString>{QStringLiteral("fire"), QStringLiteral("birds")}))
        << "unknown names are dropped when the list is stored back";
    store->toggleAmbientSound(AmbientSound::fire);
    EXPECT_EQ(fakes.ambient->stopCalls, 0);
    EXPECT_EQ(lastLevels().level(AmbientSound::fire), 0.0f);
    store->toggleAmbientSound(AmbientSound::birds);
    EXPECT_EQ(fakes.ambient->stopCalls, 1);
    EXPECT_FALSE(store->isAmbientPlaying());
}

TEST_F(AmbientMusicTest, AmbientFollowsTheRoundsPhases) {
    updateSettings([](AppSettings& s) {
        s.ambientSounds = QList<QString>{QStringLiteral("rain")};
        s.reminderMinimumMinutes = 1;
        s.reminderMaximumMinutes = 1;
    });
    store->startSession(5);
    EXPECT_TRUE(store->isAmbientPlaying());
    store->togglePause();
    EXPECT_FALSE(store->isAmbientPlaying());
    store->toggleAmbientSound(AmbientSound::waves); // selecting plays even while paused
    EXPECT_TRUE(store->isAmbientPlaying());
    store->togglePause(); // resume: play again (the player ignores a redundant play)
    EXPECT_TRUE(store->isAmbientPlaying());
    const int stops = fakes.ambient->stopCalls;
    advanceSeconds(61); // a micro-break does not touch the sound
    EXPECT_EQ(store->phase(), SessionPhase::microBreak);
    EXPECT_EQ(fakes.ambient->stopCalls, stops);
    store->setShowSessionEndDialog(true);
    store->endSessionForReview();
    EXPECT_FALSE(store->isAmbientPlaying());
    store->saveCompletion(4, 4, QString());
    EXPECT_FALSE(store->isAmbientPlaying());
}

TEST_F(AmbientMusicTest, WithoutFollowingTheRoundEndLeavesTheSoundUnlessMusicStarts) {
    updateSettings([](AppSettings& s) {
        s.ambientSounds = QList<QString>{QStringLiteral("rain")};
        s.ambientFollowsFocus = false;
    });
    store->toggleAmbientPlayback();
    store->startSession(1);
    EXPECT_EQ(fakes.ambient->playCalls, 1) << "starting a round does not restart it";
    advanceSeconds(61);
    EXPECT_TRUE(store->isAmbientPlaying());

    store->saveCompletion(4, 4, QString());
    updateSettings([](AppSettings& s) { s.autoPlayMusic = true; });
    store->startSession(1);
    advanceSeconds(61);
    EXPECT_FALSE(store->isAmbientPlaying()) << "music at the end silences the ambient sound";
    EXPECT_EQ(fakes.music->requests.size(), 1u);
}

TEST_F(AmbientMusicTest, FailureToastIsReplacedByTheStartToastButStaysOnResume) {
    updateSettings(
        [](AppSettings& s) { s.ambientSounds = QList<QString>{QStringLiteral("rain")}; });
    fakes.ambient->playResult = false;
    store->startSession(5);
    EXPECT_FALSE(store->isAmbientPlaying());
    EXPECT_EQ(store->toastMessageText(), QStringLiteral("开始这一轮。先只做好眼前的一小段。"));
    store->togglePause();
    store->togglePause();
    EXPECT_EQ(store->toastMessageText(), QStringLiteral("环境音无法播放，请检查声音输出设备。"));
}

TEST_F(AmbientMusicTest, MusicTestShowsConnectingThenTheOutcome) {
    store->testMusic();
    EXPECT_EQ(store->musicMessageText(), QStringLiteral("正在连接“本机音乐播放器”…"));
    updateSettings([](AppSettings& s) {
        s.musicService = MusicService::netEase;
        s.musicSource = MusicSource::playlist;
        s.playlistName = QStringLiteral("晚安 \"mix\"");
    });
    store->testMusic();
    EXPECT_EQ(store->musicMessageText(), QStringLiteral("正在连接“网易云音乐”…"));
    ASSERT_EQ(fakes.music->requests.size(), 2u);
    EXPECT_EQ(fakes.music->requests[1].service, MusicService::netEase);
    EXPECT_EQ(fakes.music->requests[1].source, MusicSource::playlist);
    EXPECT_EQ(fakes.music->requests[1].playlistName, QStringLiteral("晚安 \"mix\""));

    fakes.music->requests[1].completion({false, QStringLiteral("没有找到播放列表。")});
    EXPECT_EQ(store->musicMessageText(), QStringLiteral("播放失败：没有找到播放列表。"));
    fakes.music->requests[0].completion({true, QStringLiteral("已开始随机播放")});
    EXPECT_EQ(store->musicMessageText(), QStringLiteral("正在播放：已开始随机播放"));
}

} // namespace
} // namespace quill::test

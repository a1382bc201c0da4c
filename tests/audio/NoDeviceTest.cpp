#include "AudioTestSupport.h"
#include "audio/AmbientPlayer.h"
#include "audio/NamedSoundPlayer.h"
#include "audio/PreciseTimerScheduler.h"
#include "audio/SdlAudioDevice.h"

#include <QTemporaryDir>
#include <gtest/gtest.h>

using namespace quill;
using namespace quill::test;

namespace {

class NoDeviceTest : public ::testing::Test {
protected:
    void SetUp() override {
        ASSERT_TRUE(dir.isValid());
        QFile conf(dir.path() + QStringLiteral("/client.conf"));
        ASSERT_TRUE(conf.open(QIODevice::WriteOnly));
        conf.write("autospawn = no\n");
        conf.close();
        // A sound server address where nothing listens, and no fallback to other drivers.
        qputenv(
            "PULSE_SERVER",
            (QStringLiteral("unix:") + dir.path() + QStringLiteral("/nobody-here")).toLocal8Bit());
        qputenv("PULSE_CLIENTCONFIG", (dir.path() + QStringLiteral("/client.conf")).toLocal8Bit());
        qputenv("SDL_AUDIODRIVER", "pulseaudio");
    }
    QTemporaryDir dir;
    AudioLogCapture log;
};

TEST_F(NoDeviceTest, AmbientPlayFailsCleanlyAndLogs) {
    AmbientPlayer::Environment env;
    env.device = std::make_shared<SdlAudioDevice>();
    env.scheduler = std::make_shared<PreciseTimerScheduler>();
    env.resources = AmbientResources(dir.path());
    AmbientPlayer player(std::move(env));
    EXPECT_EQ(player.sampleRate(), 48000.0) << "an unknown output rate falls back to 48 kHz";
    player.setLevels(
        levels(0.49f, {{AmbientSound::rain, 0.49f}, {AmbientSound::brownNoise, 0.3f}}));
    EXPECT_FALSE(player.play());
    EXPECT_FALSE(player.isPlaying());
    EXPECT_FALSE(player.isEngineRunning());
    ASSERT_EQ(log.lines().size(), 1);
    EXPECT_TRUE(log.lines().first().startsWith(QStringLiteral("Quillmere ambient engine failed: ")))
        << log.lines().first().toStdString();
    player.stop();
    EXPECT_FALSE(player.play()) << "and again, without crashing";
}

TEST_F(NoDeviceTest, NamedSoundsDoNothingAudible) {
    NamedSoundPlayer::Environment env;
    env.device = std::make_shared<SdlAudioDevice>();
    env.scheduler = std::make_shared<PreciseTimerScheduler>();
    bool ran = false;
    env.runInBackground = [&](std::function<void()> job) {
        job();
        ran = true;
    };
    NamedSoundPlayer sounds(std::move(env));
    sounds.play(QStringLiteral("Glass"));
    sounds.play(QStringLiteral("Hero"));
    EXPECT_TRUE(ran);
    EXPECT_FALSE(log.lines().isEmpty());
}

} // namespace

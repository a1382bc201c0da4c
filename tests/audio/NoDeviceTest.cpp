#include "AudioTestSupport.h"
#include "audio/AmbientPlayer.h"
#include "audio/NamedSoundPlayer.h"
#include "audio/OfflineAudioDevice.h"
#include "audio/PreciseTimerScheduler.h"
#include "audio/PulseAudioDevice.h"
#include "audio/SdlAudioDevice.h"
#include "audio/ThreadedAudioDevice.h"
#include "support/VirtualScheduler.h"

#include <QTemporaryDir>
#include <gtest/gtest.h>

#include <atomic>
#include <cstring>
#include <future>
#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>

using namespace quill;
using namespace quill::test;

namespace {

/// Sound servers that do not work: nobody at the address, or one that takes the connection
/// and never answers.
class NoDeviceTest : public ::testing::Test {
protected:
    void SetUp() override {
        ASSERT_TRUE(dir.isValid());
        ASSERT_TRUE(writeBytes(dir.path() + QStringLiteral("/client.conf"), "autospawn = no\n"));
        qputenv("PULSE_SERVER", (QStringLiteral("unix:") + socketPath()).toLocal8Bit());
        qputenv("PULSE_CLIENTCONFIG", (dir.path() + QStringLiteral("/client.conf")).toLocal8Bit());
        qputenv("SDL_AUDIODRIVER", "pulseaudio");
    }
    void TearDown() override {
        if (wedged >= 0)
            ::close(wedged);
    }

    QString socketPath() const { return dir.path() + QStringLiteral("/native"); }

    /// Listens at the server's address and never reads: connections are taken by the kernel.
    void wedgeServer() {
        wedged = ::socket(AF_UNIX, SOCK_STREAM, 0);
        ASSERT_GE(wedged, 0);
        sockaddr_un address{};
        address.sun_family = AF_UNIX;
        const QByteArray path = socketPath().toLocal8Bit();
        ASSERT_LT(std::size_t(path.size()), sizeof(address.sun_path));
        std::memcpy(address.sun_path, path.constData(), std::size_t(path.size()));
        ASSERT_EQ(::bind(wedged, reinterpret_cast<sockaddr*>(&address), sizeof(address)), 0);
        ASSERT_EQ(::listen(wedged, 8), 0);
    }

    std::unique_ptr<AmbientPlayer> makePlayer() {
        AmbientPlayer::Environment env;
        env.device = device;
        env.scheduler = scheduler;
        env.resources = AmbientResources(dir.path());
        auto player = std::make_unique<AmbientPlayer>(std::move(env));
        player->setStopHandler([this] { ++endings; });
        player->setLevels(levels(0.49f, {{AmbientSound::brownNoise, 0.3f}}));
        return player;
    }

    QTemporaryDir dir;
    AudioLogCapture log;
    int wedged = -1;
    int endings = 0;
    std::shared_ptr<PulseAudioDevice> device = std::make_shared<PulseAudioDevice>();
    std::shared_ptr<ManualClock> clock = std::make_shared<ManualClock>();
    std::shared_ptr<VirtualScheduler> scheduler = std::make_shared<VirtualScheduler>(clock);
};

TEST_F(NoDeviceTest, AmbientPlayWithNobodyListeningEndsWithOneLogLineAndTriesAgain) {
    auto player = makePlayer();
    for (int attempt = 1; attempt <= 2; ++attempt) {
        // Whether the refusal comes at once or a moment later, the play ends the same way.
        if (player->play())
            ASSERT_TRUE(spinUntil([&] { return endings == attempt; }));
        else
            ++endings;
        EXPECT_FALSE(player->isPlaying());
        EXPECT_FALSE(player->isEngineRunning());
        ASSERT_EQ(log.lines().size(), attempt);
        EXPECT_TRUE(
            log.lines().last().startsWith(QStringLiteral("Quillmere ambient engine failed: ")))
            << log.lines().last().toStdString();
    }
    EXPECT_EQ(player->sampleRate(), 48000.0) << "an unknown output rate falls back to 48 kHz";
}

TEST_F(NoDeviceTest, AServerThatNeverAnswersNeitherFreezesPlayNorLeavesItPlaying) {
    wedgeServer();
    auto player = makePlayer();
    ASSERT_TRUE(player->play()) << "play returns while the server is still silent";
    EXPECT_EQ(device->state(), AudioDevice::State::starting);
    scheduler->advance(AmbientPlayer::kStartTimeout.count() - 1);
    EXPECT_EQ(endings, 0);
    scheduler->advance(1);
    EXPECT_EQ(endings, 1) << "the store is told, so the card does not claim to play";
    EXPECT_FALSE(player->isPlaying());
    EXPECT_EQ(device->state(), AudioDevice::State::stopped);
    EXPECT_EQ(log.lines(),
              QStringList{QStringLiteral(
                  "Quillmere ambient engine failed: the sound server did not answer")});
    ASSERT_TRUE(player->play()) << "and the next play tries again";
    player.reset(); // abandoning a start waits for nothing either
}

/// Opens only when the test lets it, as a sound system that takes its time.
class GatedDevice final : public AudioDevice {
public:
    double preferredSampleRate() override { return 0.0; }
    bool start(double rate, AudioRenderer* renderer, QString* error) override {
        gate.wait();
        return output.start(rate, renderer, error);
    }
    void stop() override {
        output.stop();
        ++stops;
    }
    State state() const override { return output.state(); }
    Event takeEvent() override { return output.takeEvent(); }
    std::shared_future<void> gate;
    OfflineAudioDevice output;
    std::atomic<int> stops{0};
};

struct CountingRenderer final : AudioRenderer {
    void render(float*, int) override { ++calls; }
    int calls = 0;
};

TEST_F(NoDeviceTest, ASlowOpenHoldsNobodyUpAndOneStoppedMeanwhileIsClosedUnheard) {
    std::promise<void> open;
    auto inner = std::make_shared<GatedDevice>();
    inner->gate = open.get_future().share();
    CountingRenderer renderer;
    {
        ThreadedAudioDevice device(inner);
        ASSERT_TRUE(device.start(48000.0, &renderer, nullptr));
        EXPECT_EQ(device.state(), AudioDevice::State::starting);
        device.stop(); // while the open still waits
        open.set_value();
        // The worker finishes the open, then closes it; the stopped device stays stopped.
        ASSERT_TRUE(spinUntil([&] { return inner->stops > 0; }));
        EXPECT_EQ(device.state(), AudioDevice::State::stopped);
        EXPECT_EQ(device.takeEvent(), AudioDevice::Event::none);
    }
    EXPECT_EQ(renderer.calls, 0);

    ThreadedAudioDevice device(inner);
    ASSERT_TRUE(device.start(48000.0, &renderer, nullptr));
    bool started = false;
    ASSERT_TRUE(spinUntil(
        [&] { return started = started || device.takeEvent() == AudioDevice::Event::started; }));
    inner->output.render(64);
    EXPECT_EQ(renderer.calls, 1);
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

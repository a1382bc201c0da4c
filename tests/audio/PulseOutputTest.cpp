#include "AudioTestSupport.h"
#include "MonitorRecorder.h"
#include "PulseTestServer.h"
#include "audio/AmbientPlayer.h"
#include "audio/BrownNoiseGenerator.h"
#include "audio/PreciseTimerScheduler.h"
#include "audio/PulseAudioDevice.h"

#include <QTemporaryDir>
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>

using namespace quill;
using namespace quill::test;

namespace {
constexpr qint64 kRate = 48000; // parec's rate

struct Energy {
    double rms = 0, inBand = 0, high = 0; // fractions of the total for the bands
};

/// Loudness of the left channel between two frames and how it splits across the spectrum.
Energy measure(const MonitorRecorder& rec, qint64 from, qint64 to) {
    using Biquad = BrownNoiseGenerator::Biquad;
    auto hp30 = Biquad::highPass(30, kRate, 1.414f), hp30b = hp30;
    auto lp700 = Biquad::lowPass(700, kRate, 1.414f), lp700b = lp700;
    auto hp1500 = Biquad::highPass(1500, kRate, 1.414f), hp1500b = hp1500;
    double total = 0, band = 0, high = 0;
    for (qint64 i = from; i < to; ++i) {
        const float x = rec.samples()[2 * i];
        const float b = lp700b.process(lp700.process(hp30b.process(hp30.process(x))));
        const float h = hp1500b.process(hp1500.process(x));
        if (i - from < kRate / 10)
            continue; // filters settle
        total += double(x) * x;
        band += double(b) * b;
        high += double(h) * h;
    }
    const double n = double(to - from - kRate / 10);
    Energy e;
    e.rms = std::sqrt(total / n);
    e.inBand = total > 0 ? band / total : 0;
    e.high = total > 0 ? high / total : 0;
    return e;
}

/// The real output, noting the master levels the player hands it: the fade is judged by
/// what the player asked for, whenever the sound server gets to play it.
class TappedDevice final : public AudioDevice {
public:
    double preferredSampleRate() override { return m_device.preferredSampleRate(); }
    bool start(double rate, AudioRenderer* renderer, QString* error) override {
        return m_device.start(rate, renderer, error);
    }
    void stop() override { m_device.stop(); }
    void release() override { m_device.release(); }
    State state() const override { return m_device.state(); }
    Event takeEvent() override { return m_device.takeEvent(); }
    QString error() const override { return m_device.error(); }
    void setEventListener(std::function<void()> listener) override {
        m_device.setEventListener(std::move(listener));
    }
    bool hasOutputGain() const override { return m_device.hasOutputGain(); }
    void setOutputGain(float gain) override {
        gains.push_back(gain);
        m_device.setOutputGain(gain);
    }

    std::vector<float> gains;

private:
    PulseAudioDevice m_device;
};

class PulseOutputTest : public ::testing::Test {
protected:
    void SetUp() override {
        if (!server.start())
            GTEST_SKIP() << "no private PulseAudio daemon could be started here: "
                         << server.error().toStdString();
        server.exportEnvironment();
    }

    std::unique_ptr<AmbientPlayer> makePlayer(const QString& recordings = {}) {
        AmbientPlayer::Environment env;
        env.device = device;
        env.scheduler = std::make_shared<PreciseTimerScheduler>();
        env.resources = AmbientResources(recordings.isEmpty() ? emptyDir.path() : recordings);
        return std::make_unique<AmbientPlayer>(std::move(env));
    }

    PulseTestServer server;
    QTemporaryDir emptyDir;
    std::shared_ptr<TappedDevice> device = std::make_shared<TappedDevice>();
};

TEST_F(PulseOutputTest, BrownNoiseIsHeardSurvivesASinkSwitchAndStopsIntoSilence) {
    auto player = makePlayer();
    player->setLevels(levels(0.49f, {{AmbientSound::brownNoise, 0.49f}}));
    ASSERT_TRUE(player->play());

    {
        MonitorRecorder first(server, QStringLiteral("quill_a"));
        ASSERT_TRUE(first.start());
        ASSERT_TRUE(first.waitForFrames(kRate * 3)) << "the monitor delivered no sound";
        // Skip the fade-in; judge the last 1.5 s.
        const Energy e = measure(first, first.frames() - kRate * 3 / 2, first.frames());
        EXPECT_GT(e.rms, 0.005) << "brown noise is audible";
        EXPECT_GT(e.inBand, 0.75) << "its energy lies between 30 and 700 Hz";
        EXPECT_LT(e.high, 0.02) << "little above 1.5 kHz";
    }

    // The user picks another output and the old one disappears.
    const int oldModule = server.moduleOfSink(QStringLiteral("quill_a"));
    ASSERT_GE(oldModule, 0);
    ASSERT_FALSE(
        server.pactl({QStringLiteral("set-default-sink"), QStringLiteral("quill_b")}).isNull());
    ASSERT_FALSE(
        server.pactl({QStringLiteral("unload-module"), QString::number(oldModule)}).isNull());

    MonitorRecorder second(server, QStringLiteral("quill_b"));
    ASSERT_TRUE(second.start());
    ASSERT_TRUE(second.waitForFrames(kRate * 3));
    const Energy after = measure(second, second.frames() - kRate, second.frames());
    EXPECT_GT(after.rms, 0.005) << "playback goes on through the new output";
    EXPECT_GT(after.inBand, 0.75);
    EXPECT_TRUE(player->isEngineRunning());

    // stop(): the player fades to silence before it lets go of the output (how long the fade
    // takes is the offline tests' business), and the output then stays silent.
    const std::size_t stoppedAt = device->gains.size();
    const double before = measure(second, second.frames() - kRate, second.frames()).rms;
    player->stop();
    ASSERT_TRUE(second.waitUntil([&] { return !player->isEngineRunning(); }, 30000))
        << "the output was never released";
    EXPECT_LT(measure(second, second.frames() - kRate / 2, second.frames()).rms, 0.1 * before)
        << "the fade was heard before the output went";
    const std::vector<float> fade(device->gains.begin() + std::ptrdiff_t(stoppedAt),
                                  device->gains.end());
    EXPECT_GT(fade.size(), 10u) << "the level fell in steps";
    EXPECT_TRUE(std::is_sorted(fade.rbegin(), fade.rend()));
    EXPECT_EQ(device->gains.back(), 0.0f) << "to silence before the output was let go";
    const auto quietTail = [&] {
        const qint64 end = second.frames(), from = end - kRate / 2;
        if (from < 0)
            return false;
        for (qint64 i = 2 * from; i < 2 * end; ++i)
            if (std::fabs(second.samples()[i]) > 1e-4f)
                return false;
        return true;
    };
    EXPECT_TRUE(second.waitUntil(quietTail, 30000)) << "the output falls silent and stays so";
}

TEST_F(PulseOutputTest, RecordingsStreamThroughTheRealOutputAndComeBackAfterAServerRestart) {
    auto player = makePlayer(QStringLiteral(QUILL_AMBIENT_DIR));
    int endings = 0;
    player->setStopHandler([&] { ++endings; });
    player->setLevels(levels(0.49f, {{AmbientSound::rain, 0.49f}}));
    ASSERT_TRUE(player->play());
    ASSERT_TRUE(spinUntil([&] { return player->isEngineRunning(); }));

    server.stop();
    ASSERT_TRUE(spinUntil([&] { return !player->isEngineRunning(); })) << "the loss is noticed";
    ASSERT_TRUE(server.start()) << server.error().toStdString();
    MonitorRecorder rec(server, QStringLiteral("quill_a"));
    ASSERT_TRUE(rec.start());
    ASSERT_TRUE(rec.waitUntil([&] { return player->isEngineRunning(); }, 30000))
        << "the output is opened again";
    ASSERT_TRUE(rec.waitForFrames(kRate * 4));
    // Three seconds, so a stretch of heavy drips (darker than patter) cannot sink the measure.
    const Energy e = measure(rec, rec.frames() - 3 * kRate, rec.frames());
    EXPECT_GT(e.rms, 0.003) << "the rain is heard";
    // Drops on leaves over a soft bed: several times the brown noise's share of highs.
    EXPECT_GT(e.high, 0.06) << "and it is bright, unlike the brown noise";
    EXPECT_TRUE(player->isPlaying());
    EXPECT_EQ(endings, 0);
}

} // namespace

#include "AudioTestSupport.h"
#include "audio/CueMixer.h"
#include "audio/NamedSoundPlayer.h"
#include "audio/NamedSoundSynth.h"
#include "audio/OfflineAudioDevice.h"
#include "support/VirtualScheduler.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>

using namespace quill;
using namespace quill::test;

namespace {

double rms(const std::vector<float>& v) {
    double s = 0;
    for (float x : v)
        s += double(x) * x;
    return v.empty() ? 0 : std::sqrt(s / double(v.size()));
}

/// Zero crossings per second: a rough pitch, enough to tell the cues apart.
double crossingsPerSecond(const std::vector<float>& v) {
    int n = 0;
    for (std::size_t i = 1; i < v.size(); ++i)
        n += (v[i - 1] < 0) != (v[i] < 0);
    return n / (double(v.size()) / NamedSoundSynth::kSampleRate);
}

TEST(NamedSoundSynth, EveryListedNameHasItsOwnShortCleanSound) {
    const QStringList names = NamedSoundSynth::names();
    ASSERT_EQ(names,
              (QStringList{"Glass", "Ping", "Pop", "Tink", "Submarine", "Purr", "Morse", "Hero"}));
    std::vector<std::vector<float>> clips;
    for (const QString& name : names) {
        const auto clip = NamedSoundSynth::render(name);
        SCOPED_TRACE(name.toStdString());
        ASSERT_FALSE(clip.empty());
        EXPECT_LE(clip.size(), std::size_t(4 * NamedSoundSynth::kSampleRate)) << "short";
        const float peak =
            std::fabs(*std::max_element(clip.begin(), clip.end(), [](float a, float b) {
                return std::fabs(a) < std::fabs(b);
            }));
        EXPECT_GT(peak, 0.3f);
        EXPECT_LE(peak, 0.5f);
        // It has rung out by its end: the last 50 ms are 60 dB under the peak, not cut off.
        const std::vector<float> tail(clip.end() - 2400, clip.end());
        EXPECT_LT(rms(tail), peak * 1e-3f) << "decays naturally";
        EXPECT_EQ(clip.back(), 0.0f) << "ends without a click";
        EXPECT_LT(std::fabs(clip.front()), 0.05f) << "starts without a click";
        for (const auto& other : clips)
            EXPECT_FALSE(other.size() == clip.size() && std::fabs(rms(other) - rms(clip)) < 1e-3 &&
                         std::fabs(crossingsPerSecond(other) - crossingsPerSecond(clip)) < 50)
                << "distinct from the others";
        clips.push_back(clip);
    }
    // Pitches the names promise: Tink is the highest, Purr the lowest.
    EXPECT_GT(crossingsPerSecond(NamedSoundSynth::render("Tink")),
              crossingsPerSecond(NamedSoundSynth::render("Glass")));
    EXPECT_LT(crossingsPerSecond(NamedSoundSynth::render("Purr")),
              crossingsPerSecond(NamedSoundSynth::render("Ping")));
}

TEST(NamedSoundSynth, UnknownNamesGetTheBeep) {
    const auto beep = NamedSoundSynth::renderBeep();
    EXPECT_EQ(NamedSoundSynth::render("Basso"), beep);
    EXPECT_EQ(NamedSoundSynth::render(""), beep);
    EXPECT_EQ(NamedSoundSynth::render("glass"), beep) << "names are exact";
    EXPECT_EQ(NamedSoundSynth::render("随机"), beep);
    for (const QString& name : NamedSoundSynth::names())
        EXPECT_NE(NamedSoundSynth::render(name), beep) << name.toStdString();
}

TEST(CueMixer, RetriggerCutsTheSameCueOffWhileOthersOverlapAndPendingOnesCanBeDiscarded) {
    CueMixer mixer({{0.1f, 0.2f, 0.3f, 0.4f, 0.5f, 0.6f}, {1.0f, 1.0f, 1.0f}});
    std::vector<float> out(8);
    mixer.render(out.data(), 4);
    EXPECT_EQ(out, std::vector<float>(8, 0.0f)) << "silent until triggered";

    mixer.trigger(0);
    mixer.render(out.data(), 3);
    EXPECT_EQ(out[0], 0.1f);
    EXPECT_EQ(out[1], 0.1f);
    EXPECT_EQ(out[4], 0.3f);
    mixer.trigger(0);
    mixer.trigger(1);
    mixer.render(out.data(), 4);
    EXPECT_EQ(out[0], 0.1f + 1.0f);
    EXPECT_EQ(out[4], 0.3f + 1.0f);
    EXPECT_EQ(out[6], 0.4f);
    mixer.render(out.data(), 4);
    EXPECT_EQ(out[0], 0.5f);
    EXPECT_EQ(out[2], 0.6f);
    EXPECT_EQ(out[4], 0.0f);

    mixer.trigger(-1);
    mixer.trigger(7); // out of range: ignored
    mixer.render(out.data(), 4);
    EXPECT_EQ(out, std::vector<float>(8, 0.0f));

    mixer.trigger(1);
    mixer.discardPending();
    mixer.render(out.data(), 4);
    EXPECT_EQ(out, std::vector<float>(8, 0.0f)) << "a discarded trigger never sounds";
}

class NamedSoundPlayerTest : public ::testing::Test {
protected:
    NamedSoundPlayerTest() {
        NamedSoundPlayer::Environment env;
        env.device = device;
        env.scheduler = scheduler;
        env.runInBackground = [this](std::function<void()> job) {
            ++backgroundJobs;
            job();
        };
        player = std::make_unique<NamedSoundPlayer>(std::move(env));
    }
    std::shared_ptr<ManualClock> clock = std::make_shared<ManualClock>();
    std::shared_ptr<VirtualScheduler> scheduler = std::make_shared<VirtualScheduler>(clock);
    std::shared_ptr<OfflineAudioDevice> device = std::make_shared<OfflineAudioDevice>();
    int backgroundJobs = 0;
    std::unique_ptr<NamedSoundPlayer> player;
    AudioLogCapture log;
};

TEST_F(NamedSoundPlayerTest, PlaysByNameOffTheUiThreadAndClosesWhenQuiet) {
    player->play(QStringLiteral("Ping"));
    EXPECT_GE(backgroundJobs, 1) << "the device is opened in the background";
    ASSERT_TRUE(device->isRunning());
    EXPECT_EQ(device->runningSampleRate(), NamedSoundSynth::kSampleRate);
    const auto ping = NamedSoundSynth::render(QStringLiteral("Ping"));
    const auto& out = device->render(256);
    for (int i = 0; i < 256; ++i) {
        ASSERT_EQ(out[std::size_t(2 * i)], ping[std::size_t(i)]);
        ASSERT_EQ(out[std::size_t(2 * i + 1)], ping[std::size_t(i)]);
    }

    // Another cue within the quiet spell keeps the device open.
    scheduler->advance(5000);
    player->play(QStringLiteral("Nope"));
    EXPECT_EQ(device->startCount(), 1);
    const auto beep = NamedSoundSynth::renderBeep();
    const auto& mixed = device->render(1);
    EXPECT_EQ(mixed[0], ping[256] + beep[0]);

    scheduler->advance(NamedSoundPlayer::kIdleClose.count() - 1);
    EXPECT_TRUE(device->isRunning());
    scheduler->advance(1);
    EXPECT_FALSE(device->isRunning());
    EXPECT_EQ(device->releaseCount(), 1) << "the audio system goes with the output";

    // The clips went with it too; the next cue synthesises them again before it opens.
    player->play(QStringLiteral("Ping"));
    ASSERT_TRUE(device->isRunning());
    EXPECT_EQ(device->render(1)[0], ping[0]);
}

TEST_F(NamedSoundPlayerTest, AVanishedOutputIsReopenedByTheNextCue) {
    player->play(QStringLiteral("Pop"));
    device->simulateRemoval();
    player->play(QStringLiteral("Pop"));
    EXPECT_EQ(device->startCount(), 2);
    EXPECT_TRUE(device->isRunning());
}

TEST_F(NamedSoundPlayerTest, AFailedOutputDropsTheCueAndLogs) {
    device->setStartFailure(QStringLiteral("busy"));
    player->play(QStringLiteral("Hero"));
    EXPECT_FALSE(device->isRunning());
    EXPECT_EQ(log.lines(), QStringList{QStringLiteral("Quillmere sound output failed: busy")});
    device->setStartFailure({});
    player->play(QStringLiteral("Tink"));
    // Only the new cue sounds, not the one that could not be heard before.
    const auto tink = NamedSoundSynth::render(QStringLiteral("Tink"));
    EXPECT_EQ(device->render(1)[0], tink[0]);
    EXPECT_EQ(device->render(1)[0], tink[1]);
}

} // namespace

#include "audio/AmbientPlayer.h"
#include "AudioTestSupport.h"
#include "audio/BrownNoiseGenerator.h"
#include "audio/OfflineAudioDevice.h"
#include "audio/PeakLimiter.h"
#include "audio/Resampler.h"
#include "audio/SegmentStreamer.h"
#include "support/VirtualScheduler.h"

#include <QFile>
#include <QTemporaryDir>
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <deque>

using namespace quill;
using namespace quill::test;
using S = AmbientSound;

namespace {
constexpr int kLength = 4800;       // 0.1 s recordings keep loops short
constexpr int kFramesPerStep = 800; // 1/60 s at 48 kHz

class AmbientPlayerTest : public ::testing::Test {
protected:
    void SetUp() override {
        ASSERT_TRUE(m_dir.isValid());
        for (S s : kAllAmbientSounds) {
            if (s != S::brownNoise) {
                ASSERT_TRUE(writePositionFile(path(s), kLength));
            }
        }
    }

    QString path(S s, const QString& ext = QStringLiteral("wav")) const {
        return m_dir.path() + QLatin1Char('/') + rawValue(s) + QLatin1Char('.') + ext;
    }

    /// Mixing at the position files' rate, unless a test says otherwise.
    void makePlayer(double preferredRate = 48000.0, double loopRate = 48000.0) {
        device->setPreferredSampleRate(preferredRate);
        AmbientPlayer::Environment env;
        env.loopRate = loopRate;
        env.device = device;
        env.scheduler = scheduler;
        env.streamer = streamer;
        env.resources = AmbientResources(m_dir.path());
        env.unitRandom = [this] {
            if (randoms.empty())
                return 0.5;
            const double r = randoms.front();
            randoms.pop_front();
            return r;
        };
        env.noiseSeed = [this] { return ++seeds; };
        env.loadLibraries = [this] { ++libraryLoads; };
        player = std::make_unique<AmbientPlayer>(std::move(env));
    }

    bool startPlaying(const AmbientLevels& l) {
        makePlayer();
        player->setLevels(l);
        return player->play();
    }

    /// Decodes, then renders frames through the device, keeping them.
    void render(int frames) {
        streamer->service();
        const auto& out = device->render(frames);
        captured.insert(captured.end(), out.begin(), out.end());
    }

    /// One ramp period of virtual time with its share of audio.
    void step(int n = 1) {
        for (int k = 0; k < n; ++k) {
            render(kFramesPerStep);
            // Whole milliseconds on a grid of exactly 60 steps a second: 17, 17, 16, ...
            ++m_steps;
            const qint64 now = (m_steps * 1000 + 59) / 60;
            scheduler->advance(now - m_stepClock);
            m_stepClock = now;
        }
    }

    /// Ramp steps until pred holds (or limit steps).
    template <typename Pred> int stepsUntil(Pred pred, int limit = 2000) {
        int n = 0;
        while (!pred() && n < limit) {
            step();
            ++n;
        }
        return n;
    }

    int settle() {
        return stepsUntil([this] { return !player->isRamping(); });
    }
    void stopFully() {
        player->stop();
        stepsUntil([this] { return !player->isEngineRunning(); });
    }
    /// Renders blocks of frames, the main thread servicing the player after each.
    void pump(int blocks, int frames) {
        for (int k = 0; k < blocks; ++k) {
            render(frames);
            scheduler->advance(AmbientPlayer::kServicePeriod.count());
        }
    }
    float peak() const {
        float p = 0;
        for (float x : captured)
            p = std::max(p, std::fabs(x));
        return p;
    }

    float left(std::size_t frame) const { return captured[2 * frame]; }
    float right(std::size_t frame) const { return captured[2 * frame + 1]; }

    QTemporaryDir m_dir;
    std::shared_ptr<ManualClock> clock = std::make_shared<ManualClock>();
    std::shared_ptr<VirtualScheduler> scheduler = std::make_shared<VirtualScheduler>(clock);
    std::shared_ptr<OfflineAudioDevice> device = std::make_shared<OfflineAudioDevice>();
    std::shared_ptr<SegmentStreamer> streamer =
        std::make_shared<SegmentStreamer>(SegmentStreamer::Mode::manual);
    std::deque<double> randoms;
    std::uint32_t seeds = 100;
    int libraryLoads = 0;
    std::unique_ptr<AmbientPlayer> player;
    std::vector<float> captured;
    qint64 m_steps = 0, m_stepClock = 0;
    AudioLogCapture log;
};

TEST_F(AmbientPlayerTest, IdleUntilPlayedLevelsOnlyStoredPreparingOnlyLoadsOnce) {
    makePlayer();
    player->setLevels(levels(0.49f, {{S::rain, 0.49f}, {S::brownNoise, 0.25f}}));
    player->prepare();
    player->prepare();
    EXPECT_EQ(libraryLoads, 1);
    EXPECT_FALSE(player->isEngineRunning());
    EXPECT_FALSE(player->isTrackPlaying(S::rain));
    EXPECT_EQ(player->noiseLevel(), 0.25f);
    EXPECT_EQ(player->noiseGenerator(), nullptr);
}

TEST_F(AmbientPlayerTest, PlayWithNothingSelectedRampsMasterThenLaterSelectionStartsAtOnce) {
    ASSERT_TRUE(startPlaying(levels(0.49f, {})));
    EXPECT_TRUE(player->isEngineRunning());
    // Rising master, tau 0.8 s: within 0.0005 of 0.49 after 331 steps.
    EXPECT_EQ(settle(), 331);
    EXPECT_NEAR(player->masterVolume(), 0.49f, 0.0005f);
    EXPECT_NE(player->masterVolume(), 0.49f) << "the ramp stops short, it does not snap";

    player->setLevels(levels(0.49f, {{S::rain, 0.49f}}));
    EXPECT_TRUE(player->isTrackPlaying(S::rain));
    // Each recording fades with tau 0.3 s: settled after 124 steps.
    EXPECT_EQ(settle(), 124);
    EXPECT_NEAR(player->volume(S::rain), 0.49f, 0.0005f);
}

TEST_F(AmbientPlayerTest, EveryFreshStartBeginsAtANewRandomFrameInTheFirst95Percent) {
    // The first frame heard (the voice is silent until the first ramp step) came from
    // random * 95 % of the file.
    const auto expectStartAt = [this](double random) {
        captured.clear();
        step(2);
        std::size_t k = 0;
        while (k < captured.size() / 2 && left(k) == 0.0f)
            ++k;
        ASSERT_LT(k, captured.size() / 2);
        EXPECT_NEAR(positionOf(left(k), right(k), kLength),
                    std::fmod(std::floor(random * 0.95 * kLength) + double(k), kLength), 0.05);
    };
    randoms = {0.999999, 0.25, 0.8};
    ASSERT_TRUE(startPlaying(levels(0.49f, {{S::rain, 0.49f}})));
    expectStartAt(0.999999);

    // Deselected until it stopped; the completions of its flushed passes then arrive and
    // must not queue anything, or the next start would play them first.
    settle();
    player->setLevels(levels(0.49f, {}));
    EXPECT_EQ(stepsUntil([this] { return !player->isTrackPlaying(S::rain); }), 112);
    captured.clear();
    pump(20, 1024);
    EXPECT_EQ(peak(), 0.0f);
    EXPECT_TRUE(player->isEngineRunning()) << "ambient sound is still wanted";
    player->setLevels(levels(0.49f, {{S::rain, 0.49f}}));
    EXPECT_EQ(player->volume(S::rain), 0.0f) << "from silence";
    expectStartAt(0.25);

    settle();
    stopFully();
    ASSERT_TRUE(player->play());
    EXPECT_EQ(device->startCount(), 2);
    expectStartAt(0.8);
}

TEST_F(AmbientPlayerTest, LoopIsGaplessAcrossManyPasses) {
    randoms = {0.3};
    ASSERT_TRUE(startPlaying(levels(0.49f, {{S::rain, 0.49f}})));
    settle();
    const float v = player->volume(S::rain), m = player->masterVolume();
    render(480); // the voice glides to the last ramp value within one buffer
    std::vector<float> file(kLength);
    for (int i = 0; i < kLength; ++i)
        file[std::size_t(i)] = 0.1f + 0.8f * float(i) / float(kLength);

    captured.clear();
    pump(40, 480);
    long expected = std::lround(positionOf(left(0), right(0), kLength));
    int wraps = 0;
    for (std::size_t f = 0; f < captured.size() / 2; ++f) {
        const int p = int(expected % kLength);
        ASSERT_EQ(left(f), (file[std::size_t(p)] * v) * m) << "frame " << f;
        ASSERT_EQ(right(f), (0.5f * v) * m) << "frame " << f;
        if (p == kLength - 1)
            ++wraps;
        ++expected;
    }
    EXPECT_GE(wraps, 3);
}

TEST_F(AmbientPlayerTest, FadesReverseWithoutRestartingTheLoops) {
    ASSERT_TRUE(startPlaying(levels(0.49f, {{S::rain, 0.49f}})));
    settle();
    const auto generation = player->trackGeneration(S::rain);

    // A recording deselected and selected again before it went silent.
    player->setLevels(levels(0.49f, {}));
    step(60);
    const float low = player->volume(S::rain);
    ASSERT_GT(low, 0.001f);
    player->setLevels(levels(0.49f, {{S::rain, 0.49f}}));
    step();
    EXPECT_GT(player->volume(S::rain), low) << "fading back in from where it was";
    settle();
    EXPECT_NEAR(player->volume(S::rain), 0.49f, 0.0005f);

    // A stop followed by a play before the master reached silence.
    player->stop();
    step(80);
    const float lowMaster = player->masterVolume();
    ASSERT_GT(lowMaster, 0.001f);
    ASSERT_TRUE(player->play());
    step();
    EXPECT_GT(player->masterVolume(), lowMaster);
    settle();
    EXPECT_NEAR(player->masterVolume(), 0.49f, 0.0005f);
    EXPECT_EQ(player->trackGeneration(S::rain), generation) << "the same loop went on";
    EXPECT_EQ(device->startCount(), 1);
    EXPECT_EQ(device->stopCount(), 0);
}

TEST_F(AmbientPlayerTest, StopFadesMasterOutIn168StepsThenStopsEverything) {
    ASSERT_TRUE(startPlaying(levels(0.49f, {{S::rain, 0.49f}, {S::wind, 0.3f}})));
    settle();
    player->stop();
    EXPECT_TRUE(player->isEngineRunning());
    EXPECT_EQ(stepsUntil([this] { return !player->isEngineRunning(); }), 168);
    EXPECT_EQ(player->masterVolume(), 0.0f);
    EXPECT_FALSE(player->isTrackPlaying(S::rain));
    EXPECT_FALSE(player->isTrackPlaying(S::wind));
    EXPECT_FALSE(player->isRamping());
    EXPECT_EQ(device->stopCount(), 1);
    captured.clear();
    render(256);
    EXPECT_EQ(peak(), 0.0f);
}

TEST_F(AmbientPlayerTest, OutputIsAskedOnPlayAndLetGoWithItsDecoderAfterAQuietSpell) {
    streamer = std::make_shared<SegmentStreamer>(SegmentStreamer::Mode::threaded);
    makePlayer(48000.0);
    player->setLevels(levels(0.49f, {{S::rain, 0.49f}, {S::brownNoise, 0.3f}}));
    EXPECT_FALSE(streamer->hasThread()) << "nothing decodes before the first play";
    // The output moved to 44.1 kHz between launch and the first play.
    device->setPreferredSampleRate(44100.0);
    ASSERT_TRUE(player->play());
    EXPECT_EQ(device->runningSampleRate(), 44100.0);
    EXPECT_TRUE(streamer->hasThread());
    const float coefficient44 = player->noiseGenerator()->gainCoefficient();

    // A resume within the quiet spell finds the audio system and the decoder in place.
    stopFully();
    scheduler->advance(AmbientPlayer::kReleaseDelay.count() - 1);
    EXPECT_EQ(device->releaseCount(), 0);
    ASSERT_TRUE(player->play());
    scheduler->advance(AmbientPlayer::kReleaseDelay.count());
    EXPECT_EQ(device->releaseCount(), 0) << "never while playing";

    stopFully();
    scheduler->advance(AmbientPlayer::kReleaseDelay.count());
    EXPECT_EQ(device->releaseCount(), 1);
    EXPECT_FALSE(streamer->hasThread());

    // The next play asks the output again and rebuilds the noise for its rate.
    device->setPreferredSampleRate(48000.0);
    ASSERT_TRUE(player->play());
    EXPECT_EQ(device->runningSampleRate(), 48000.0);
    EXPECT_NE(player->noiseGenerator()->gainCoefficient(), coefficient44);
    EXPECT_TRUE(streamer->hasThread());
    captured.clear();
    step(30);
    EXPECT_NE(peak(), 0.0f);
}

TEST_F(AmbientPlayerTest, MissingEmptyOrCorruptRecordingsAreLoggedWhileOthersPlay) {
    // rain: no file at all; waves: empty; stream: garbage; wind: a header without frames.
    ASSERT_TRUE(QFile::remove(path(S::rain)));
    ASSERT_TRUE(writeBytes(path(S::waves), {}));
    ASSERT_TRUE(writeBytes(path(S::stream), QByteArray("RIFF\x10\0\0\0WAVEjunkjunkjunk", 23)));
    ASSERT_TRUE(QFile::remove(path(S::wind)));
    ASSERT_TRUE(writeZeroFrameFile(path(S::wind)));
    // birds: a WAV named .flac, found by its raw value and read by its content.
    ASSERT_TRUE(QFile::rename(path(S::birds), path(S::birds, QStringLiteral("flac"))));
    ASSERT_TRUE(startPlaying(levels(0.49f, {{S::rain, 0.49f},
                                            {S::waves, 0.49f},
                                            {S::stream, 0.49f},
                                            {S::wind, 0.49f},
                                            {S::fire, 0.49f},
                                            {S::birds, 0.49f}})));
    const QStringList expected{QStringLiteral("Quillmere ambient recording missing: rain"),
                               QStringLiteral("Quillmere ambient recording missing: waves"),
                               QStringLiteral("Quillmere ambient recording missing: stream"),
                               QStringLiteral("Quillmere ambient recording missing: wind")};
    EXPECT_EQ(log.lines(), expected);
    EXPECT_TRUE(player->isTrackPlaying(S::fire));
    EXPECT_TRUE(player->isTrackPlaying(S::birds));
    EXPECT_FALSE(player->isTrackPlaying(S::rain));
    settle();
    captured.clear();
    step(4);
    EXPECT_GT(peak(), 0.0f);

    // Not remembered: the next start of sources tries (and logs) again, and a file that
    // appeared meanwhile now plays.
    log.clear();
    ASSERT_TRUE(writePositionFile(path(S::rain), kLength));
    stopFully();
    ASSERT_TRUE(player->play());
    EXPECT_TRUE(player->isTrackPlaying(S::rain));
    EXPECT_EQ(log.lines(), expected.mid(1));
}

TEST_F(AmbientPlayerTest, BrownNoiseAttachesOnPlayAndStaysWhenDeselected) {
    ASSERT_TRUE(startPlaying(levels(0.49f, {{S::brownNoise, 0.49f}})));
    ASSERT_NE(player->noiseGenerator(), nullptr);
    settle();
    captured.clear();
    step(10);
    EXPECT_GT(peak(), 0.0f);

    const auto* generator = player->noiseGenerator();
    player->setLevels(levels(0.49f, {}));
    EXPECT_EQ(player->noiseLevel(), 0.0f);
    step(300); // about five seconds: far past the generator's own fade
    EXPECT_EQ(player->noiseGenerator(), generator);
    captured.clear();
    step(2);
    EXPECT_EQ(peak(), 0.0f);
}

TEST_F(AmbientPlayerTest, LostOutputRebuildsTheGraphAndRestartsFromSilence) {
    randoms = {0.5, 0.2};
    ASSERT_TRUE(startPlaying(levels(0.49f, {{S::rain, 0.49f}, {S::brownNoise, 0.3f}})));
    settle();
    const auto generation = player->trackGeneration(S::rain);
    const auto seedsBefore = seeds;
    const float master = player->masterVolume();

    device->simulateRemoval();
    player->serviceAudio();
    EXPECT_EQ(device->stopCount(), 1);
    EXPECT_EQ(device->startCount(), 2);
    EXPECT_TRUE(player->isEngineRunning());
    EXPECT_EQ(player->trackGeneration(S::rain), generation + 2);
    EXPECT_EQ(player->volume(S::rain), 0.0f);
    ASSERT_NE(player->noiseGenerator(), nullptr);
    EXPECT_EQ(seeds, seedsBefore + 1) << "a new generator";
    EXPECT_EQ(player->noiseGenerator()->gain(), 0.0f);
    EXPECT_EQ(player->masterVolume(), master);
    settle();
    EXPECT_NEAR(player->volume(S::rain), 0.49f, 0.0005f);
}

TEST_F(AmbientPlayerTest, UnknownRateRunsAt48kAndAFormatChangeRebuildsAtTheNewRate) {
    makePlayer(0.0);
    EXPECT_EQ(player->sampleRate(), 48000.0) << "an unknown rate counts as 48 kHz";
    player->setLevels(levels(0.49f, {{S::brownNoise, 0.3f}}));
    ASSERT_TRUE(player->play());
    EXPECT_EQ(device->runningSampleRate(), 48000.0);
    device->simulateFormatChange(44100.0);
    scheduler->advance(AmbientPlayer::kServicePeriod.count());
    EXPECT_EQ(player->sampleRate(), 44100.0);
    EXPECT_EQ(device->runningSampleRate(), 44100.0);
    EXPECT_TRUE(player->isEngineRunning());
}

TEST_F(AmbientPlayerTest, OutputChangeWhileIdleOnlyReconnects) {
    ASSERT_TRUE(startPlaying(levels(0.49f, {{S::rain, 0.49f}})));
    player->stop();
    step(50);
    device->simulateRemoval();
    scheduler->advance(AmbientPlayer::kServicePeriod.count());
    EXPECT_FALSE(player->isEngineRunning());
    EXPECT_EQ(device->startCount(), 1);
}

TEST_F(AmbientPlayerTest, LostOutputIsReopenedUntilItReturnsOrTheTriesRunOut) {
    makePlayer();
    int endings = 0;
    player->setStopHandler([&] { ++endings; });
    player->setLevels(levels(0.49f, {{S::rain, 0.49f}}));
    ASSERT_TRUE(player->play());
    settle();
    // The sound server restarts: a few opens fail, then one succeeds.
    device->setStartFailure(QStringLiteral("Connection refused"));
    device->simulateRemoval();
    player->serviceAudio();
    scheduler->advance(3 * AmbientPlayer::kReopenDelay.count());
    EXPECT_FALSE(player->isEngineRunning());
    EXPECT_TRUE(player->isPlaying());
    device->setStartFailure({});
    scheduler->advance(AmbientPlayer::kReopenDelay.count());
    EXPECT_TRUE(player->isEngineRunning());
    EXPECT_TRUE(player->isTrackPlaying(S::rain));
    EXPECT_EQ(endings, 0);
    EXPECT_TRUE(log.lines().isEmpty());

    // It does not come back: playback ends, once, and the store hears of it.
    device->setStartFailure(QStringLiteral("Connection refused"));
    device->simulateRemoval();
    player->serviceAudio();
    scheduler->advance(AmbientPlayer::kReopenAttempts * AmbientPlayer::kReopenDelay.count());
    EXPECT_EQ(endings, 1);
    EXPECT_FALSE(player->isPlaying());
    EXPECT_EQ(log.lines(), QStringList{QStringLiteral(
                               "Quillmere ambient engine restart failed: Connection refused")});
    device->setStartFailure({});
    EXPECT_TRUE(player->play());
    EXPECT_TRUE(player->isTrackPlaying(S::rain));
}

TEST_F(AmbientPlayerTest, OutputThatFailsAtOnceOrLaterEndsThePlayAndIsTriedAgain) {
    makePlayer();
    int endings = 0;
    player->setStopHandler([&] { ++endings; });
    player->setLevels(levels(0.49f, {{S::rain, 0.49f}}));
    device->setStartFailure(QStringLiteral("device busy"));
    EXPECT_FALSE(player->play()) << "at once: play() says so itself";
    EXPECT_FALSE(player->isPlaying());
    EXPECT_EQ(endings, 0);
    EXPECT_EQ(log.lines(),
              QStringList{QStringLiteral("Quillmere ambient engine failed: device busy")});
    player->stop(); // harmless
    step(200);
    device->setStartFailure({});
    log.clear();

    // A slow output: the sources queue while it opens.
    device->setDeferredStart(true);
    ASSERT_TRUE(player->play());
    EXPECT_FALSE(player->isEngineRunning());
    EXPECT_TRUE(player->isTrackPlaying(S::rain)) << "queued while the output opens";
    device->finishStart();
    player->serviceAudio();
    EXPECT_TRUE(player->isEngineRunning());
    player->stop();
    settle();

    ASSERT_TRUE(player->play());
    device->finishStart(QStringLiteral("Access denied"));
    player->serviceAudio();
    EXPECT_EQ(endings, 1);
    EXPECT_FALSE(player->isPlaying());
    EXPECT_FALSE(player->isTrackPlaying(S::rain));
    EXPECT_EQ(log.lines(),
              QStringList{QStringLiteral("Quillmere ambient engine failed: Access denied")});
}

TEST_F(AmbientPlayerTest, RecordingsAreConvertedToTheOutputRate) {
    // Mixed at the file's rate and converted as a sum, as the generated recordings are; or a
    // file at another rate converted to the mixing rate on its own first.
    struct Case {
        int fileRate;
        double loopRate, outputRate;
    };
    for (const Case c : {Case{48000, 48000.0, 44100.0}, Case{32000, 32000.0, 44100.0},
                         Case{32000, 32000.0, 48000.0}, Case{44100, 32000.0, 48000.0}}) {
        SCOPED_TRACE(testing::Message() << c.fileRate << " Hz file, mixed at " << c.loopRate
                                        << ", out at " << c.outputRate);
        ASSERT_TRUE(writePositionFile(path(S::rain), kLength, c.fileRate));
        player.reset(); // before its decoder, which holds its voices
        streamer = std::make_shared<SegmentStreamer>(SegmentStreamer::Mode::manual);
        makePlayer(c.outputRate, c.loopRate);
        randoms = {0.0};
        player->setLevels(levels(0.49f, {{S::rain, 0.49f}}));
        ASSERT_TRUE(player->play());
        settle();
        captured.clear();
        pump(20, 441);
        // Positions advance by the ratio of the rates, wrapping smoothly. Near the ramp's jump
        // at the join the band-limited conversion rings, so frames within a kernel (at the
        // lowest rate on the way) of it are left out.
        const double ratio = c.fileRate / c.outputRate;
        const double margin = (Resampler::kTaps / 2 + 1) * c.fileRate / c.loopRate *
                              (c.loopRate == c.fileRate ? 1 : 2);
        auto clear = [&](double position) {
            return position > margin && position < kLength - margin;
        };
        std::size_t f0 = 0;
        while (f0 < captured.size() / 2 && !clear(positionOf(left(f0), right(f0), kLength)))
            ++f0;
        const double p0 = positionOf(left(f0), right(f0), kLength);
        int wraps = 0;
        double previous = p0;
        for (std::size_t f = f0 + 1; f < captured.size() / 2; ++f) {
            const double expected = std::fmod(p0 + double(f - f0) * ratio, double(kLength));
            if (expected < previous)
                ++wraps;
            previous = expected;
            if (clear(expected)) {
                ASSERT_NEAR(positionOf(left(f), right(f), kLength), expected, 0.02)
                    << "frame " << f;
            }
        }
        EXPECT_GE(wraps, 1);
    }
}

TEST_F(AmbientPlayerTest, LimiterKeepsAFullMixBelowFullScale) {
    for (S s : {S::rain, S::waves, S::fire})
        ASSERT_TRUE(writeConstantFile(path(s), kLength, 0.95f));
    ASSERT_TRUE(startPlaying(levels(1.0f, {{S::rain, 1.0f}, {S::waves, 1.0f}, {S::fire, 1.0f}})));
    settle();
    captured.clear();
    step(30);
    EXPECT_LE(peak(), PeakLimiter::kThreshold + 1e-6f);
    EXPECT_GT(peak(), 0.8f);
}

TEST_F(AmbientPlayerTest, OutOfRangeLevelsAreClampedAndBrokenSamplesSilenced) {
    makePlayer();
    const float nan = std::nanf("");
    player->setLevels(levels(1.7f, {{S::rain, nan}, {S::waves, -0.5f}, {S::brownNoise, 4.0f}}));
    EXPECT_EQ(player->noiseLevel(), 1.0f);
    ASSERT_TRUE(player->play());
    EXPECT_FALSE(player->isTrackPlaying(S::rain)) << "a NaN level counts as silent";
    EXPECT_FALSE(player->isTrackPlaying(S::waves));
    settle();
    EXPECT_NEAR(player->masterVolume(), 1.0f, 0.0005f);

    std::vector<float> broken;
    for (int k = 0; k < 400; ++k)
        broken.insert(broken.end(), {nan, 0.2f, INFINITY, -INFINITY, 0.3f, nan});
    ASSERT_TRUE(writeFrames(path(S::fire), broken));
    player->setLevels(levels(1.0f, {{S::fire, 1.0f}, {S::brownNoise, 0.5f}}));
    settle();
    captured.clear();
    step(10);
    EXPECT_TRUE(
        std::all_of(captured.begin(), captured.end(), [](float x) { return std::isfinite(x); }));
}

} // namespace

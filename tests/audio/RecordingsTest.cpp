#include "LoopAnalysis.h"
#include "Loudness.h"
#include "audio/AmbientResources.h"
#include "audio/BrownNoiseGenerator.h"
#include "model/AmbientSound.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QTemporaryDir>
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <map>
#include <numeric>
#include <vector>

using namespace quill;
using namespace quill::loops;

namespace {

/// Each recording is decoded once for all the checks on it.
const Recording& recording(AmbientSound sound) {
    static std::map<AmbientSound, Recording> cache;
    auto it = cache.find(sound);
    if (it == cache.end()) {
        const QString path =
            AmbientResources(QStringLiteral(QUILL_AMBIENT_DIR)).locate(rawValue(sound));
        it = cache.emplace(sound, path.isEmpty() ? Recording{} : load(path)).first;
    }
    return it->second;
}

/// The brown noise as the player makes it at a level of 1, past its fade-in.
double brownNoiseLoudness(std::uint32_t seed) {
    const std::atomic<float> level{1.0f};
    BrownNoiseGenerator noise(48000.0f, &level, seed);
    std::vector<float> l(48000 * 60), r(l.size());
    noise.render(l.data(), r.data(), 48000 * 3);
    noise.render(l.data(), r.data(), std::int64_t(l.size()));
    return ambientgen::integratedLoudness(l, r);
}

class RecordingsTest : public ::testing::TestWithParam<AmbientSound> {};

TEST_P(RecordingsTest, ThreeMinuteStereoLoopWithoutSeamOrClipping) {
    const Recording& r = recording(GetParam());
    ASSERT_EQ(r.rate, AmbientResources::kRecordingRate);
    ASSERT_EQ(r.channels, 2);
    ASSERT_GE(r.left.size(), std::size_t(180 * r.rate));

    double energy = 0, peak = 0, lr = 0, rr = 0;
    for (std::size_t i = 0; i < r.left.size(); ++i) {
        energy += double(r.left[i]) * r.left[i];
        rr += double(r.right[i]) * r.right[i];
        lr += double(r.left[i]) * r.right[i];
        peak = std::max({peak, std::fabs(double(r.left[i])), std::fabs(double(r.right[i]))});
    }
    EXPECT_LT(peak, 0.99) << "never clipped";
    EXPECT_LT(lr / std::sqrt(energy * rr), 0.999) << "really stereo";

    // The join: the step from the last frame to the first is no bigger than the steps
    // inside the file usually are, so the loop does not click.
    for (const auto* ch : {&r.left, &r.right}) {
        std::vector<float> steps;
        for (std::size_t i = 1; i < ch->size(); ++i)
            steps.push_back(std::fabs((*ch)[i] - (*ch)[i - 1]));
        std::nth_element(steps.begin(), steps.begin() + long(steps.size() * 999 / 1000),
                         steps.end());
        const float p999 = steps[steps.size() * 999 / 1000];
        EXPECT_LE(std::fabs(ch->front() - ch->back()), p999);
    }
    // Neither end is faded or burst out: the first and last 50 ms sit within the range of
    // levels the loop has anywhere else.
    auto levels = envelope(r.left, r.rate, 0.05);
    const double head = levels.front(), tail = levels.back();
    std::sort(levels.begin(), levels.end());
    const double quiet = levels[levels.size() / 100], loud = levels[levels.size() * 999 / 1000];
    for (double end : {head, tail}) {
        EXPECT_GE(end, 0.9 * quiet);
        EXPECT_LE(end, 1.1 * loud);
    }
}

TEST_P(RecordingsTest, AsLoudAsTheBrownNoiseAtTheSameLevel) {
    // The player gives a recording and the noise the same linear level, so matching them at
    // a level of 1 matches them at every volume setting.
    static const double brown = (brownNoiseLoudness(7) + brownNoiseLoudness(90210)) / 2;
    const Recording& r = recording(GetParam());
    ASSERT_FALSE(r.left.empty());
    EXPECT_NEAR(ambientgen::integratedLoudness(r.left, r.right, r.rate), brown, 1.0);
}

TEST_P(RecordingsTest, NoStretchOfSoundComesBackWithinTheLoop) {
    const Recording& r = recording(GetParam());
    ASSERT_FALSE(r.left.empty());
    EXPECT_LT(strongestRecurrence(envelope(r.left, r.rate, 0.1), 0.1, 5.0), 0.4);
}

INSTANTIATE_TEST_SUITE_P(All, RecordingsTest,
                         ::testing::Values(AmbientSound::rain, AmbientSound::waves,
                                           AmbientSound::stream, AmbientSound::wind,
                                           AmbientSound::fire, AmbientSound::birds,
                                           AmbientSound::crickets),
                         [](const auto& info) { return rawValue(info.param).toStdString(); });

TEST(RecordingsCharacter, RecurrenceIsFoundWhenAMinuteRepeats) {
    // What a one-minute loop played for three minutes would be.
    const Recording& waves = recording(AmbientSound::waves);
    const auto minute = std::ptrdiff_t(60 * waves.rate);
    ASSERT_GE(std::ptrdiff_t(waves.left.size()), minute);
    std::vector<float> tiled;
    for (int k = 0; k < 3; ++k)
        tiled.insert(tiled.end(), waves.left.begin(), waves.left.begin() + minute);
    EXPECT_GT(strongestRecurrence(envelope(tiled, waves.rate, 0.1), 0.1, 5.0), 0.9);
}

TEST(RecordingsCharacter, RainIsSeparateDropsOverALightBed) {
    const Recording& r = recording(AmbientSound::rain);
    ASSERT_FALSE(r.left.empty());
    const auto drops = band(r.left, 1000, 12000, r.rate);
    EXPECT_GT(excessKurtosis(drops), 3.0) << "white noise has none";
    const double rate = impulsesPerSecond(drops, r.rate);
    EXPECT_GT(rate, 3.0);
    EXPECT_LT(rate, 100.0);
}

TEST(RecordingsCharacter, WavesSwellAndBreakAtUnevenIntervals) {
    const Recording& r = recording(AmbientSound::waves);
    ASSERT_FALSE(r.left.empty());
    constexpr double kFrame = 0.02;
    const auto env = envelope(band(r.left, 200, 8000, r.rate), r.rate, kFrame);
    const auto rises = swellRiseTimes(env, kFrame);
    ASSERT_GE(rises.size(), 10u) << "a wave every few seconds";
    EXPECT_GE(*std::min_element(rises.begin(), rises.end()), 0.3) << "no wave switches on";
}

TEST(RecordingsCharacter, BirdsSingWithoutAHeldTone) {
    const Recording& r = recording(AmbientSound::birds);
    ASSERT_FALSE(r.left.empty());
    EXPECT_LT(strongestToneDb(r.left, r.rate, 1000, 8000), 8.0);
}

TEST(RecordingsCharacter, CricketsAreBrighterThanWind) {
    auto bright = [](AmbientSound s) {
        const Recording& r = recording(s);
        const auto high = band(r.left, 2000, 15000, r.rate);
        return std::inner_product(high.begin(), high.end(), high.begin(), 0.0) /
               std::inner_product(r.left.begin(), r.left.end(), r.left.begin(), 1e-12);
    };
    const double crickets = bright(AmbientSound::crickets), wind = bright(AmbientSound::wind);
    EXPECT_GT(crickets, 0.5);
    EXPECT_GT(crickets, wind + 0.2);
}

TEST(AmbientResourcesLookup, BesideTheExecutableFirstThenTheXdgDataFolders) {
    QTemporaryDir home, system;
    ASSERT_TRUE(home.isValid() && system.isValid());
    auto put = [](const QTemporaryDir& root, const QString& name) {
        QDir(root.path()).mkpath(QStringLiteral("quillmere/Ambient"));
        QFile f(root.path() + QStringLiteral("/quillmere/Ambient/") + name);
        return f.open(QIODevice::WriteOnly);
    };
    ASSERT_TRUE(put(home, QStringLiteral("rain.ogg")));
    ASSERT_TRUE(put(system, QStringLiteral("rain.flac")));
    ASSERT_TRUE(put(system, QStringLiteral("wind.wav")));
    const QByteArray oldHome = qgetenv("XDG_DATA_HOME"), oldDirs = qgetenv("XDG_DATA_DIRS");
    qputenv("XDG_DATA_HOME", home.path().toUtf8());
    qputenv("XDG_DATA_DIRS", system.path().toUtf8());
    const AmbientResources defaults;
    qputenv("XDG_DATA_HOME", oldHome);
    qputenv("XDG_DATA_DIRS", oldDirs);

    EXPECT_EQ(defaults.directories().value(0),
              QDir::cleanPath(QCoreApplication::applicationDirPath() +
                              QStringLiteral("/../share/quillmere/Ambient")));
    EXPECT_TRUE(defaults.locate(QStringLiteral("rain")).startsWith(home.path()))
        << "the user's folder before the system's";
    EXPECT_TRUE(defaults.locate(QStringLiteral("wind")).startsWith(system.path()));
    EXPECT_TRUE(defaults.locate(QStringLiteral("brownNoise")).isEmpty()) << "synthesised, no file";
    for (const QString& dir : defaults.directories())
        EXPECT_FALSE(dir.startsWith(QStringLiteral(QUILL_AMBIENT_DIR))) << "never the build tree";
}

TEST(AmbientResourcesLookup, RealRecordingsInOtherFormatsReplaceByRawValue) {
    QTemporaryDir dir;
    ASSERT_TRUE(dir.isValid());
    auto touch = [&](const QString& name) {
        QFile f(dir.path() + QLatin1Char('/') + name);
        return f.open(QIODevice::WriteOnly);
    };
    ASSERT_TRUE(touch(QStringLiteral("wind.ogg")));
    ASSERT_TRUE(touch(QStringLiteral("fire.wav")));
    ASSERT_TRUE(touch(QStringLiteral("fire.flac")));
    ASSERT_TRUE(touch(QStringLiteral("Rain.flac")));
    const AmbientResources res(dir.path());
    EXPECT_TRUE(res.locate(QStringLiteral("wind")).endsWith(QStringLiteral("/wind.ogg")));
    EXPECT_TRUE(res.locate(QStringLiteral("fire")).endsWith(QStringLiteral("/fire.flac")))
        << "FLAC first";
    EXPECT_TRUE(res.locate(QStringLiteral("rain")).isEmpty()) << "names are exact";
}

} // namespace

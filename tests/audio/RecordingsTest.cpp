#include "audio/AmbientResources.h"
#include "audio/AmbientSound.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QTemporaryDir>
#include <gtest/gtest.h>
#include <sndfile.h>

#include <algorithm>
#include <cmath>
#include <vector>

using namespace quill;

namespace {

struct Recording {
    int rate = 0, channels = 0;
    std::vector<float> left, right;
};

Recording load(const QString& path) {
    Recording r;
    SF_INFO info{};
    SNDFILE* f = sf_open(path.toLocal8Bit().constData(), SFM_READ, &info);
    if (!f)
        return r;
    r.rate = info.samplerate;
    r.channels = info.channels;
    std::vector<float> all(std::size_t(info.frames) * std::size_t(info.channels));
    sf_readf_float(f, all.data(), info.frames);
    sf_close(f);
    for (sf_count_t i = 0; i < info.frames; ++i) {
        r.left.push_back(all[std::size_t(i * info.channels)]);
        r.right.push_back(all[std::size_t(i * info.channels + (info.channels > 1 ? 1 : 0))]);
    }
    return r;
}

/// The share of energy above cutoff (first-difference weighting is too crude; a one-pole
/// split is enough to tell a bright sound from a dark one).
double brightShare(const std::vector<float>& x, double cutoff, double rate) {
    const double a = std::exp(-2 * M_PI * cutoff / rate);
    double low = 0, total = 0, highEnergy = 0;
    for (float v : x) {
        low = (1 - a) * v + a * low;
        const double high = v - low;
        total += double(v) * v;
        highEnergy += high * high;
    }
    return total > 0 ? highEnergy / total : 0;
}

class RecordingsTest : public ::testing::TestWithParam<AmbientSound> {};

TEST_P(RecordingsTest, RenderedLoopIsLongStereo48kAndSeamless) {
    const QString raw = rawValue(GetParam());
    const QString path = AmbientResources(QStringLiteral(QUILL_AMBIENT_DIR)).locate(raw);
    ASSERT_FALSE(path.isEmpty()) << "no rendered recording for " << raw.toStdString();
    const Recording r = load(path);
    ASSERT_EQ(r.rate, 48000);
    ASSERT_EQ(r.channels, 2);
    ASSERT_GE(r.left.size(), std::size_t(60 * 48000));

    double energy = 0, peak = 0, lr = 0, rr = 0;
    for (std::size_t i = 0; i < r.left.size(); ++i) {
        energy += double(r.left[i]) * r.left[i];
        rr += double(r.right[i]) * r.right[i];
        lr += double(r.left[i]) * r.right[i];
        peak = std::max({peak, std::fabs(double(r.left[i])), std::fabs(double(r.right[i]))});
    }
    const double rms = std::sqrt(energy / double(r.left.size()));
    EXPECT_GT(rms, 0.01) << "audible";
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
        // And the level does not jump: the last and first 50 ms are alike in loudness.
        auto level = [&](std::size_t from) {
            double s = 0;
            for (std::size_t i = from; i < from + 2400; ++i)
                s += double((*ch)[i]) * (*ch)[i];
            return std::sqrt(s / 2400);
        };
        const double head = level(0), tail = level(ch->size() - 2400);
        EXPECT_LT(std::fabs(head - tail), 0.5 * std::max(head, tail) + 0.003);
    }
}

INSTANTIATE_TEST_SUITE_P(All, RecordingsTest,
                         ::testing::Values(AmbientSound::rain, AmbientSound::waves,
                                           AmbientSound::stream, AmbientSound::wind,
                                           AmbientSound::fire, AmbientSound::birds,
                                           AmbientSound::crickets),
                         [](const auto& info) { return rawValue(info.param).toStdString(); });

TEST(RecordingsCharacter, CricketsAreBrighterThanWindAndRainBrighterThanWaves) {
    const AmbientResources res{QStringLiteral(QUILL_AMBIENT_DIR)};
    auto share = [&](const char* raw) {
        const Recording r = load(res.locate(QString::fromLatin1(raw)));
        return brightShare(r.left, 2000, 48000);
    };
    const double crickets = share("crickets"), wind = share("wind");
    EXPECT_GT(crickets, 0.5);
    EXPECT_GT(crickets, wind + 0.2);
    EXPECT_LT(share("waves"), share("rain"));
}

} // namespace

namespace {

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

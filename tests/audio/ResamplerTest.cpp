#include "audio/Resampler.h"

#include "Spectrum.h"

#include <gtest/gtest.h>

#include <cmath>
#include <vector>

using namespace quill;

namespace {

/// A sine of `hz` at `from` rate, resampled to `to`: the left channel of the output.
std::vector<float> resampledTone(double hz, double from, double to, std::size_t outFrames) {
    Resampler r;
    r.setRates(from, to);
    std::vector<float> out;
    std::size_t n = 0;
    while (out.size() < outFrames) {
        while (r.needsInput()) {
            const auto v = float(0.5 * std::sin(2 * M_PI * hz * double(n++) / from));
            r.push(v, -v);
        }
        float l, rr;
        r.next(l, rr);
        out.push_back(l);
    }
    return out;
}

/// The tone's level and the strongest other component (dB under the tone) in a spectrum
/// of the steady part of x.
std::pair<double, double> toneAndWorstImage(const std::vector<float>& x, double rate, double hz) {
    constexpr std::size_t kSize = 1 << 15;
    const auto p = ambientgen::powerSpectrum(x, x.size() - kSize, kSize);
    const auto tone = std::size_t(std::lround(hz / rate * kSize));
    double peak = 0, energy = 0;
    for (std::size_t k = tone - 4; k <= tone + 4; ++k) {
        peak = std::max(peak, p[k]);
        energy += p[k];
    }
    double worst = 0;
    for (std::size_t k = 8; k < p.size(); ++k)
        if (k + 30 < tone || k > tone + 30)
            worst = std::max(worst, p[k]);
    // A Hann-windowed sine of amplitude a puts 3 a^2 N^2 / 32 into its side of the spectrum,
    // wherever it falls between two bins.
    const double level = 10 * std::log10(energy / (3 * 0.25 * double(kSize) * kSize / 32));
    return {level, 10 * std::log10(worst / peak)};
}

TEST(Resampler, ConvertsBetweenCommonRatesWithoutAudibleImages) {
    struct Case {
        double from, to, hz;
    };
    for (const Case c :
         {Case{48000, 44100, 1000}, Case{48000, 44100, 4600}, Case{48000, 44100, 12000},
          Case{48000, 44100, 17000}, Case{44100, 48000, 4600}, Case{48000, 96000, 9000},
          // The recordings' own rate to the usual outputs.
          Case{32000, 48000, 1000}, Case{32000, 48000, 12000}, Case{32000, 44100, 7000},
          Case{32000, 44100, 12500},
          // Rates without a short exact ratio take the interpolated rows.
          Case{48000, 44101, 4600}, Case{32000, 47999, 11000}}) {
        SCOPED_TRACE(testing::Message() << c.from << " -> " << c.to << " at " << c.hz << " Hz");
        const auto out = resampledTone(c.hz, c.from, c.to, 1 << 16);
        const auto [level, image] = toneAndWorstImage(out, c.to, c.hz);
        EXPECT_NEAR(level, 0.0, 0.1) << "the pass band keeps its level";
        EXPECT_LT(image, -70.0);
    }
}

TEST(Resampler, AStreamFedInAnyPiecesIsOneContinuousSignalAndEqualRatesPassThrough) {
    Resampler same;
    same.setRates(48000.0, 48000.0);
    ASSERT_TRUE(same.passesThrough());
    for (int n = 0; n < 100; ++n) {
        ASSERT_TRUE(same.needsInput());
        same.push(float(n), float(-n));
        float l, r;
        same.next(l, r);
        EXPECT_EQ(l, float(n));
        EXPECT_EQ(r, float(-n));
    }

    // The first output lines up with the first input, and a reset forgets what came before.
    Resampler r;
    r.setRates(48000.0, 44100.0);
    for (int round = 0; round < 2; ++round) {
        for (int n = 0; n < 500; ++n)
            r.push(0.9f, 0.9f); // stale signal from an earlier stream
        r.reset();
        std::vector<float> out;
        for (int k = 0; k < 200; ++k) {
            while (r.needsInput())
                r.push(0.25f, 0.25f);
            float l, rr;
            r.next(l, rr);
            out.push_back(l);
        }
        // A step from silence: most of the way up at the first frame (no latency), settled
        // a kernel later.
        EXPECT_GT(out[0], 0.15f);
        EXPECT_LT(out[0], 0.3f);
        EXPECT_NEAR(out[100], 0.25f, 1e-3f);
    }
}

} // namespace

#include "audio/BrownNoiseGenerator.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <vector>

using quill::BrownNoiseGenerator;

namespace {

struct Rendered {
    std::vector<float> left, right;
};

Rendered render(BrownNoiseGenerator& g, std::int64_t frames) {
    Rendered r{std::vector<float>(std::size_t(frames), 123.0f),
               std::vector<float>(std::size_t(frames), 123.0f)};
    g.render(r.left.data(), r.right.data(), frames);
    return r;
}

bool silent(const Rendered& r) {
    const auto zero = [](float x) { return x == 0.0f; };
    return std::all_of(r.left.begin(), r.left.end(), zero) &&
           std::all_of(r.right.begin(), r.right.end(), zero);
}

/// Power of x at frequency f (Goertzel), per sample.
double powerAt(const std::vector<float>& x, double f, double rate) {
    const double w = 2 * M_PI * f / rate, c = 2 * std::cos(w);
    double s1 = 0, s2 = 0;
    for (float v : x) {
        const double s = v + c * s1 - s2;
        s2 = s1;
        s1 = s;
    }
    return (s1 * s1 + s2 * s2 - c * s1 * s2) / double(x.size());
}

/// Mean power over a band, sampled at a few frequencies (the noise is broadband).
double bandPower(const std::vector<float>& x, double lo, double hi, double rate) {
    double sum = 0;
    const int n = 12;
    for (int k = 0; k < n; ++k)
        sum += powerAt(x, lo * std::pow(hi / lo, (k + 0.5) / n), rate);
    return sum / n;
}

} // namespace

TEST(BrownNoiseRandom, XorshiftSequenceAndDrawScaling) {
    BrownNoiseGenerator::NoiseSource n;
    n.state = 1;
    EXPECT_EQ(n.advance(), 270369u);
    EXPECT_EQ(n.advance(), 67634689u);
    EXPECT_EQ(n.advance(), 2647435461u);

    n.state = 1;
    EXPECT_EQ(n.nextUnit(), float(270369u >> 8) * 0x1p-24f);
    n.state = 67634689u;
    // 2647435461 is negative as a signed 32-bit integer.
    EXPECT_EQ(n.nextBipolar(), float(std::int32_t(2647435461u - 4294967296ll)) * 0x1p-31f);
    EXPECT_LT(n.nextBipolar(), 1.0f);

    // Extremes of the draws.
    BrownNoiseGenerator::NoiseSource top;
    top.state = 0xFFFFFFFFu;
    const float u = top.nextUnit();
    EXPECT_GE(u, 0.0f);
    EXPECT_LE(u, 1.0f - 0x1p-24f);
}

TEST(BrownNoiseDesign, ReferenceCoefficientsAt48k) {
    std::atomic<float> level{0.0f};
    BrownNoiseGenerator g(48000.0f, &level, 7u);
    EXPECT_NEAR(g.gainCoefficient(), 6.9439e-5f, 1e-8f);
    EXPECT_NEAR(g.breath().coefficient, 6.97e-6f, 1e-8f);
    EXPECT_EQ(g.breath().minimumHold, 240000.0f);
    EXPECT_EQ(g.breath().maximumHold, 576000.0f);
    EXPECT_EQ(g.breath().lower, 0.82f);
    EXPECT_EQ(g.breath().upper, 1.0f);
    EXPECT_EQ(g.breath().countdown, 0);

    const auto& hp = g.highpass();
    EXPECT_NEAR(hp.b0, 0.997227f, 2e-6f);
    EXPECT_EQ(hp.b2, hp.b0);
    EXPECT_NEAR(hp.b1, -1.994453f, 2e-6f);
    EXPECT_NEAR(hp.a1, -1.994446f, 2e-6f);
    EXPECT_NEAR(hp.a2, 0.994461f, 2e-6f);
    const auto& lp = g.lowpass();
    EXPECT_NEAR(lp.b0, 0.00194894f, 2e-8f);
    EXPECT_EQ(lp.b2, lp.b0);
    EXPECT_NEAR(lp.b1, 0.00389788f, 4e-8f);
    EXPECT_NEAR(lp.a1, -1.850506f, 2e-6f);
    EXPECT_NEAR(lp.a2, 0.858302f, 2e-6f);
}

TEST(BrownNoiseRender, StaysFiniteAtRatesWhereTheFiltersMustBeClampedBelowNyquist) {
    std::atomic<float> level{1.0f};
    for (float rate : {1000.0f, 50.0f}) {
        BrownNoiseGenerator g(rate, &level, 3u);
        const auto out = render(g, 4096);
        for (std::size_t i = 0; i < out.left.size(); ++i)
            ASSERT_TRUE(std::isfinite(out.left[i]) && std::fabs(out.left[i]) < 4.0f) << rate;
    }
}

TEST(BrownNoiseRender, SameSeedSameOutputAndFrameSplitsDoNotMatter) {
    std::atomic<float> level{0.49f};
    BrownNoiseGenerator a(48000.0f, &level, 99u), b(48000.0f, &level, 99u);
    const auto whole = render(a, 4096);
    std::vector<float> l, r;
    for (int chunk : {1, 511, 1024, 2560}) {
        const auto part = render(b, chunk);
        l.insert(l.end(), part.left.begin(), part.left.end());
        r.insert(r.end(), part.right.begin(), part.right.end());
    }
    EXPECT_EQ(whole.left, l);
    EXPECT_EQ(whole.right, r);
}

TEST(BrownNoiseRender, SilentFromTheStartWritesZerosAndFreezesTheState) {
    std::atomic<float> level{0.0f};
    BrownNoiseGenerator g(48000.0f, &level, 5u);
    const auto state = g.randomState();
    EXPECT_TRUE(silent(render(g, 2048)));
    EXPECT_EQ(g.randomState(), state);
    EXPECT_EQ(g.gain(), 0.0f);

    float sentinel = 9.0f;
    g.render(&sentinel, &sentinel, 0);
    EXPECT_EQ(sentinel, 9.0f);

    // Silence left the generator exactly where a fresh one starts.
    level = 0.3f;
    BrownNoiseGenerator fresh(48000.0f, &level, 5u);
    EXPECT_EQ(render(g, 256).left, render(fresh, 256).left);
}

TEST(BrownNoiseRender, LevelDropDecaysThenSnapsToExactSilence) {
    std::atomic<float> level{0.49f};
    BrownNoiseGenerator g(48000.0f, &level, 11u);
    render(g, 48000); // gain near 0.47 after one second
    const float before = g.gain();
    ASSERT_GT(before, 0.4f);

    level = 0.0f;
    render(g, 14400); // 0.3 s: one time constant
    EXPECT_NEAR(g.gain() / before, std::exp(-1.0f), 0.01f);

    // Decay until a call starts below 0.0001; that call and all later ones are exact zeros.
    int calls = 0;
    while (g.gain() >= 0.0001f && calls < 1000) {
        render(g, 4800);
        ++calls;
    }
    ASSERT_LT(calls, 1000);
    EXPECT_GT(g.gain(), 0.0f) << "the gain only snaps at the start of a call";
    const auto state = g.randomState();
    for (int k = 0; k < 3; ++k)
        EXPECT_TRUE(silent(render(g, 1024)));
    EXPECT_EQ(g.gain(), 0.0f);
    EXPECT_EQ(g.randomState(), state);
}

TEST(BrownNoiseRender, LevelIsReadOncePerCall) {
    std::atomic<float> level{1.0f};
    BrownNoiseGenerator a(48000.0f, &level, 21u);
    render(a, 1000);
    const float g1 = a.gain();
    // The gain approached the level read at the start of the call; the closed form of the
    // smoother gives the same value.
    const float expected = 1.0f - std::pow(1.0f - a.gainCoefficient(), 1000.0f);
    EXPECT_NEAR(g1, expected, 1e-4f);
    level = 0.0f;
    render(a, 1);
    EXPECT_LT(a.gain(), g1);
}

class BrownNoiseSpectrum : public ::testing::TestWithParam<float> {};

TEST_P(BrownNoiseSpectrum, ChannelsShareALowBandBetween30And700Hz) {
    const float rate = GetParam();
    std::atomic<float> level{0.49f};
    BrownNoiseGenerator g(rate, &level, 0xBEEFu);
    render(g, std::int64_t(rate)); // let the gain settle
    const auto out = render(g, std::int64_t(rate) * 8);

    double ll = 0, rr = 0, lr = 0;
    for (std::size_t i = 0; i < out.left.size(); ++i) {
        ll += double(out.left[i]) * out.left[i];
        rr += double(out.right[i]) * out.right[i];
        lr += double(out.left[i]) * out.right[i];
    }
    const double correlation = lr / std::sqrt(ll * rr);
    EXPECT_GT(correlation, 0.3) << "a shared component";
    EXPECT_LT(correlation, 0.97) << "each channel has its own side";
    EXPECT_GT(std::sqrt(ll / double(out.left.size())), 0.01) << "audible";

    for (const auto* ch : {&out.left, &out.right}) {
        const double band = bandPower(*ch, 60, 400, rate);
        EXPECT_GT(band, 30 * bandPower(*ch, 2500, 8000, rate)) << "above the low-pass";
        EXPECT_GT(band, 10 * bandPower(*ch, 3, 8, rate)) << "below the high-pass";
    }
}

INSTANTIATE_TEST_SUITE_P(Rates, BrownNoiseSpectrum, ::testing::Values(48000.0f, 44100.0f));

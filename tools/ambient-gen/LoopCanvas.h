#pragma once

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <random>
#include <vector>

namespace ambientgen {

constexpr double kPi = 3.14159265358979323846;

/// A stereo buffer whose end joins its beginning: everything written past the end wraps
/// around, and filters are run over it twice so their state at the join is continuous.
/// That is what makes every recording loop without a seam.
class LoopCanvas {
public:
    LoopCanvas(int sampleRate, double seconds)
        : rate(sampleRate), frames(std::size_t(seconds * sampleRate)), left(frames), right(frames) {
    }

    int rate;
    std::size_t frames;
    std::vector<float> left, right;

    std::size_t wrap(std::int64_t i) const {
        const auto n = std::int64_t(frames);
        return std::size_t(((i % n) + n) % n);
    }
    void add(std::int64_t i, float l, float r) {
        const std::size_t k = wrap(i);
        left[k] += l;
        right[k] += r;
    }
    void mix(const std::vector<float>& l, const std::vector<float>& r, float gain) {
        for (std::size_t i = 0; i < frames; ++i) {
            left[i] += l[i] * gain;
            right[i] += r[i] * gain;
        }
    }
};

using Rng = std::mt19937;

inline double uniform(Rng& rng, double lo, double hi) {
    return std::uniform_real_distribution<double>(lo, hi)(rng);
}

/// Equal-power pan, p in [-1, 1].
inline void panGains(double p, float& l, float& r) {
    const double a = (p + 1) * kPi / 4;
    l = float(std::cos(a));
    r = float(std::sin(a));
}

/// Audio EQ Cookbook biquad in double precision (offline, so accuracy over speed).
struct Filter {
    double b0 = 1, b1 = 0, b2 = 0, a1 = 0, a2 = 0, z1 = 0, z2 = 0;
    static Filter make(int type, double fc, double q, double rate) {
        const double w = 2 * kPi * fc / rate, c = std::cos(w), s = std::sin(w), al = s / (2 * q);
        Filter f;
        double a0 = 1 + al;
        if (type == 0) { // low-pass
            f.b0 = (1 - c) / 2;
            f.b1 = 1 - c;
            f.b2 = (1 - c) / 2;
        } else if (type == 1) { // high-pass
            f.b0 = (1 + c) / 2;
            f.b1 = -(1 + c);
            f.b2 = (1 + c) / 2;
        } else { // band-pass, 0 dB peak
            f.b0 = al;
            f.b1 = 0;
            f.b2 = -al;
        }
        f.a1 = -2 * c;
        f.a2 = 1 - al;
        f.b0 /= a0;
        f.b1 /= a0;
        f.b2 /= a0;
        f.a1 /= a0;
        f.a2 /= a0;
        return f;
    }
    static Filter lowPass(double fc, double q, double rate) { return make(0, fc, q, rate); }
    static Filter highPass(double fc, double q, double rate) { return make(1, fc, q, rate); }
    static Filter bandPass(double fc, double q, double rate) { return make(2, fc, q, rate); }
    double process(double x) {
        const double y = b0 * x + z1;
        z1 = b1 * x - a1 * y + z2;
        z2 = b2 * x - a2 * y;
        return y;
    }
};

/// Runs a chain of filters over a periodic signal: a first pass to settle the state, then
/// the pass that is kept, so the output is periodic too.
inline void filterLoop(std::vector<float>& v, std::vector<Filter> chain) {
    for (int pass = 0; pass < 2; ++pass)
        for (float& x : v) {
            double y = x;
            for (auto& f : chain)
                y = f.process(y);
            if (pass == 1)
                x = float(y);
        }
}

/// White noise in [-1, 1).
inline std::vector<float> whiteNoise(Rng& rng, std::size_t n) {
    std::vector<float> v(n);
    std::uniform_real_distribution<float> d(-1.0f, 1.0f);
    for (float& x : v)
        x = d(rng);
    return v;
}

/// A smooth random curve around 0 that repeats exactly every loop: a sum of sinusoids with a
/// whole number of cycles per loop (between minCycles and maxCycles), normalised to [-1, 1].
inline std::vector<float> loopLfo(Rng& rng, std::size_t n, int minCycles, int maxCycles,
                                  int partials) {
    std::vector<double> acc(n, 0.0);
    for (int k = 0; k < partials; ++k) {
        const int cycles = std::uniform_int_distribution<int>(minCycles, maxCycles)(rng);
        const double phase = uniform(rng, 0, 2 * kPi);
        const double amp = uniform(rng, 0.4, 1.0) / std::sqrt(double(cycles));
        const double w = 2 * kPi * cycles / double(n);
        // Rotate a phasor instead of calling sin per sample.
        double c = std::cos(phase), s = std::sin(phase);
        const double cw = std::cos(w), sw = std::sin(w);
        for (std::size_t i = 0; i < n; ++i) {
            acc[i] += amp * s;
            const double nc = c * cw - s * sw;
            s = s * cw + c * sw;
            c = nc;
        }
    }
    double peak = 1e-12;
    for (double x : acc)
        peak = std::max(peak, std::fabs(x));
    std::vector<float> out(n);
    for (std::size_t i = 0; i < n; ++i)
        out[i] = float(acc[i] / peak);
    return out;
}

/// Scales the canvas to an RMS level, keeping peaks below a ceiling.
inline void normalise(LoopCanvas& c, double rms, double ceiling) {
    double sum = 0, peak = 1e-12;
    for (std::size_t i = 0; i < c.frames; ++i) {
        sum += double(c.left[i]) * c.left[i] + double(c.right[i]) * c.right[i];
        peak = std::max({peak, std::fabs(double(c.left[i])), std::fabs(double(c.right[i]))});
    }
    const double current = std::sqrt(sum / double(2 * c.frames)) + 1e-12;
    const double g = std::min(rms / current, ceiling / peak);
    for (std::size_t i = 0; i < c.frames; ++i) {
        c.left[i] = float(c.left[i] * g);
        c.right[i] = float(c.right[i] * g);
    }
}

} // namespace ambientgen

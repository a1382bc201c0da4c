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
    LoopCanvas(int sampleRate, std::size_t frameCount)
        : rate(sampleRate), frames(frameCount), left(frames), right(frames) {}
    /// An empty canvas of the same length, for a layer that is filtered on its own.
    LoopCanvas blank() const { return LoopCanvas(rate, frames); }

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

/// Slow fractal control around 0, in [-1, 1]: octaves of random knots joined by smooth
/// (Catmull-Rom) curves, each octave twice as fast and `persistence` times as strong as the
/// one before. The knots wrap around, so the curve joins itself at the loop's end, but it
/// never repeats within the loop the way a sum of whole-cycle sinusoids can.
inline std::vector<float> fractalControl(Rng& rng, std::size_t n, int rate, double slowestSeconds,
                                         int octaves, double persistence) {
    // Worked out at a millisecond's resolution and joined by straight lines: it is slow.
    const std::size_t stride = std::max(1, rate / 1000);
    const std::size_t m = (n + stride - 1) / stride;
    std::vector<double> acc(m, 0.0);
    double amp = 1.0;
    double spacing = slowestSeconds * rate / double(stride);
    for (int o = 0; o < octaves; ++o, amp *= persistence, spacing /= 2) {
        const std::size_t knots =
            std::max<std::size_t>(3, std::size_t(std::llround(double(m) / spacing)));
        std::vector<double> k(knots);
        for (double& v : k)
            v = uniform(rng, -1, 1);
        const double perKnot = double(knots) / double(m);
        for (std::size_t i = 0; i < m; ++i) {
            const double x = double(i) * perKnot;
            const auto j = std::size_t(x);
            const double t = x - double(j);
            const double p0 = k[(j + knots - 1) % knots], p1 = k[j % knots],
                         p2 = k[(j + 1) % knots], p3 = k[(j + 2) % knots];
            acc[i] += amp * 0.5 *
                      (2 * p1 + (-p0 + p2) * t + (2 * p0 - 5 * p1 + 4 * p2 - p3) * t * t +
                       (-p0 + 3 * p1 - 3 * p2 + p3) * t * t * t);
        }
    }
    double peak = 1e-12;
    for (double x : acc)
        peak = std::max(peak, std::fabs(x));
    std::vector<float> out(n);
    for (std::size_t i = 0; i < n; ++i) {
        const std::size_t a = i / stride;
        const double t = double(i % stride) / double(stride);
        out[i] = float((acc[a] + (acc[(a + 1) % m] - acc[a]) * t) / peak);
    }
    return out;
}

} // namespace ambientgen

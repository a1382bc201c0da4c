#pragma once

#include "LoopCanvas.h"

#include <functional>

namespace ambientgen {

/// Event times of a Poisson process on the loop, density in events per second shaped by
/// rate(i) in [0, 1] (thinning), so the events repeat exactly with the loop.
inline std::vector<std::int64_t> poissonTimes(Rng& rng, const LoopCanvas& c, double perSecond,
                                              const std::function<double(std::size_t)>& rate) {
    std::vector<std::int64_t> times;
    std::exponential_distribution<double> gap(perSecond);
    double t = 0;
    const double length = double(c.frames) / c.rate;
    for (;;) {
        t += gap(rng);
        if (t >= length)
            break;
        const auto i = std::int64_t(t * c.rate);
        if (!rate || uniform(rng, 0, 1) < rate(std::size_t(i)))
            times.push_back(i);
    }
    return times;
}

/// A damped sinusoid with an optional pitch glide (fraction of f0 per second of decay time),
/// written with wrap-around.
inline void addPing(LoopCanvas& c, std::int64_t at, double f0, double decay, double amp, double pan,
                    double glide = 0.0, double attack = 0.0005, double phase = 0.0) {
    float gl, gr;
    panGains(pan, gl, gr);
    const auto n = std::int64_t(decay * 7 * c.rate);
    double ph = phase;
    for (std::int64_t k = 0; k < n; ++k) {
        const double t = double(k) / c.rate;
        const double env = std::min(1.0, t / attack) * std::exp(-t / decay);
        const double f = f0 * (1 + glide * t / decay);
        ph += 2 * kPi * f / c.rate;
        const double s = amp * env * std::sin(ph);
        c.add(at + k, float(s * gl), float(s * gr));
    }
}

/// A very short noise burst, the attack of a drop or a crackle.
inline void addClick(LoopCanvas& c, Rng& rng, std::int64_t at, double decay, double amp,
                     double pan) {
    float gl, gr;
    panGains(pan, gl, gr);
    std::uniform_real_distribution<double> d(-1, 1);
    const auto n = std::int64_t(decay * 6 * c.rate) + 1;
    double last = 0;
    for (std::int64_t k = 0; k < n; ++k) {
        const double t = double(k) / c.rate;
        const double x = d(rng);
        const double s = amp * std::exp(-t / decay) * (x - 0.5 * last); // tilt up a little
        last = x;
        c.add(at + k, float(s * gl), float(s * gr));
    }
}

/// A tonal note with a smooth envelope and a frequency path f(u), u in [0, 1].
inline void addNote(LoopCanvas& c, std::int64_t at, double seconds, double amp, double pan,
                    const std::function<double(double)>& frequency, double harmonic = 0.15) {
    float gl, gr;
    panGains(pan, gl, gr);
    const auto n = std::int64_t(seconds * c.rate);
    double ph = 0;
    for (std::int64_t k = 0; k < n; ++k) {
        const double u = double(k) / double(n);
        const double env = std::pow(std::sin(kPi * u), 2);
        ph += 2 * kPi * frequency(u) / c.rate;
        const double s = amp * env * (std::sin(ph) + harmonic * std::sin(2 * ph));
        c.add(at + k, float(s * gl), float(s * gr));
    }
}

/// Heavy-tailed loudness: many quiet events, a few loud ones.
inline double paretoAmp(Rng& rng, double lo, double hi, double shape) {
    const double u = uniform(rng, 1e-6, 1);
    return std::min(hi, lo * std::pow(u, -1.0 / shape));
}

} // namespace ambientgen

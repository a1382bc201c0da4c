#include "Recipes.h"

#include "Events.h"

#include <algorithm>

namespace ambientgen {

namespace {

/// Two noise channels sharing part of their content, for a wide but stable bed.
void noiseBed(LoopCanvas& c, Rng& rng, std::vector<Filter> chain, float gain, float shared,
              const std::vector<float>* envelope = nullptr) {
    auto common = whiteNoise(rng, c.frames);
    auto l = whiteNoise(rng, c.frames);
    auto r = whiteNoise(rng, c.frames);
    for (std::size_t i = 0; i < c.frames; ++i) {
        l[i] = shared * common[i] + (1 - shared) * l[i];
        r[i] = shared * common[i] + (1 - shared) * r[i];
    }
    filterLoop(l, chain);
    filterLoop(r, chain);
    if (envelope)
        for (std::size_t i = 0; i < c.frames; ++i) {
            l[i] *= (*envelope)[i];
            r[i] *= (*envelope)[i];
        }
    c.mix(l, r, gain);
}

std::vector<float> positive(std::vector<float> lfo, float floor, float depth) {
    for (float& x : lfo)
        x = floor + depth * 0.5f * (x + 1.0f);
    return lfo;
}

// Rain on leaves: a steady hiss of distant rain, a thick patter of small drops and the
// duller taps of drops hitting broad leaves, all slowly swelling and easing.
void rain(LoopCanvas& c, Rng& rng) {
    const double sr = c.rate;
    const auto swell = positive(loopLfo(rng, c.frames, 1, 5, 4), 0.75f, 0.25f);
    noiseBed(c, rng, {Filter::highPass(500, 0.7, sr), Filter::lowPass(9000, 0.7, sr)}, 0.35f, 0.3f,
             &swell);
    noiseBed(c, rng, {Filter::lowPass(260, 0.7, sr)}, 0.5f, 0.6f, &swell);
    auto density = [&](std::size_t i) { return double(swell[i]); };
    for (auto t : poissonTimes(rng, c, 420, density)) {
        const double amp = paretoAmp(rng, 0.015, 0.25, 2.2);
        const double pan = uniform(rng, -0.9, 0.9);
        addClick(c, rng, t, uniform(rng, 0.0002, 0.0008), amp * 0.7, pan);
        addPing(c, t, uniform(rng, 2200, 7000), uniform(rng, 0.0015, 0.006), amp * 0.5, pan,
                uniform(rng, -0.3, 0.1));
    }
    for (auto t : poissonTimes(rng, c, 9, density)) {
        const double amp = paretoAmp(rng, 0.08, 0.4, 2.5);
        const double pan = uniform(rng, -0.8, 0.8);
        addClick(c, rng, t, 0.0006, amp * 0.4, pan);
        addPing(c, t, uniform(rng, 500, 1400), uniform(rng, 0.012, 0.035), amp, pan,
                uniform(rng, -0.5, -0.1));
    }
    normalise(c, 0.1, 0.8);
}

// Surf on sand: waves at uneven intervals, each a rising swell, a crash and a long fizzing
// wash that runs back out, over a soft constant roar.
void waves(LoopCanvas& c, Rng& rng) {
    const double sr = c.rate;
    const std::size_t n = c.frames;
    std::vector<float> rumble(n), crash(n), wash(n);
    // Uneven spacing that still adds up to exactly one loop.
    std::vector<double> gaps;
    double total = 0;
    for (int k = 0; k < 7; ++k) {
        gaps.push_back(uniform(rng, 0.7, 1.3));
        total += gaps.back();
    }
    const double length = double(n) / sr;
    double t0 = uniform(rng, 0, length);
    for (double g : gaps) {
        const double strength = uniform(rng, 0.6, 1.0);
        const double crashAt = t0 + uniform(rng, 2.0, 3.0);
        for (double t = t0; t < crashAt + 12; t += 1.0 / sr) {
            const auto i = c.wrap(std::int64_t(t * sr));
            const double s = t - crashAt;
            double r =
                s < 0 ? 0.5 - 0.5 * std::cos(kPi * (t - t0) / (crashAt - t0)) : std::exp(-s / 1.2);
            double cr = s < 0 ? std::exp(s / 0.12) * 0.2 : std::exp(-s / 0.7);
            double w = s < 0.2 ? 0 : (1 - std::exp(-(s - 0.2) / 0.5)) * std::exp(-(s - 0.2) / 2.6);
            rumble[i] += float(strength * r);
            crash[i] += float(strength * cr);
            wash[i] += float(strength * w);
        }
        t0 += g / total * length;
    }
    noiseBed(c, rng, {Filter::lowPass(700, 0.6, sr)}, 0.25f, 0.5f);
    noiseBed(c, rng, {Filter::lowPass(380, 0.7, sr), Filter::highPass(40, 0.7, sr)}, 1.0f, 0.6f,
             &rumble);
    noiseBed(c, rng, {Filter::highPass(250, 0.7, sr), Filter::lowPass(6500, 0.7, sr)}, 0.9f, 0.5f,
             &crash);
    // The wash fizzes: its hiss is broken up by the bursting bubbles of the foam.
    auto fizz = whiteNoise(rng, n);
    filterLoop(fizz, {Filter::lowPass(30, 0.7, sr)});
    for (std::size_t i = 0; i < n; ++i)
        wash[i] *= 0.6f + 0.4f * std::clamp(fizz[i] * 8.0f, -1.0f, 1.0f);
    noiseBed(c, rng, {Filter::highPass(1500, 0.7, sr), Filter::lowPass(11000, 0.7, sr)}, 0.55f,
             0.2f, &wash);
    normalise(c, 0.1, 0.8);
}

// A brook: countless small bubbles, each a rising resonance, over the soft rush of water.
void stream(LoopCanvas& c, Rng& rng) {
    const double sr = c.rate;
    const auto flow = positive(loopLfo(rng, c.frames, 2, 9, 5), 0.6f, 0.4f);
    noiseBed(c, rng, {Filter::bandPass(900, 0.5, sr)}, 0.18f, 0.4f, &flow);
    noiseBed(c, rng, {Filter::highPass(3000, 0.7, sr)}, 0.03f, 0.2f);
    auto density = [&](std::size_t i) { return double(flow[i]); };
    for (auto t : poissonTimes(rng, c, 230, density)) {
        // Small bubbles ring higher and die sooner.
        const double size = uniform(rng, 0, 1);
        const double f0 = 350 * std::pow(7.0, size);
        const double decay = 0.03 * std::pow(0.2, size) + uniform(rng, 0.001, 0.004);
        const double amp = paretoAmp(rng, 0.02, 0.3, 2.0);
        addPing(c, t, f0, decay, amp, uniform(rng, -0.7, 0.7), uniform(rng, 0.15, 0.6), 0.0008);
    }
    normalise(c, 0.09, 0.8);
}

/// Noise through a band-pass whose centre follows centre(i) (Hz), run twice for a clean loop.
std::vector<float> sweptBand(Rng& rng, std::size_t n, double sr, const std::vector<float>& centre,
                             double q) {
    auto v = whiteNoise(rng, n);
    Filter f;
    for (int pass = 0; pass < 2; ++pass)
        for (std::size_t i = 0; i < n; ++i) {
            if (i % 64 == 0) {
                Filter g = Filter::bandPass(centre[i], q, sr);
                g.z1 = f.z1;
                g.z2 = f.z2;
                f = g;
            }
            const double y = f.process(v[i]);
            if (pass == 1)
                v[i] = float(y);
        }
    return v;
}

// Wind in pines: gusts that rise and fall, a hollow moaning body whose pitch follows the
// gusts, and the airy hiss of the wind combing through the needles.
void wind(LoopCanvas& c, Rng& rng) {
    const double sr = c.rate;
    const std::size_t n = c.frames;
    auto gust = loopLfo(rng, n, 3, 11, 6);
    std::vector<float> g(n), gRight(n), centre(n);
    const std::size_t lag = std::size_t(0.35 * sr);
    for (std::size_t i = 0; i < n; ++i) {
        const float x = 0.5f * (gust[i] + 1.0f);
        g[i] = 0.25f + 0.75f * x * x;
        centre[i] = 280.0f + 520.0f * x;
    }
    for (std::size_t i = 0; i < n; ++i)
        gRight[i] = g[(i + lag) % n];
    auto bodyL = sweptBand(rng, n, sr, centre, 1.2);
    auto bodyR = sweptBand(rng, n, sr, centre, 1.2);
    for (std::size_t i = 0; i < n; ++i) {
        bodyL[i] *= g[i];
        bodyR[i] *= gRight[i];
    }
    c.mix(bodyL, bodyR, 0.9f);
    std::vector<float> needles(n), needlesR(n);
    for (std::size_t i = 0; i < n; ++i) {
        needles[i] = std::pow(g[i], 1.6f);
        needlesR[i] = std::pow(gRight[i], 1.6f);
    }
    auto hl = whiteNoise(rng, n), hr = whiteNoise(rng, n);
    filterLoop(hl, {Filter::highPass(2200, 0.7, sr), Filter::lowPass(7500, 0.7, sr)});
    filterLoop(hr, {Filter::highPass(2200, 0.7, sr), Filter::lowPass(7500, 0.7, sr)});
    for (std::size_t i = 0; i < n; ++i) {
        hl[i] *= needles[i];
        hr[i] *= needlesR[i];
    }
    c.mix(hl, hr, 0.35f);
    noiseBed(c, rng, {Filter::lowPass(120, 0.7, sr)}, 0.6f, 0.7f, &g);
    normalise(c, 0.09, 0.8);
}

// A crackling fire: a low roar, a soft hiss of escaping gas, and crackles that come in
// little bursts, with now and then the pop of a splitting log.
void fire(LoopCanvas& c, Rng& rng) {
    const double sr = c.rate;
    const auto roar = positive(loopLfo(rng, c.frames, 4, 20, 6), 0.6f, 0.4f);
    noiseBed(c, rng, {Filter::lowPass(170, 0.7, sr), Filter::highPass(30, 0.7, sr)}, 0.8f, 0.7f,
             &roar);
    const auto flicker = positive(loopLfo(rng, c.frames, 60, 400, 8), 0.2f, 0.8f);
    noiseBed(c, rng, {Filter::bandPass(3200, 0.8, sr)}, 0.05f, 0.5f, &flicker);
    for (auto t : poissonTimes(rng, c, 7, nullptr)) {
        const int count = std::uniform_int_distribution<int>(1, 9)(rng);
        const double pan = uniform(rng, -0.5, 0.5);
        for (int k = 0; k < count; ++k) {
            const auto at = t + std::int64_t(uniform(rng, 0, 0.08) * sr);
            const double amp = paretoAmp(rng, 0.05, 0.9, 1.6);
            addClick(c, rng, at, uniform(rng, 0.0001, 0.0006), amp,
                     pan + uniform(rng, -0.15, 0.15));
            addPing(c, at, uniform(rng, 1500, 6000), uniform(rng, 0.0006, 0.002), amp * 0.4, pan);
        }
    }
    for (auto t : poissonTimes(rng, c, 0.6, nullptr)) {
        const double amp = uniform(rng, 0.3, 0.7);
        const double pan = uniform(rng, -0.4, 0.4);
        addClick(c, rng, t, 0.0008, amp, pan);
        addPing(c, t, uniform(rng, 250, 700), uniform(rng, 0.01, 0.025), amp * 0.8, pan, -0.3);
    }
    normalise(c, 0.08, 0.85);
}

/// One bird: a voice (pitch range), a place (pan, distance) and a habit (kind of call).
struct Bird {
    int kind;
    double pitch, pan, gain;
};

void birdCall(LoopCanvas& c, Rng& rng, const Bird& b, std::int64_t at) {
    const double sr = c.rate;
    switch (b.kind) {
    case 0: { // warbler: a quick run of sweeping chirps
        const int notes = std::uniform_int_distribution<int>(4, 9)(rng);
        std::int64_t t = at;
        for (int k = 0; k < notes; ++k) {
            const double len = uniform(rng, 0.04, 0.09);
            const double f1 = b.pitch * uniform(rng, 0.85, 1.25), f2 = f1 * uniform(rng, 0.6, 1.4);
            addNote(c, t, len, b.gain, b.pan,
                    [=](double u) { return f1 + (f2 - f1) * u + 300 * std::sin(2 * kPi * 6 * u); });
            t += std::int64_t((len + uniform(rng, 0.025, 0.06)) * sr);
        }
        break;
    }
    case 1: { // two-note whistle, "fee-bee"
        const double f = b.pitch;
        addNote(
            c, at, 0.28, b.gain, b.pan,
            [=](double u) { return f * (1 + 0.01 * std::sin(2 * kPi * 9 * u)); }, 0.05);
        addNote(
            c, at + std::int64_t(0.33 * sr), 0.32, b.gain * 0.9, b.pan,
            [=](double u) { return f * 0.84 * (1 - 0.03 * u); }, 0.05);
        break;
    }
    case 2: { // trill: rapid falling notes
        const int notes = std::uniform_int_distribution<int>(12, 26)(rng);
        for (int k = 0; k < notes; ++k) {
            const double f = b.pitch * (1 - 0.008 * k);
            addNote(c, at + std::int64_t(k * 0.048 * sr), 0.035,
                    b.gain * (0.6 + 0.4 * std::sin(kPi * k / notes)), b.pan,
                    [=](double u) { return f * (1.15 - 0.3 * u); });
        }
        break;
    }
    default: { // caroling phrase of rounded notes
        const int notes = std::uniform_int_distribution<int>(3, 5)(rng);
        std::int64_t t = at;
        for (int k = 0; k < notes; ++k) {
            const double f = b.pitch * uniform(rng, 0.8, 1.3);
            const double bend = uniform(rng, -0.25, 0.25);
            const double len = uniform(rng, 0.12, 0.2);
            addNote(
                c, t, len, b.gain, b.pan,
                [=](double u) { return f * (1 + bend * std::sin(kPi * u)); }, 0.25);
            t += std::int64_t((len + uniform(rng, 0.06, 0.12)) * sr);
        }
        break;
    }
    }
}

// Morning birds by a lake: a few birds near and far, each with its own song, over the calm
// air of the morning and water lapping at the shore.
void birds(LoopCanvas& c, Rng& rng) {
    const double sr = c.rate;
    noiseBed(c, rng, {Filter::lowPass(500, 0.7, sr)}, 0.08f, 0.5f);
    // Lapping: small regular swells of low water noise.
    std::vector<float> lap(c.frames);
    const int laps = 37; // whole cycles per loop
    for (std::size_t i = 0; i < c.frames; ++i) {
        const double ph = 2 * kPi * laps * double(i) / double(c.frames);
        const double x = 0.5 + 0.5 * std::sin(ph + 0.8 * std::sin(ph * 0.37));
        lap[i] = float(x * x * x);
    }
    noiseBed(c, rng, {Filter::bandPass(450, 1.0, sr)}, 0.12f, 0.6f, &lap);
    const Bird flock[] = {{0, 4200, -0.6, 0.22}, {1, 3900, 0.5, 0.2},  {2, 3000, 0.15, 0.12},
                          {3, 2600, -0.2, 0.16}, {0, 5200, 0.8, 0.06}, {3, 2200, 0.65, 0.05},
                          {2, 3600, -0.85, 0.05}};
    const double callsPerSecond[] = {0.18, 0.12, 0.08, 0.15, 0.1, 0.08, 0.06};
    for (std::size_t k = 0; k < std::size(flock); ++k)
        for (auto t : poissonTimes(rng, c, callsPerSecond[k], nullptr))
            birdCall(c, rng, flock[k], t);
    normalise(c, 0.06, 0.7);
}

// Summer-night crickets: a handful of nearby crickets chirping in their own rhythms, a
// chorus of distant ones, and the still night air.
void crickets(LoopCanvas& c, Rng& rng) {
    const double sr = c.rate;
    noiseBed(c, rng, {Filter::lowPass(300, 0.7, sr)}, 0.05f, 0.6f);
    auto cricket = [&](double carrier, double pan, double gain, double chirpPeriod, int pulses,
                       double pulseRate) {
        double t = uniform(rng, 0, chirpPeriod);
        const double length = double(c.frames) / sr;
        // A whole number of chirps per loop keeps the rhythm steady across the join.
        const double period = length / std::round(length / chirpPeriod);
        while (t < length) {
            const double at = t + uniform(rng, -0.01, 0.01);
            for (int p = 0; p < pulses; ++p)
                addNote(
                    c, std::int64_t((at + p / pulseRate) * sr), 0.55 / pulseRate,
                    gain * (p == 0 ? 0.7 : 1.0), pan,
                    [=](double u) { return carrier * (1.01 - 0.02 * u); }, 0.1);
            t += period;
        }
    };
    cricket(4600, -0.5, 0.2, 0.62, 4, 32);
    cricket(4350, 0.45, 0.17, 0.81, 3, 28);
    cricket(4900, 0.1, 0.12, 0.47, 5, 36);
    cricket(4150, -0.8, 0.08, 1.1, 3, 25);
    cricket(5100, 0.8, 0.07, 0.55, 4, 30);
    for (int k = 0; k < 16; ++k)
        cricket(uniform(rng, 4000, 5200), uniform(rng, -1, 1), uniform(rng, 0.01, 0.025),
                uniform(rng, 0.4, 1.2), std::uniform_int_distribution<int>(2, 5)(rng),
                uniform(rng, 24, 40));
    normalise(c, 0.05, 0.7);
}

} // namespace

bool render(const std::string& raw, LoopCanvas& canvas) {
    using Recipe = void (*)(LoopCanvas&, Rng&);
    const std::pair<const char*, Recipe> recipes[] = {
        {"rain", rain}, {"waves", waves}, {"stream", stream},    {"wind", wind},
        {"fire", fire}, {"birds", birds}, {"crickets", crickets}};
    for (std::size_t k = 0; k < std::size(recipes); ++k)
        if (raw == recipes[k].first) {
            // A fixed seed per recording: every build renders the same files.
            Rng rng(0x5eed0000u + unsigned(k));
            recipes[k].second(canvas, rng);
            return true;
        }
    return false;
}

} // namespace ambientgen

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

/// Maps a control in [-1, 1] to [floor, floor + depth].
std::vector<float> positive(std::vector<float> control, float floor, float depth) {
    for (float& x : control)
        x = floor + depth * 0.5f * (x + 1.0f);
    return control;
}

/// Noise through a filter whose frequency follows hz(i), run twice for a clean loop.
std::vector<float> sweptNoise(Rng& rng, std::size_t n, double sr, int type,
                              const std::vector<float>& hz, double q) {
    auto v = whiteNoise(rng, n);
    Filter f;
    for (int pass = 0; pass < 2; ++pass)
        for (std::size_t i = 0; i < n; ++i) {
            if (i % 32 == 0) {
                Filter g = Filter::make(type, std::clamp<double>(hz[i], 20, 0.45 * sr), q, sr);
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

void scale(std::vector<float>& v, const std::vector<float>& by) {
    for (std::size_t i = 0; i < v.size(); ++i)
        v[i] *= by[i];
}

/// Mixes one layer in, filtered as a whole (distance dulls a sound).
void mixFiltered(LoopCanvas& c, LoopCanvas layer, std::vector<Filter> chain, float gain) {
    filterLoop(layer.left, chain);
    filterLoop(layer.right, chain);
    c.mix(layer.left, layer.right, gain);
}

// Rain on leaves: single drops near and far, each a tick on a leaf that rings briefly, the
// heavier drips that fall from the leaves, all over a light bed of distant rain that swells
// and eases.
void rain(LoopCanvas& c, Rng& rng) {
    const double sr = c.rate;
    const auto intensity =
        positive(fractalControl(rng, c.frames, c.rate, 40, 6, 0.6), 0.55f, 0.45f);
    noiseBed(c, rng, {Filter::highPass(700, 0.7, sr), Filter::lowPass(6500, 0.7, sr)}, 0.035f, 0.3f,
             &intensity);
    noiseBed(c, rng, {Filter::lowPass(350, 0.7, sr)}, 0.06f, 0.6f, &intensity);
    auto density = [&](std::size_t i) { return double(intensity[i]); };

    // Far drops: a dense, dull patter.
    LoopCanvas far = c.blank();
    for (auto t : poissonTimes(rng, c, 260, density)) {
        const double amp = paretoAmp(rng, 0.01, 0.08, 2.5);
        const double pan = uniform(rng, -1, 1);
        addClick(far, rng, t, uniform(rng, 0.0002, 0.0006), amp, pan);
        addPing(far, t, uniform(rng, 1500, 4500), uniform(rng, 0.002, 0.006), amp * 0.6, pan,
                uniform(rng, -0.3, 0.0));
    }
    mixFiltered(c, std::move(far), {Filter::lowPass(3500, 0.7, sr)}, 1.0f);

    // Near drops on leaves: sparse, bright and clearly separate.
    for (auto t : poissonTimes(rng, c, 28, density)) {
        const double amp = paretoAmp(rng, 0.05, 0.8, 1.8);
        const double pan = uniform(rng, -0.9, 0.9);
        addClick(c, rng, t, uniform(rng, 0.0002, 0.0007), amp * 0.8, pan);
        addPing(c, t, uniform(rng, 1800, 5500), uniform(rng, 0.003, 0.012), amp * 0.5, pan,
                uniform(rng, -0.4, -0.05));
    }
    // Drips gathered on a leaf: fewer, heavier and lower.
    for (auto t : poissonTimes(rng, c, 2.5, density)) {
        const double amp = paretoAmp(rng, 0.15, 0.9, 2.0);
        const double pan = uniform(rng, -0.7, 0.7);
        addClick(c, rng, t, 0.0006, amp * 0.5, pan);
        addPing(c, t, uniform(rng, 600, 1500), uniform(rng, 0.01, 0.03), amp, pan,
                uniform(rng, -0.5, -0.15));
    }
}

// Surf on sand: waves of uneven length and colour, each a swell that rises, breaks and runs
// out as a long fizzing wash, over the soft roar of the sea further out.
void waves(LoopCanvas& c, Rng& rng) {
    const double sr = c.rate;
    const std::size_t n = c.frames;
    const double length = double(n) / sr;
    std::vector<float> swell(n), crash(n), wash(n), colour(n, 0.0f), weight(n, 0.0f);
    // Uneven spacing that adds up to exactly one loop, so the last wave runs into the first.
    std::vector<double> gaps;
    double total = 0;
    while (total < length) {
        gaps.push_back(uniform(rng, 6.0, 15.0));
        total += gaps.back();
    }
    double t0 = uniform(rng, 0, length);
    for (double g : gaps) {
        const double span = g / total * length;
        const double strength = uniform(rng, 0.45, 1.0);
        const double build = uniform(rng, 2.0, 4.5);    // the swell rising
        const double breaking = uniform(rng, 0.8, 1.8); // the crash spreading along the beach
        const double fall = uniform(rng, 0.6, 1.6);
        const double washing = uniform(rng, 2.0, 6.0) * (0.6 + 0.6 * strength);
        const double bright = uniform(rng, 0.0, 1.0);
        const double crashAt = t0 + build;
        const double end = crashAt + breaking + 4 * washing;
        for (double t = t0; t < end; t += 1.0 / sr) {
            const auto i = c.wrap(std::int64_t(t * sr));
            const double s = t - crashAt;
            const double u = std::clamp(s / breaking, 0.0, 1.0);
            const double rise = u * u * (3 - 2 * u); // smooth: a wave never switches on
            const double sw = s < 0 ? 0.5 - 0.5 * std::cos(kPi * (t - t0) / build)
                                    : std::exp(-s / (1.5 * fall + breaking));
            const double cr = s < 0 ? 0 : rise * std::exp(-std::max(0.0, s - breaking) / fall);
            const double wa = s < 0.3 * breaking
                                  ? 0
                                  : (1 - std::exp(-(s - 0.3 * breaking) / 0.6)) *
                                        std::exp(-std::max(0.0, s - breaking) / washing);
            swell[i] += float(strength * sw);
            crash[i] += float(strength * cr);
            wash[i] += float(strength * wa);
            const float w = float(strength * (cr + 0.3 * wa) + 1e-4);
            colour[i] += w * float(bright);
            weight[i] += w;
        }
        t0 += span;
    }
    // Each crash has its own colour: the cutoff follows the breaking wave's brightness.
    std::vector<float> cutoff(n);
    for (std::size_t i = 0; i < n; ++i)
        cutoff[i] = 1800.0f + 5200.0f * (weight[i] > 0 ? colour[i] / weight[i] : 0.5f);

    const auto roar = positive(fractalControl(rng, n, c.rate, 25, 5, 0.6), 0.6f, 0.4f);
    noiseBed(c, rng, {Filter::lowPass(600, 0.6, sr)}, 0.12f, 0.5f, &roar);
    noiseBed(c, rng, {Filter::lowPass(400, 0.7, sr), Filter::highPass(40, 0.7, sr)}, 0.7f, 0.6f,
             &swell);
    for (int side = 0; side < 2; ++side) {
        auto body = sweptNoise(rng, n, sr, 0, cutoff, 0.7);
        filterLoop(body, {Filter::highPass(200, 0.7, sr)});
        scale(body, crash);
        auto& channel = side == 0 ? c.left : c.right;
        for (std::size_t i = 0; i < n; ++i)
            channel[i] += 0.8f * body[i];
    }
    // The wash fizzes: its hiss is broken up by the bursting bubbles of the foam.
    auto fizz = whiteNoise(rng, n);
    filterLoop(fizz, {Filter::lowPass(30, 0.7, sr)});
    for (std::size_t i = 0; i < n; ++i)
        wash[i] *= 0.6f + 0.4f * std::clamp(fizz[i] * 8.0f, -1.0f, 1.0f);
    noiseBed(c, rng, {Filter::highPass(1500, 0.7, sr), Filter::lowPass(10000, 0.7, sr)}, 0.4f, 0.2f,
             &wash);
}

// A brook: countless small bubbles, each a rising resonance, over the soft rush of water.
void stream(LoopCanvas& c, Rng& rng) {
    const double sr = c.rate;
    const auto flow = positive(fractalControl(rng, c.frames, c.rate, 20, 6, 0.6), 0.55f, 0.45f);
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
}

// Wind in pines: gusts from a slow fractal control, a hollow body whose pitch follows the
// gusts, narrow whistling bands that sing only when a gust is strong, and the airy hiss of
// the wind combing through the needles.
void wind(LoopCanvas& c, Rng& rng) {
    const double sr = c.rate;
    const std::size_t n = c.frames;
    const auto gust = fractalControl(rng, n, c.rate, 30, 7, 0.62);
    std::vector<float> g(n), gRight(n), centre(n);
    const std::size_t lag = std::size_t(0.4 * sr);
    for (std::size_t i = 0; i < n; ++i) {
        const float x = 0.5f * (gust[i] + 1.0f);
        g[i] = 0.12f + 0.88f * x * x;
        centre[i] = 260.0f + 560.0f * x;
    }
    for (std::size_t i = 0; i < n; ++i)
        gRight[i] = g[(i + lag) % n];
    auto bodyL = sweptNoise(rng, n, sr, 2, centre, 0.6);
    auto bodyR = sweptNoise(rng, n, sr, 2, centre, 0.6);
    scale(bodyL, g);
    scale(bodyR, gRight);
    c.mix(bodyL, bodyR, 0.9f);

    // Whistling: each band has its own pitch, place and moments; it sounds when the gust
    // passes its threshold.
    for (int k = 0; k < 3; ++k) {
        const double base = uniform(rng, 550, 1600);
        const double threshold = uniform(rng, 0.3, 0.5);
        const auto own = fractalControl(rng, n, c.rate, 8, 4, 0.6);
        std::vector<float> hz(n), amount(n);
        for (std::size_t i = 0; i < n; ++i) {
            const double x = 0.5 * (gust[i] + 1.0);
            hz[i] = float(base * (0.85 + 0.35 * x + 0.03 * own[i]));
            const double over = std::clamp((x - threshold) / (1 - threshold), 0.0, 1.0);
            amount[i] = float(std::pow(over, 1.2) * (0.6 + 0.4 * own[i]));
        }
        auto band = sweptNoise(rng, n, sr, 2, hz, 25);
        scale(band, amount);
        float gl, gr;
        panGains(uniform(rng, -0.7, 0.7), gl, gr);
        for (std::size_t i = 0; i < n; ++i) {
            c.left[i] += 10.0f * gl * band[i];
            c.right[i] += 10.0f * gr * band[i];
        }
    }

    std::vector<float> needles(n), needlesR(n);
    for (std::size_t i = 0; i < n; ++i) {
        needles[i] = std::pow(g[i], 1.6f);
        needlesR[i] = std::pow(gRight[i], 1.6f);
    }
    auto hl = whiteNoise(rng, n), hr = whiteNoise(rng, n);
    filterLoop(hl, {Filter::highPass(2200, 0.7, sr), Filter::lowPass(7500, 0.7, sr)});
    filterLoop(hr, {Filter::highPass(2200, 0.7, sr), Filter::lowPass(7500, 0.7, sr)});
    scale(hl, needles);
    scale(hr, needlesR);
    c.mix(hl, hr, 0.3f);
    noiseBed(c, rng, {Filter::lowPass(120, 0.7, sr)}, 0.5f, 0.7f, &g);
}

// A log fire in a fireplace: the lapping body of the flames, the hiss of escaping gas in
// bursts, crackles in little clusters and now and then the pop of a splitting log.
void fire(LoopCanvas& c, Rng& rng) {
    const double sr = c.rate;
    const std::size_t n = c.frames;
    // Lapping: the flames' body flickers several times a second around a slow breathing.
    const auto breathing = positive(fractalControl(rng, n, c.rate, 20, 4, 0.6), 0.6f, 0.4f);
    const auto lick = fractalControl(rng, n, c.rate, 0.6, 4, 0.7);
    std::vector<float> lapping(n), lapHz(n);
    for (std::size_t i = 0; i < n; ++i) {
        const float x = 0.5f * (lick[i] + 1.0f);
        lapping[i] = breathing[i] * (0.25f + 0.75f * x * x);
        lapHz[i] = 250.0f + 700.0f * x;
    }
    for (int side = 0; side < 2; ++side) {
        auto body = sweptNoise(rng, n, sr, 2, lapHz, 0.9);
        scale(body, lapping);
        auto& channel = side == 0 ? c.left : c.right;
        for (std::size_t i = 0; i < n; ++i)
            channel[i] += 0.9f * body[i];
    }
    noiseBed(c, rng, {Filter::lowPass(160, 0.7, sr), Filter::highPass(35, 0.7, sr)}, 0.35f, 0.7f,
             &breathing);
    // Hiss: gas escaping in short, uneven bursts.
    auto hissing = fractalControl(rng, n, c.rate, 1.5, 5, 0.7);
    for (float& x : hissing) {
        const float y = std::max(0.0f, x);
        x = 0.05f + y * y * y;
    }
    noiseBed(c, rng, {Filter::highPass(2500, 0.7, sr), Filter::lowPass(9000, 0.7, sr)}, 0.12f, 0.4f,
             &hissing);
    // Crackles in clusters, more of them when the fire is lively.
    auto lively = [&](std::size_t i) { return double(breathing[i]); };
    for (auto t : poissonTimes(rng, c, 6, lively)) {
        const int count = std::uniform_int_distribution<int>(1, 12)(rng);
        const double pan = uniform(rng, -0.5, 0.5);
        const double spread = uniform(rng, 0.03, 0.2);
        for (int k = 0; k < count; ++k) {
            const auto at = t + std::int64_t(uniform(rng, 0, spread) * sr);
            const double amp = paretoAmp(rng, 0.04, 0.7, 1.7);
            addClick(c, rng, at, uniform(rng, 0.00008, 0.0005), amp,
                     pan + uniform(rng, -0.15, 0.15));
            addPing(c, at, uniform(rng, 1500, 6500), uniform(rng, 0.0005, 0.002), amp * 0.35, pan);
        }
    }
    for (auto t : poissonTimes(rng, c, 0.35, lively)) {
        const double amp = uniform(rng, 0.3, 0.7);
        const double pan = uniform(rng, -0.4, 0.4);
        addClick(c, rng, t, 0.0008, amp, pan);
        addPing(c, t, uniform(rng, 250, 700), uniform(rng, 0.01, 0.025), amp * 0.8, pan, -0.3);
    }
}

/// One syllable: a pitch path through three points (start, middle, end as factors of the
/// bird's pitch), a length, a trill (rate and depth of fast pitch wobble) and a loudness
/// shape with its peak at `peakAt`.
struct Syllable {
    double start, middle, end, seconds, trillRate, trillDepth, peakAt;
};

/// One bird: its voice (pitch), place (pan, distance) and its small repertoire of syllables,
/// sung as phrases of `minNotes` to `maxNotes` syllables.
struct Bird {
    double pitch, pan, gain, callsPerSecond;
    std::vector<Syllable> repertoire;
    int minNotes, maxNotes;
    double gap;
};

Syllable randomSyllable(Rng& rng) {
    Syllable s;
    s.start = uniform(rng, 0.75, 1.3);
    s.middle = uniform(rng, 0.7, 1.4);
    s.end = uniform(rng, 0.6, 1.3);
    s.seconds = uniform(rng, 0.04, 0.28);
    const bool trilled = uniform(rng, 0, 1) < 0.35;
    s.trillRate = trilled ? uniform(rng, 25, 60) : uniform(rng, 4, 9);
    s.trillDepth = trilled ? uniform(rng, 0.04, 0.12) : uniform(rng, 0.005, 0.02);
    s.peakAt = uniform(rng, 0.15, 0.6);
    return s;
}

void sing(LoopCanvas& c, Rng& rng, const Bird& b, std::int64_t at) {
    const double sr = c.rate;
    // Every phrase differs a little: its pitch, its pace and how many syllables it has.
    const double pitch = b.pitch * uniform(rng, 0.93, 1.07);
    const double pace = uniform(rng, 0.85, 1.2);
    const int notes = std::uniform_int_distribution<int>(b.minNotes, b.maxNotes)(rng);
    const auto first = std::uniform_int_distribution<std::size_t>(0, b.repertoire.size() - 1)(rng);
    float gl, gr;
    panGains(b.pan + uniform(rng, -0.05, 0.05), gl, gr);
    std::int64_t t = at;
    for (int k = 0; k < notes; ++k) {
        const Syllable& s = b.repertoire[(first + std::size_t(k) / 2) % b.repertoire.size()];
        const double seconds = s.seconds * pace * uniform(rng, 0.9, 1.1);
        const double f0 = pitch * uniform(rng, 0.97, 1.03);
        const double loud = b.gain * uniform(rng, 0.6, 1.0) * (k == notes - 1 ? 0.7 : 1.0);
        const auto len = std::int64_t(seconds * sr);
        double ph = 0;
        for (std::int64_t i = 0; i < len; ++i) {
            const double u = double(i) / double(len);
            // A quadratic path through the three points, with the trill on top.
            const double path =
                s.start * (1 - u) * (1 - u) + 2 * s.middle * u * (1 - u) + s.end * u * u;
            const double hz =
                f0 * path * (1 + s.trillDepth * std::sin(2 * kPi * s.trillRate * u * seconds));
            ph += 2 * kPi * hz / sr;
            // Quick onset, a peak, a softer fade; the voice is slightly louder on its peak.
            const double rise = std::min(1.0, u / s.peakAt),
                         fall = std::min(1.0, (1 - u) / (1 - s.peakAt));
            const double env = std::sin(0.5 * kPi * rise) * std::sin(0.5 * kPi * fall);
            const double v = loud * env * env *
                             (std::sin(ph) + 0.12 * std::sin(2 * ph) + 0.04 * std::sin(3 * ph));
            c.add(t + i, float(v * gl), float(v * gr));
            // A faint reflection off the water.
            c.add(t + i + std::int64_t(0.045 * sr), float(0.12 * v * gr), float(0.12 * v * gl));
        }
        t += len + std::int64_t(b.gap * pace * uniform(rng, 0.6, 1.5) * sr);
    }
}

// Morning birds by a lake: several birds near and far, each with its own voice and songs
// that differ every time, busier at some moments than others, over calm air and water
// lapping at the shore.
void birds(LoopCanvas& c, Rng& rng) {
    const double sr = c.rate;
    const std::size_t n = c.frames;
    noiseBed(c, rng, {Filter::lowPass(500, 0.7, sr)}, 0.015f, 0.5f);
    auto lap = fractalControl(rng, n, c.rate, 3, 5, 0.55);
    for (float& x : lap) {
        const float y = 0.5f * (x + 1.0f);
        x = y * y * y;
    }
    noiseBed(c, rng, {Filter::bandPass(420, 0.9, sr), Filter::lowPass(1500, 0.7, sr)}, 0.035f, 0.6f,
             &lap);

    std::vector<Bird> flock;
    const double pitches[] = {2400, 3100, 3700, 4300, 2800, 5200, 3400, 2100};
    for (std::size_t k = 0; k < std::size(pitches); ++k) {
        Bird b;
        b.pitch = pitches[k];
        b.pan = uniform(rng, -0.85, 0.85);
        b.gain = k < 4 ? uniform(rng, 0.12, 0.22) : uniform(rng, 0.03, 0.07);
        b.callsPerSecond = uniform(rng, 0.06, 0.16);
        const int kinds = std::uniform_int_distribution<int>(1, 4)(rng);
        for (int s = 0; s < kinds; ++s)
            b.repertoire.push_back(randomSyllable(rng));
        b.minNotes = std::uniform_int_distribution<int>(1, 3)(rng);
        b.maxNotes = b.minNotes + std::uniform_int_distribution<int>(1, 8)(rng);
        b.gap = uniform(rng, 0.03, 0.15);
        flock.push_back(std::move(b));
    }
    for (const Bird& b : flock) {
        const auto activity = positive(fractalControl(rng, n, c.rate, 30, 3, 0.6), 0.1f, 0.9f);
        for (auto t : poissonTimes(rng, c, b.callsPerSecond * 1.8,
                                   [&](std::size_t i) { return double(activity[i]); }))
            sing(c, rng, b, t);
    }
}

// Summer-night crickets: nearby crickets chirping in rhythms that slowly drift, who come
// and go, a chorus of distant ones, and the still night air.
void crickets(LoopCanvas& c, Rng& rng) {
    const double sr = c.rate;
    const std::size_t n = c.frames;
    const double length = double(n) / sr;
    noiseBed(c, rng, {Filter::lowPass(300, 0.7, sr)}, 0.04f, 0.6f);
    auto cricket = [&](double carrier, double pan, double gain, double chirpPeriod, int pulses,
                       double pulseRate, LoopCanvas& into) {
        // Pitch, pace and presence wander slowly, each on its own.
        // At 100 values a second: they are only read once per chirp.
        const std::size_t slow = n / 480;
        const auto drift = fractalControl(rng, slow, 100, 40, 3, 0.5);
        const auto presence = fractalControl(rng, slow, 100, 35, 3, 0.5);
        double t = uniform(rng, 0, chirpPeriod);
        while (t < length) {
            const auto i = std::size_t(t * 100) % slow;
            const double d = drift[i];
            const double here = std::clamp(0.5 + 0.9 * presence[i], 0.0, 1.0);
            const double f = carrier * (1 + 0.04 * d);
            const double rate = pulseRate * (1 + 0.1 * d);
            if (here > 0.02)
                for (int p = 0; p < pulses; ++p)
                    addNote(
                        into, std::int64_t((t + p / rate) * sr), 0.55 / rate,
                        gain * here * (p == 0 ? 0.7 : 1.0), pan,
                        [=](double u) { return f * (1.01 - 0.02 * u); }, 0.1);
            t += chirpPeriod * (1 + 0.18 * d) * uniform(rng, 0.97, 1.03);
        }
    };
    for (int k = 0; k < 6; ++k)
        cricket(uniform(rng, 4100, 5100), uniform(rng, -0.85, 0.85), uniform(rng, 0.07, 0.2),
                uniform(rng, 0.45, 1.1), std::uniform_int_distribution<int>(3, 5)(rng),
                uniform(rng, 25, 36), c);
    LoopCanvas far = c.blank();
    for (int k = 0; k < 18; ++k)
        cricket(uniform(rng, 3900, 5300), uniform(rng, -1, 1), uniform(rng, 0.02, 0.05),
                uniform(rng, 0.4, 1.2), std::uniform_int_distribution<int>(2, 5)(rng),
                uniform(rng, 24, 40), far);
    mixFiltered(c, std::move(far), {Filter::lowPass(6000, 0.7, sr)}, 1.0f);
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
            Rng rng(0x5eed0100u + unsigned(k));
            recipes[k].second(canvas, rng);
            return true;
        }
    return false;
}

} // namespace ambientgen

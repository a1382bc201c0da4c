#include "LoopAnalysis.h"

#include "LoopCanvas.h"
#include "Spectrum.h"

#include <sndfile.h>

#include <algorithm>
#include <cmath>

namespace quill::loops {

Recording load(const QString& path) {
    Recording r;
    SF_INFO info{};
    SNDFILE* f = sf_open(path.toLocal8Bit().constData(), SFM_READ, &info);
    if (!f)
        return r;
    r.rate = info.samplerate;
    r.channels = info.channels;
    std::vector<float> all(std::size_t(info.frames) * std::size_t(info.channels));
    const sf_count_t got = sf_readf_float(f, all.data(), info.frames);
    sf_close(f);
    r.left.resize(std::size_t(std::max<sf_count_t>(got, 0)));
    r.right.resize(r.left.size());
    const std::size_t second = info.channels > 1 ? 1 : 0;
    for (std::size_t i = 0; i < r.left.size(); ++i) {
        r.left[i] = all[i * std::size_t(info.channels)];
        r.right[i] = all[i * std::size_t(info.channels) + second];
    }
    return r;
}

std::vector<float> band(const std::vector<float>& x, double lo, double hi, double rate) {
    using ambientgen::Filter;
    std::vector<Filter> chain{Filter::highPass(lo, 0.707, rate), Filter::highPass(lo, 0.707, rate),
                              Filter::lowPass(hi, 0.707, rate), Filter::lowPass(hi, 0.707, rate)};
    std::vector<float> y(x.size());
    for (std::size_t i = 0; i < x.size(); ++i) {
        double v = x[i];
        for (auto& f : chain)
            v = f.process(v);
        y[i] = float(v);
    }
    return y;
}

double excessKurtosis(const std::vector<float>& x) {
    double mean = 0;
    for (float v : x)
        mean += v;
    mean /= double(x.size());
    double m2 = 0, m4 = 0;
    for (float v : x) {
        const double d = v - mean, d2 = d * d;
        m2 += d2;
        m4 += d2 * d2;
    }
    m2 /= double(x.size());
    m4 /= double(x.size());
    return m4 / (m2 * m2) - 3.0;
}

double impulsesPerSecond(const std::vector<float>& x, double rate) {
    // The local level is the RMS of the surrounding 200 ms; an impulse is a peak four times
    // above it.
    const auto window = std::size_t(0.1 * rate);
    std::vector<double> sq(x.size() + 1, 0.0);
    for (std::size_t i = 0; i < x.size(); ++i)
        sq[i + 1] = sq[i] + double(x[i]) * x[i];
    const auto refractory = std::size_t(0.015 * rate);
    std::size_t count = 0, last = 0;
    bool any = false;
    for (std::size_t i = window; i + window < x.size(); ++i) {
        const double local = std::sqrt((sq[i + window] - sq[i - window]) / double(2 * window));
        if (std::fabs(x[i]) > 4 * local && (!any || i - last > refractory)) {
            ++count;
            last = i;
            any = true;
        }
    }
    return double(count) * rate / double(x.size());
}

std::vector<double> envelope(const std::vector<float>& x, double rate, double frameSeconds) {
    const auto frame = std::size_t(frameSeconds * rate);
    std::vector<double> env;
    for (std::size_t from = 0; from + frame <= x.size(); from += frame) {
        double s = 0;
        for (std::size_t i = from; i < from + frame; ++i)
            s += double(x[i]) * x[i];
        env.push_back(std::sqrt(s / double(frame)));
    }
    return env;
}

std::vector<double> swellRiseTimes(const std::vector<double>& env, double frameSeconds) {
    const auto reach = std::size_t(3.0 / frameSeconds);
    std::vector<double> rises;
    for (std::size_t i = reach; i + reach < env.size(); ++i) {
        const auto from = env.begin() + long(i - reach), to = env.begin() + long(i + reach + 1);
        if (env[i] < *std::max_element(from, to))
            continue; // not the top of its neighbourhood
        const auto low = std::min_element(from, env.begin() + long(i));
        if (env[i] < 2 * *low)
            continue;
        const double floor = *low, span = env[i] - floor;
        std::size_t k = i;
        while (k > std::size_t(low - env.begin()) && env[k] > floor + 0.9 * span)
            --k;
        const std::size_t t90 = k + 1;
        while (k > std::size_t(low - env.begin()) && env[k] > floor + 0.1 * span)
            --k;
        rises.push_back(double(t90 - k) * frameSeconds);
    }
    return rises;
}

double strongestToneDb(const std::vector<float>& x, double rate, double lo, double hi) {
    constexpr std::size_t kSize = 8192;
    const auto p = ambientgen::averageSpectrum(x, kSize);
    const double hz = rate / double(kSize);
    const auto reach = std::size_t(250 / hz);
    double worst = -1e9;
    for (auto k = std::size_t(lo / hz); k <= std::size_t(hi / hz) && k + reach < p.size(); ++k) {
        std::vector<double> around(p.begin() + long(k - reach), p.begin() + long(k + reach + 1));
        std::nth_element(around.begin(), around.begin() + long(around.size() / 2), around.end());
        worst = std::max(worst, 10 * std::log10(p[k] / (around[around.size() / 2] + 1e-30)));
    }
    return worst;
}

double strongestRecurrence(const std::vector<double>& env, double frameSeconds, double minLag) {
    std::vector<double> db(env.size());
    for (std::size_t i = 0; i < env.size(); ++i)
        db[i] = 20 * std::log10(env[i] + 1e-9);
    // Only the changes faster than the lag count: a slow swell is not a pattern coming back.
    const auto half = std::size_t(minLag / frameSeconds / 2);
    std::vector<double> detail(db.size());
    for (std::size_t i = 0; i < db.size(); ++i) {
        double s = 0;
        for (std::size_t k = 0; k <= 2 * half; ++k)
            s += db[(i + db.size() + k - half) % db.size()];
        detail[i] = db[i] - s / double(2 * half + 1);
    }
    db = std::move(detail);
    double energy = 0;
    for (double v : db)
        energy += v * v;
    double best = -1;
    // Circular: the recording loops, so a lag wraps round it.
    for (auto lag = std::size_t(minLag / frameSeconds); lag <= db.size() / 2; ++lag) {
        double s = 0;
        for (std::size_t i = 0; i < db.size(); ++i)
            s += db[i] * db[(i + lag) % db.size()];
        best = std::max(best, s / energy);
    }
    return best;
}

} // namespace quill::loops

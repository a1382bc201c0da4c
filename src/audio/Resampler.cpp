#include "audio/Resampler.h"

#include "audio/KaiserSinc.h"

#include <algorithm>
#include <cmath>
#include <cstring>
#include <numeric>

namespace quill {

namespace {
constexpr double kBeta = 7.5; // Kaiser window: side lobes near -75 dB

// Four lanes on every target we build for (SSE on x86-64, NEON on ARM), written once.
using Lanes = float __attribute__((vector_size(16)));

inline Lanes load(const float* p) {
    Lanes v;
    std::memcpy(&v, p, sizeof v);
    return v;
}

/// Left and right of the window dotted with a row whose taps are each stored twice.
inline void dot(const float* history, const float* row, float& left, float& right) {
    Lanes a{}, b{};
    for (int i = 0; i < 2 * Resampler::kTaps; i += 8) {
        a += load(history + i) * load(row + i);
        b += load(history + i + 4) * load(row + i + 4);
    }
    const Lanes s = a + b;
    left = s[0] + s[2];
    right = s[1] + s[3];
}

bool isWhole(double rate) {
    return rate > 0 && rate < 1e7 && rate == std::floor(rate);
}
} // namespace

Resampler::Resampler() {
    reset();
}

void Resampler::setRates(double sourceRate, double outputRate) {
    if (!(sourceRate > 0) || !(outputRate > 0))
        return;
    const double step = sourceRate / outputRate;
    int num = 0, den = 0;
    if (isWhole(sourceRate) && isWhole(outputRate)) {
        const auto g = std::gcd(long(sourceRate), long(outputRate));
        if (long(outputRate) / g <= kMaxExactPhases) {
            num = int(long(sourceRate) / g);
            den = int(long(outputRate) / g);
        }
    }
    if (step == m_step && num == m_num && den == m_den)
        return;
    m_step = step;
    m_num = num;
    m_den = den;
    if (!passesThrough())
        design(den > 0 ? den : kPhases + 1);
    reset();
}

void Resampler::fillRow(float* row, double frac) const {
    const KaiserSinc kernel(m_cutoff, kTaps / 2.0, kBeta);
    double taps[kTaps];
    double sum = 0;
    for (int j = 0; j < kTaps; ++j) {
        taps[j] = kernel(j - kTaps / 2.0 + 1 - frac); // tap j's distance from the output instant
        sum += taps[j];
    }
    // Unity gain at DC in every phase, so a steady level does not ripple.
    for (int j = 0; j < kTaps; ++j)
        row[2 * j] = row[2 * j + 1] = float(taps[j] / sum);
}

void Resampler::design(int rows) {
    // The pass band ends a little under the lower Nyquist frequency, so the transition band
    // (about 4.5 kHz wide at 48 kHz) lies mostly above what anyone hears.
    m_cutoff = 0.5 * std::min(1.0, 1.0 / m_step) * 0.91;
    m_table.assign(std::size_t(rows) * 2 * kTaps, 0.0f);
    const int positions = m_den > 0 ? m_den : kPhases;
    for (int p = 0; p < rows; ++p)
        fillRow(m_table.data() + std::size_t(p) * 2 * kTaps, double(p) / positions);
}

void Resampler::reset() {
    std::fill(std::begin(m_history), std::end(m_history), 0.0f);
    m_write = 0;
    m_phase = 0;
    m_frac = 0.0;
    // The first output lines up with the first source frame, which must then sit in the
    // middle of the kernel.
    m_needed = passesThrough() ? 1 : kTaps / 2 + 1;
}

void Resampler::next(float& left, float& right) {
    const float* window = m_history + 2 * m_write; // oldest frame first
    if (passesThrough()) {
        left = window[2 * kTaps - 2];
        right = window[2 * kTaps - 1];
        m_needed = 1;
        return;
    }
    if (m_den > 0) {
        dot(window, m_table.data() + std::size_t(m_phase) * 2 * kTaps, left, right);
        m_phase += m_num;
        m_needed = m_phase / m_den;
        m_phase %= m_den;
        return;
    }
    const double position = m_frac * kPhases;
    const int p = std::min(kPhases - 1, int(position));
    const Lanes t = Lanes{} + float(position - p);
    const float* a = m_table.data() + std::size_t(p) * 2 * kTaps;
    const float* b = a + 2 * kTaps;
    for (int j = 0; j < 2 * kTaps; j += 4) {
        const Lanes row = load(a + j) + (load(b + j) - load(a + j)) * t;
        std::memcpy(m_kernel + j, &row, sizeof row);
    }
    dot(window, m_kernel, left, right);
    m_frac += m_step;
    const double whole = std::floor(m_frac);
    m_frac -= whole;
    m_needed = int(whole);
}

} // namespace quill

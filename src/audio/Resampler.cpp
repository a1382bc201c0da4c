#include "audio/Resampler.h"

#include <algorithm>
#include <cmath>

namespace quill {

namespace {
constexpr double kPi = 3.14159265358979323846;
constexpr double kBeta = 7.5; // Kaiser window: side lobes near -75 dB

double besselI0(double x) {
    double sum = 1, term = 1;
    for (int k = 1; k < 40; ++k) {
        term *= (x / (2 * k)) * (x / (2 * k));
        sum += term;
        if (term < sum * 1e-16)
            break;
    }
    return sum;
}
} // namespace

Resampler::Resampler() {
    reset();
}

void Resampler::setStep(double step) {
    if (!(step > 0) || step == m_step)
        return;
    m_step = step;
    if (!passesThrough())
        design();
    reset();
}

void Resampler::design() {
    // The pass band ends a little under the lower Nyquist frequency, so the transition band
    // (about 4.5 kHz wide at 48 kHz) lies mostly above what anyone hears.
    const double cutoff = 0.5 * std::min(1.0, 1.0 / m_step) * 0.91;
    const double half = kTaps / 2.0;
    m_table.assign(std::size_t(kPhases + 1) * kTaps, 0.0f);
    for (int p = 0; p <= kPhases; ++p) {
        const double frac = double(p) / kPhases;
        double sum = 0;
        std::array<double, kTaps> row{};
        for (int j = 0; j < kTaps; ++j) {
            const double d = j - half + 1 - frac; // distance of tap j from the output instant
            const double x = 2 * cutoff * d;
            const double sinc = d == 0 ? 1.0 : std::sin(kPi * x) / (kPi * x);
            const double u = d / half;
            const double window =
                std::fabs(u) >= 1 ? 0.0 : besselI0(kBeta * std::sqrt(1 - u * u)) / besselI0(kBeta);
            row[std::size_t(j)] = sinc * window;
            sum += row[std::size_t(j)];
        }
        // Unity gain at DC in every phase, so a steady level does not ripple.
        for (int j = 0; j < kTaps; ++j)
            m_table[std::size_t(p * kTaps + j)] = float(row[std::size_t(j)] / sum);
    }
}

void Resampler::reset() {
    m_left.fill(0.0f);
    m_right.fill(0.0f);
    m_write = 0;
    m_frac = 0.0;
    // The first output lines up with the first source frame, which must then sit in the
    // middle of the kernel.
    m_needed = passesThrough() ? 1 : kTaps / 2 + 1;
}

void Resampler::push(float left, float right) {
    m_left[std::size_t(m_write)] = m_left[std::size_t(m_write + kTaps)] = left;
    m_right[std::size_t(m_write)] = m_right[std::size_t(m_write + kTaps)] = right;
    m_write = (m_write + 1) % kTaps;
    --m_needed;
}

void Resampler::next(float& left, float& right) {
    if (passesThrough()) {
        const std::size_t newest = std::size_t((m_write + kTaps - 1) % kTaps);
        left = m_left[newest];
        right = m_right[newest];
        m_needed = 1;
        return;
    }
    const double position = m_frac * kPhases;
    const int p = std::min(kPhases - 1, int(position));
    const float t = float(position - p);
    const float* a = m_table.data() + std::size_t(p) * kTaps;
    const float* b = a + kTaps;
    for (int j = 0; j < kTaps; ++j)
        m_kernel[std::size_t(j)] = a[j] + (b[j] - a[j]) * t;
    const float* l = m_left.data() + m_write; // oldest frame first
    const float* r = m_right.data() + m_write;
    float sl = 0, sr = 0;
    for (int j = 0; j < kTaps; ++j) {
        sl += m_kernel[std::size_t(j)] * l[j];
        sr += m_kernel[std::size_t(j)] * r[j];
    }
    left = sl;
    right = sr;
    m_frac += m_step;
    const double whole = std::floor(m_frac);
    m_frac -= whole;
    m_needed = int(whole);
}

} // namespace quill

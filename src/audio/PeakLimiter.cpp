#include "audio/PeakLimiter.h"

#include <algorithm>
#include <cmath>

namespace quill {

void PeakLimiter::setSampleRate(double sampleRate) {
    const double rate = sampleRate > 0 ? sampleRate : 48000.0;
    m_release = float(1.0 - std::exp(-1.0 / (rate * 0.05))); // 50 ms release
    m_gain = 1.0f;
}

void PeakLimiter::process(float* left, float* right, int frames) {
    float gain = m_gain;
    for (int i = 0; i < frames; ++i) {
        const float l = std::fabs(left[i]), r = std::fabs(right[i]);
        if (!(l <= 1e30f && r <= 1e30f)) {
            // A broken recording (NaN or infinity) must never reach the speakers.
            left[i] = right[i] = 0.0f;
            continue;
        }
        const float peak = std::max(l, r);
        const float wanted = peak > kThreshold ? kThreshold / peak : 1.0f;
        if (wanted < gain)
            gain = wanted;
        else if (gain < 1.0f)
            gain = std::min(1.0f, gain + (wanted - gain) * m_release + 1e-7f);
        left[i] *= gain;
        right[i] *= gain;
    }
    m_gain = gain;
}

} // namespace quill

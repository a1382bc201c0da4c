#pragma once

namespace quill {

/// A peak limiter at the end of the mix: instant attack, smooth release, transparent (gain
/// exactly 1) while the signal stays below the threshold, so stacked sources never clip.
class PeakLimiter {
public:
    static constexpr float kThreshold = 0.891f; // -1 dBFS

    void setSampleRate(double sampleRate);
    /// Limits the two channels in place.
    void process(float* left, float* right, int frames);
    float currentGain() const { return m_gain; }

private:
    float m_gain = 1.0f;
    float m_release = 0.0005f;
};

} // namespace quill

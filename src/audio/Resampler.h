#pragma once

#include <vector>

namespace quill {

/// Converts a stereo stream from one sample rate to another without audible images: a
/// Kaiser-windowed sinc of kTaps taps, band-limited to just under the lower of the two
/// Nyquist frequencies. Between two whole rates whose ratio reduces to at most
/// kMaxExactPhases output positions per source frame (every pair of common rates), each
/// position has its own row of taps; otherwise kPhases rows are interpolated. At equal rates
/// it passes samples straight through.
///
/// Feed it source frames while needsInput() says so, then take one output frame with next().
/// Not thread-safe; it allocates only in setRates() when the ratio changes.
class Resampler {
public:
    static constexpr int kTaps = 48;
    static constexpr int kPhases = 256;
    static constexpr int kMaxExactPhases = 1024;

    Resampler();

    void setRates(double sourceRate, double outputRate);
    /// Source frames per output frame.
    double step() const { return m_step; }
    bool passesThrough() const { return m_step == 1.0; }
    /// Forgets the stream: the next frame pushed starts a new one.
    void reset();

    bool needsInput() const { return m_needed > 0; }
    void push(float left, float right) {
        float* h = m_history + 2 * m_write;
        h[0] = h[2 * kTaps] = left;
        h[1] = h[2 * kTaps + 1] = right;
        if (++m_write == kTaps)
            m_write = 0;
        --m_needed;
    }
    /// The next output frame; only valid when needsInput() is false.
    void next(float& left, float& right);

private:
    void design(int rows);
    void fillRow(float* row, double frac) const;

    double m_step = 1.0;
    double m_cutoff = 0.5;
    // Exact ratio: the output position is m_phase / m_den source frames past the newest
    // whole frame, advanced by m_num per output frame.
    int m_num = 0, m_den = 0, m_phase = 0;
    double m_frac = 0.0; // otherwise
    int m_needed = 1;
    int m_write = 0;
    // Interleaved left/right, each frame stored twice so a window never wraps.
    alignas(16) float m_history[4 * kTaps] = {};
    alignas(16) float m_kernel[2 * kTaps] = {}; // interpolated row, each tap twice
    std::vector<float> m_table;                 // rows of 2 * kTaps, each tap twice
};

} // namespace quill

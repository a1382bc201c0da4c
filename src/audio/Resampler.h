#pragma once

#include <array>
#include <vector>

namespace quill {

/// Converts a stereo stream from one sample rate to another without audible images: a
/// Kaiser-windowed sinc of kTaps taps, band-limited to just under the lower of the two
/// Nyquist frequencies, tabulated at kPhases fractional positions and interpolated between
/// them. At equal rates it passes samples straight through.
///
/// Feed it source frames while needsInput() says so, then take one output frame with next().
/// Not thread-safe; it allocates only in setStep() when the ratio changes.
class Resampler {
public:
    static constexpr int kTaps = 48;
    static constexpr int kPhases = 256;

    Resampler();

    /// Source frames per output frame (source rate / output rate).
    void setStep(double step);
    double step() const { return m_step; }
    bool passesThrough() const { return m_step == 1.0; }
    /// Forgets the stream: the next frame pushed starts a new one.
    void reset();

    bool needsInput() const { return m_needed > 0; }
    void push(float left, float right);
    /// The next output frame; only valid when needsInput() is false.
    void next(float& left, float& right);

private:
    void design();

    double m_step = 1.0;
    double m_frac = 0.0;
    int m_needed = 1;
    int m_write = 0;
    std::array<float, 2 * kTaps> m_left{}, m_right{}; // each frame stored twice: no wrap
    std::vector<float> m_table;                       // (kPhases + 1) rows of kTaps
    std::array<float, kTaps> m_kernel{};
};

} // namespace quill

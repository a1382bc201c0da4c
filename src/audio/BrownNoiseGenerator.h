#pragma once

#include <atomic>
#include <cstdint>

namespace quill {

/// The synthesised brown noise: a deep two-channel noise bed whose loudness breathes slowly.
/// Rendering runs on the real-time audio thread and allocates nothing; the only datum shared
/// with the main thread is the level cell, read once per render call.
class BrownNoiseGenerator {
public:
    /// xorshift32, the single random source for everything the generator draws.
    struct NoiseSource {
        std::uint32_t state = 1;
        std::uint32_t advance() {
            state ^= state << 13;
            state ^= state >> 17;
            state ^= state << 5;
            return state;
        }
        /// [0, 1 - 2^-24]
        float nextUnit() { return float(advance() >> 8) * 0x1p-24f; }
        /// [-1, 1)
        float nextBipolar() { return float(static_cast<std::int32_t>(advance())) * 0x1p-31f; }
    };

    /// One-pole integrator with unity gain at DC.
    struct BrownNoise {
        float last = 0.0f;
        float step(float white) {
            last = (last + 0.02f * white) / 1.02f;
            return last;
        }
    };

    /// Transposed direct form II section with a0 divided out.
    struct Biquad {
        float b0 = 1.0f, b1 = 0.0f, b2 = 0.0f, a1 = 0.0f, a2 = 0.0f;
        float z1 = 0.0f, z2 = 0.0f;
        float process(float x) {
            const float y = b0 * x + z1;
            z1 = b1 * x - a1 * y + z2;
            z2 = b2 * x - a2 * y;
            return y;
        }
        static Biquad highPass(float cutoff, float sampleRate, float divisor);
        static Biquad lowPass(float cutoff, float sampleRate, float divisor);
    };

    /// A slowly wandering value: random targets held for a random time, approached through
    /// two cascaded one-pole smoothers.
    struct Drift {
        float value = 0.0f, intermediate = 0.0f, target = 0.0f;
        std::int64_t countdown = 0;
        float lower = 0.0f, upper = 1.0f, minimumHold = 0.0f, maximumHold = 0.0f;
        float coefficient = 0.0f;
        float next(NoiseSource& noise);
    };

    /// Seeds itself from the system random generator (never 0).
    BrownNoiseGenerator(float sampleRate, const std::atomic<float>* level);
    /// A fixed seed for reproducible output; 0 is replaced by 1.
    BrownNoiseGenerator(float sampleRate, const std::atomic<float>* level, std::uint32_t seed);

    /// Writes frames samples into each of the two non-interleaved buffers.
    void render(float* left, float* right, std::int64_t frames);

    float gain() const { return m_gain; }
    float gainCoefficient() const { return m_gainCoefficient; }
    std::uint32_t randomState() const { return m_noise.state; }
    const Biquad& highpass() const { return m_highpassLeft; }
    const Biquad& lowpass() const { return m_lowpassLeft; }
    const Drift& breath() const { return m_breath; }

    /// A uniform seed in 1 … 2^32 - 1 from the system generator.
    static std::uint32_t systemSeed();

private:
    const std::atomic<float>* m_level;
    float m_gainCoefficient = 0.0f;
    float m_gain = 0.0f;
    NoiseSource m_noise;
    BrownNoise m_shared, m_sideLeft, m_sideRight;
    Biquad m_highpassLeft, m_highpassRight, m_lowpassLeft, m_lowpassRight;
    Drift m_breath;
};

} // namespace quill

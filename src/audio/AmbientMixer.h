#pragma once

#include "audio/AudioRenderer.h"
#include "audio/PeakLimiter.h"
#include "audio/Resampler.h"

#include <array>
#include <atomic>

namespace quill {

class BrownNoiseGenerator;
class LoopVoice;

/// The ambient mixing graph rendered on the audio thread: looping voices summed at the rate of
/// the recordings and converted to the output's rate once, as one stream, plus the brown-noise
/// source made at the output's rate; the sum at the ramped master level, then the peak limiter.
/// Sources are published through atomic pointers; they are only taken away while the device
/// is stopped, so the audio thread never waits for the main thread.
class AmbientMixer final : public AudioRenderer {
public:
    static constexpr int kVoiceSlots = 8;
    static constexpr int kBlockFrames = 512;

    AmbientMixer();

    // Main thread.
    /// The output's rate; only while the device is stopped. Forgets the loops' last block.
    void setSampleRate(double sampleRate);
    /// The rate the voices' chunks are made at; only while the device is stopped.
    void setLoopRate(double loopRate);
    void attachVoice(int slot, LoopVoice* voice);
    void attachNoise(BrownNoiseGenerator* generator);
    /// Only while the device is stopped.
    void detachNoise();
    void setMasterVolume(float volume) { m_master.store(volume, std::memory_order_relaxed); }
    float masterVolume() const { return m_master.load(std::memory_order_relaxed); }

    // Audio thread.
    void render(float* interleaved, int frames) override;

private:
    void renderBlock(float* interleaved, int frames);
    void mixLoops(int frames);
    void mixLoopBlock();

    std::array<std::atomic<LoopVoice*>, kVoiceSlots> m_voices;
    std::atomic<BrownNoiseGenerator*> m_noise{nullptr};
    std::atomic<float> m_master{0.0f};

    double m_sampleRate = 48000.0;
    double m_loopRate = 48000.0;

    // Audio-thread state.
    static constexpr int kLoopBlockFrames = 256;
    float m_renderMaster = 0.0f;
    Resampler m_loopResampler;
    int m_loopPos = kLoopBlockFrames; // next frame of the loops' block; all used up
    alignas(32) float m_loopLeft[kLoopBlockFrames];
    alignas(32) float m_loopRight[kLoopBlockFrames];
    PeakLimiter m_limiter;
    alignas(32) float m_left[kBlockFrames];
    alignas(32) float m_right[kBlockFrames];
    alignas(32) float m_noiseLeft[kBlockFrames];
    alignas(32) float m_noiseRight[kBlockFrames];
};

} // namespace quill

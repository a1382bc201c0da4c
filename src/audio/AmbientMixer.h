#pragma once

#include "audio/AudioRenderer.h"
#include "audio/PeakLimiter.h"

#include <array>
#include <atomic>

namespace quill {

class BrownNoiseGenerator;
class LoopVoice;

/// The ambient mixing graph rendered on the audio thread: looping voices and the brown-noise
/// source summed on a bus, the bus at the ramped master level, then the peak limiter.
/// Sources are published through atomic pointers; they are only taken away while the device
/// is stopped, so the audio thread never waits for the main thread.
class AmbientMixer final : public AudioRenderer {
public:
    static constexpr int kVoiceSlots = 8;
    static constexpr int kBlockFrames = 512;

    AmbientMixer();

    // Main thread.
    /// Only while the device is stopped.
    void setSampleRate(double sampleRate);
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

    std::array<std::atomic<LoopVoice*>, kVoiceSlots> m_voices;
    std::atomic<BrownNoiseGenerator*> m_noise{nullptr};
    std::atomic<float> m_master{0.0f};

    // Audio-thread state.
    float m_renderMaster = 0.0f;
    PeakLimiter m_limiter;
    alignas(32) float m_left[kBlockFrames];
    alignas(32) float m_right[kBlockFrames];
    alignas(32) float m_noiseLeft[kBlockFrames];
    alignas(32) float m_noiseRight[kBlockFrames];
};

} // namespace quill

#pragma once

#include "audio/AudioRenderer.h"

#include <atomic>
#include <cstdint>
#include <memory>
#include <vector>

namespace quill {

/// Renders the named cue sounds: one slot per sound, so different cues overlap while a new
/// trigger of the same cue cuts the old one off and starts it from the beginning.
/// Triggers are atomic counters; the audio thread never waits for the main thread.
class CueMixer final : public AudioRenderer {
public:
    /// The clips stay fixed for the mixer's life.
    explicit CueMixer(std::vector<std::vector<float>> clips);
    /// Empty slots, filled with setClip() before any device renders.
    explicit CueMixer(int slots);

    /// Only while no device renders this mixer.
    void setClip(int slot, std::vector<float> clip);
    int slotCount() const { return int(m_slots.size()); }
    /// Any thread.
    void trigger(int slot);
    /// Forgets triggers that were never heard; only while no device renders.
    void discardPending();
    /// Audio thread.
    void render(float* interleaved, int frames) override;

private:
    struct Slot {
        std::vector<float> clip;
        std::atomic<std::uint32_t> triggers{0};
        std::uint32_t heard = 0;
        std::size_t position = 0;
        bool active = false;
    };
    std::vector<std::unique_ptr<Slot>> m_slots;
};

} // namespace quill

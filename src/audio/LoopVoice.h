#pragma once

#include "audio/SpscRing.h"

#include <atomic>
#include <cstdint>
#include <memory>

namespace quill {

/// The real-time half of a looping recording: a queue of segments for the decoder, a ring of
/// decoded stereo chunks for the audio thread, and notices of consumed segments for the main
/// thread. Every segment and chunk carries the generation it was made for; a stop bumps the
/// generation, so queued material of an older one is dropped without waiting on anything.
class LoopVoice {
public:
    static constexpr int kChunkFrames = 1024;
    static constexpr std::size_t kChunkCount = 64; // about 2 s at 32 kHz

    struct Segment {
        std::int64_t startFrame = 0;
        std::int64_t frameCount = 0;
        std::int64_t generation = 0;
    };

    struct Chunk {
        std::int64_t generation = 0;
        int frames = 0;
        bool endsSegment = false;
        float samples[kChunkFrames * 2];
    };

    LoopVoice();

    // Main thread.
    void setVolume(float volume) { m_volume.store(volume, std::memory_order_relaxed); }
    float volume() const { return m_volume.load(std::memory_order_relaxed); }
    /// Makes generation current; everything queued for another one is dropped.
    void setGeneration(std::int64_t generation) {
        m_generation.store(generation, std::memory_order_release);
    }
    /// Queues a segment after what is already queued; false when the queue is full.
    bool queueSegment(const Segment& segment) { return m_segments.push(segment); }
    /// The generation of the next consumed (or flushed) segment, if any.
    bool takeConsumed(std::int64_t& generation) { return m_consumed.pop(generation); }

    // Decoder thread.
    std::int64_t generation() const { return m_generation.load(std::memory_order_acquire); }
    bool takeSegment(Segment& segment) { return m_segments.pop(segment); }
    /// A free chunk to fill, or null when the ring is full.
    Chunk* beginChunk();
    void commitChunk();

    // Audio thread.
    /// Adds this voice, at its volume, to the two channel buffers.
    void mixInto(float* left, float* right, int frames);

private:
    std::atomic<float> m_volume{0.0f};
    std::atomic<std::int64_t> m_generation{0};
    SpscRing<Segment, 16> m_segments;
    SpscRing<std::int64_t, 32> m_consumed;

    std::unique_ptr<Chunk[]> m_chunks;
    alignas(64) std::atomic<std::size_t> m_chunkWrite{0};
    alignas(64) std::atomic<std::size_t> m_chunkRead{0};

    // Audio-thread state.
    int m_offset = 0;
    float m_renderVolume = 0.0f;
    std::int64_t m_renderGeneration = -1;
};

} // namespace quill

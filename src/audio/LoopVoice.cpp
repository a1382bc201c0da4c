#include "audio/LoopVoice.h"

#include <algorithm>

namespace quill {

LoopVoice::LoopVoice() : m_chunks(std::make_unique<Chunk[]>(kChunkCount)) {}

LoopVoice::Chunk* LoopVoice::beginChunk() {
    const std::size_t w = m_chunkWrite.load(std::memory_order_relaxed);
    if (w - m_chunkRead.load(std::memory_order_acquire) == kChunkCount)
        return nullptr;
    return &m_chunks[w & (kChunkCount - 1)];
}

void LoopVoice::commitChunk() {
    m_chunkWrite.store(m_chunkWrite.load(std::memory_order_relaxed) + 1, std::memory_order_release);
}

void LoopVoice::mixInto(float* left, float* right, int frames) {
    const std::int64_t generation = m_generation.load(std::memory_order_acquire);
    const float target = m_volume.load(std::memory_order_relaxed);
    if (generation != m_renderGeneration) {
        // A fresh start begins at its own volume, not where the previous pass left off.
        m_renderGeneration = generation;
        m_renderVolume = target;
    }
    // The main thread moves the volume 60 times a second; gliding across each buffer keeps
    // those steps from being heard as zipper noise.
    const float start = m_renderVolume;
    const float slope = frames > 0 ? (target - start) / float(frames) : 0.0f;

    int done = 0;
    std::size_t read = m_chunkRead.load(std::memory_order_relaxed);
    while (done < frames) {
        if (read == m_chunkWrite.load(std::memory_order_acquire))
            break; // nothing decoded yet: silence for the rest of this buffer
        const Chunk& chunk = m_chunks[read & (kChunkCount - 1)];
        if (chunk.generation != generation) {
            if (chunk.endsSegment)
                m_consumed.push(chunk.generation);
            m_offset = 0;
            m_chunkRead.store(++read, std::memory_order_release);
            continue;
        }
        const int n = std::min(chunk.frames - m_offset, frames - done);
        const float* src = chunk.samples + 2 * m_offset;
        if (slope == 0.0f) {
            for (int i = 0; i < n; ++i) {
                left[done + i] += src[2 * i] * start;
                right[done + i] += src[2 * i + 1] * start;
            }
        } else {
            for (int i = 0; i < n; ++i) {
                const float g = start + slope * float(done + i);
                left[done + i] += src[2 * i] * g;
                right[done + i] += src[2 * i + 1] * g;
            }
        }
        m_offset += n;
        done += n;
        if (m_offset >= chunk.frames) {
            if (chunk.endsSegment)
                m_consumed.push(generation);
            m_offset = 0;
            m_chunkRead.store(++read, std::memory_order_release);
        }
    }
    m_renderVolume = target;
}

} // namespace quill

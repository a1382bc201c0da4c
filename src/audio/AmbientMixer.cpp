#include "audio/AmbientMixer.h"

#include "audio/BrownNoiseGenerator.h"
#include "audio/LoopVoice.h"

#include <algorithm>

namespace quill {

AmbientMixer::AmbientMixer() {
    for (auto& v : m_voices)
        v.store(nullptr, std::memory_order_relaxed);
    m_limiter.setSampleRate(48000.0);
}

void AmbientMixer::setSampleRate(double sampleRate) {
    m_sampleRate = sampleRate;
    m_limiter.setSampleRate(sampleRate);
    m_loopResampler.setRates(m_loopRate, m_sampleRate);
    m_loopResampler.reset();
    m_loopPos = kLoopBlockFrames;
}

void AmbientMixer::setLoopRate(double loopRate) {
    m_loopRate = loopRate;
    setSampleRate(m_sampleRate);
}

void AmbientMixer::attachVoice(int slot, LoopVoice* voice) {
    if (slot >= 0 && slot < kVoiceSlots)
        m_voices[std::size_t(slot)].store(voice, std::memory_order_release);
}

void AmbientMixer::attachNoise(BrownNoiseGenerator* generator) {
    m_noise.store(generator, std::memory_order_release);
}

void AmbientMixer::detachNoise() {
    m_noise.store(nullptr, std::memory_order_release);
}

void AmbientMixer::render(float* interleaved, int frames) {
    while (frames > 0) {
        const int n = std::min(frames, kBlockFrames);
        renderBlock(interleaved, n);
        interleaved += 2 * n;
        frames -= n;
    }
}

void AmbientMixer::mixLoops(int frames) {
    if (m_loopResampler.passesThrough()) {
        for (auto& slot : m_voices)
            if (LoopVoice* voice = slot.load(std::memory_order_acquire))
                voice->mixInto(m_left, m_right, frames);
        return;
    }
    // Nothing was ever attached (brown noise alone): no conversion to pay for.
    if (std::none_of(m_voices.begin(), m_voices.end(),
                     [](const auto& slot) { return slot.load(std::memory_order_relaxed); }))
        return;
    for (int i = 0; i < frames; ++i) {
        while (m_loopResampler.needsInput()) {
            if (m_loopPos == kLoopBlockFrames)
                mixLoopBlock();
            m_loopResampler.push(m_loopLeft[m_loopPos], m_loopRight[m_loopPos]);
            ++m_loopPos;
        }
        float l, r;
        m_loopResampler.next(l, r);
        m_left[i] += l;
        m_right[i] += r;
    }
}

void AmbientMixer::mixLoopBlock() {
    std::fill(std::begin(m_loopLeft), std::end(m_loopLeft), 0.0f);
    std::fill(std::begin(m_loopRight), std::end(m_loopRight), 0.0f);
    for (auto& slot : m_voices)
        if (LoopVoice* voice = slot.load(std::memory_order_acquire))
            voice->mixInto(m_loopLeft, m_loopRight, kLoopBlockFrames);
    m_loopPos = 0;
}

void AmbientMixer::renderBlock(float* out, int frames) {
    std::fill(m_left, m_left + frames, 0.0f);
    std::fill(m_right, m_right + frames, 0.0f);

    if (BrownNoiseGenerator* noise = m_noise.load(std::memory_order_acquire)) {
        noise->render(m_noiseLeft, m_noiseRight, frames);
        for (int i = 0; i < frames; ++i) {
            m_left[i] += m_noiseLeft[i];
            m_right[i] += m_noiseRight[i];
        }
    }
    mixLoops(frames);

    // Glide from the last master level to the new one across the block.
    const float target = m_master.load(std::memory_order_relaxed);
    const float start = m_renderMaster;
    if (start == target) {
        for (int i = 0; i < frames; ++i) {
            m_left[i] *= target;
            m_right[i] *= target;
        }
    } else {
        const float slope = (target - start) / float(frames);
        for (int i = 0; i < frames; ++i) {
            const float g = start + slope * float(i + 1);
            m_left[i] *= g;
            m_right[i] *= g;
        }
    }
    m_renderMaster = target;

    m_limiter.process(m_left, m_right, frames);
    for (int i = 0; i < frames; ++i) {
        out[2 * i] = m_left[i];
        out[2 * i + 1] = m_right[i];
    }
}

} // namespace quill

#include "audio/BrownNoiseGenerator.h"

#include <QRandomGenerator>
#include <algorithm>
#include <cmath>

namespace quill {

namespace {
constexpr float kTwoPi = 6.283185f;

struct Design {
    float s, c, alpha, a0;
};

Design design(float cutoff, float sampleRate, float divisor) {
    const float w0 = cutoff * kTwoPi / sampleRate;
    const float s = std::sin(w0);
    const float c = std::cos(w0);
    const float alpha = s / divisor;
    return {s, c, alpha, 1.0f + alpha};
}
} // namespace

BrownNoiseGenerator::Biquad BrownNoiseGenerator::Biquad::highPass(float cutoff, float sampleRate,
                                                                  float divisor) {
    const Design d = design(cutoff, sampleRate, divisor);
    Biquad q;
    q.b0 = (1.0f + d.c) * 0.5f / d.a0;
    q.b1 = -(1.0f + d.c) / d.a0;
    q.b2 = q.b0;
    q.a1 = -2.0f * d.c / d.a0;
    q.a2 = (1.0f - d.alpha) / d.a0;
    return q;
}

BrownNoiseGenerator::Biquad BrownNoiseGenerator::Biquad::lowPass(float cutoff, float sampleRate,
                                                                 float divisor) {
    const Design d = design(cutoff, sampleRate, divisor);
    Biquad q;
    q.b0 = (1.0f - d.c) * 0.5f / d.a0;
    q.b1 = (1.0f - d.c) / d.a0;
    q.b2 = q.b0;
    q.a1 = -2.0f * d.c / d.a0;
    q.a2 = (1.0f - d.alpha) / d.a0;
    return q;
}

float BrownNoiseGenerator::Drift::next(NoiseSource& noise) {
    countdown -= 1;
    if (countdown <= 0) {
        target = lower + (upper - lower) * noise.nextUnit();
        countdown =
            static_cast<std::int64_t>(minimumHold + (maximumHold - minimumHold) * noise.nextUnit());
    }
    intermediate = intermediate + (target - intermediate) * coefficient;
    value = value + coefficient * (intermediate - value);
    return value;
}

std::uint32_t BrownNoiseGenerator::systemSeed() {
    return QRandomGenerator::system()->bounded(std::uint32_t(0xFFFFFFFFu)) + 1u;
}

BrownNoiseGenerator::BrownNoiseGenerator(float sampleRate, const std::atomic<float>* level)
    : BrownNoiseGenerator(sampleRate, level, systemSeed()) {}

BrownNoiseGenerator::BrownNoiseGenerator(float sampleRate, const std::atomic<float>* level,
                                         std::uint32_t seed)
    : m_level(level) {
    m_gain = 0.0f;
    m_noise.state = seed == 0 ? 1u : seed;
    m_shared.last = m_sideLeft.last = m_sideRight.last = 0.0f;
    m_gainCoefficient = 1.0f - std::exp(-1.0f / (sampleRate * 0.3f));

    const float highCut = std::min(0.45f * sampleRate, 30.0f);
    const float lowCut = std::min(0.45f * sampleRate, 700.0f);
    m_highpassLeft = m_highpassRight = Biquad::highPass(highCut, sampleRate, 1.414f);
    m_lowpassLeft = m_lowpassRight = Biquad::lowPass(lowCut, sampleRate, 1.2f);

    const float u = m_noise.nextUnit();
    m_breath.value = m_breath.intermediate = m_breath.target = 0.82f + 0.18f * u;
    m_breath.countdown = 0;
    m_breath.lower = 0.82f;
    m_breath.upper = 1.0f;
    m_breath.minimumHold = 5.0f * sampleRate;
    m_breath.maximumHold = 12.0f * sampleRate;
    m_breath.coefficient = 1.0f - std::exp(-1.0f / (sampleRate * 3.0f));
}

void BrownNoiseGenerator::render(float* left, float* right, std::int64_t frames) {
    const float t = m_level->load(std::memory_order_relaxed);
    if (t == 0.0f && m_gain < 0.0001f) {
        m_gain = 0.0f;
        if (frames > 0) {
            std::fill(left, left + frames, 0.0f);
            std::fill(right, right + frames, 0.0f);
        }
        return;
    }
    for (std::int64_t i = 0; i < frames; ++i) {
        m_gain = m_gain + m_gainCoefficient * (t - m_gain);
        const float b = m_breath.next(m_noise);
        const float wS = m_noise.nextBipolar();
        const float wL = m_noise.nextBipolar();
        const float S = m_shared.step(wS);
        const float L = m_sideLeft.step(wL);
        const float amp = b * m_gain * 0.95f;
        const float mixL = S * 3.5f * 0.8f + L * 3.5f * 0.6f;
        left[i] = amp * m_lowpassLeft.process(m_highpassLeft.process(mixL));
        const float wR = m_noise.nextBipolar();
        const float R = m_sideRight.step(wR);
        const float mixR = S * 3.5f * 0.8f + R * 3.5f * 0.6f;
        right[i] = amp * m_lowpassRight.process(m_highpassRight.process(mixR));
    }
}

} // namespace quill

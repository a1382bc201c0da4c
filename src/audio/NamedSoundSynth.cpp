#include "audio/NamedSoundSynth.h"

#include <algorithm>
#include <cmath>

namespace quill::NamedSoundSynth {

namespace {
constexpr double kPi = 3.14159265358979323846;
constexpr double kRate = kSampleRate;

std::vector<float> silence(double seconds) {
    return std::vector<float>(std::size_t(seconds * kRate));
}

/// Adds a decaying partial starting at offset seconds, lengthening the sound until the
/// partial has died away (-60 dB): a cue rings out instead of being cut while it still rings.
void addPartial(std::vector<float>& out, double offset, double frequency, double amplitude,
                double decay, double attack = 0.004) {
    const std::size_t begin = std::size_t(offset * kRate);
    for (std::size_t i = begin;; ++i) {
        const double t = double(i - begin) / kRate;
        const double env = std::min(1.0, t / attack) * std::exp(-t / decay);
        if (env < 1e-3 && t > attack)
            break;
        if (i >= out.size())
            out.resize(i + 1, 0.0f);
        out[i] += float(amplitude * env * std::sin(2 * kPi * frequency * t));
    }
}

/// A tone with a flat body and soft edges, for keyed beeps.
void addTone(std::vector<float>& out, double offset, double length, double frequency,
             double amplitude) {
    const std::size_t begin = std::size_t(offset * kRate);
    const std::size_t n = std::size_t(length * kRate);
    const double edge = 0.006;
    for (std::size_t k = 0; k < n && begin + k < out.size(); ++k) {
        const double t = double(k) / kRate;
        const double env = std::min({1.0, t / edge, (length - t) / edge});
        const double s =
            std::sin(2 * kPi * frequency * t) + 0.12 * std::sin(2 * kPi * 2 * frequency * t);
        out[begin + k] += float(amplitude * std::max(0.0, env) * s);
    }
}

void normalise(std::vector<float>& v, float peak) {
    float m = 0;
    for (float x : v)
        m = std::max(m, std::fabs(x));
    if (m > 0)
        for (float& x : v)
            x *= peak / m;
    // Fade the last 5 ms so a cut-off tail never clicks.
    const std::size_t fade = std::min<std::size_t>(v.size(), 240);
    for (std::size_t i = 0; i < fade; ++i)
        v[v.size() - 1 - i] *= float(i) / float(fade);
}

std::vector<float> glass() {
    auto v = silence(1.6);
    // A struck glass: inharmonic partials, the high ones dying first.
    addPartial(v, 0, 1760, 0.5, 0.55);
    addPartial(v, 0, 1760 * 2.32, 0.25, 0.30);
    addPartial(v, 0, 1760 * 4.25, 0.12, 0.12);
    addPartial(v, 0, 1763, 0.2, 0.5); // slight beating
    return v;
}

std::vector<float> ping() {
    auto v = silence(1.0);
    addPartial(v, 0, 1318.5, 0.6, 0.28);
    addPartial(v, 0, 2637, 0.12, 0.12);
    return v;
}

std::vector<float> pop() {
    auto v = silence(0.3);
    // A falling blip, like a cork leaving a bottle.
    double phase = 0;
    for (std::size_t i = 0; i < v.size(); ++i) {
        const double t = double(i) / kRate;
        const double f = 180 + 620 * std::exp(-t / 0.018);
        phase += 2 * kPi * f / kRate;
        const double env = std::min(1.0, t / 0.002) * std::exp(-t / 0.035);
        v[i] = float(env * std::sin(phase));
    }
    return v;
}

std::vector<float> tink() {
    auto v = silence(0.35);
    addPartial(v, 0, 3520, 0.5, 0.06, 0.001);
    addPartial(v, 0, 5274, 0.3, 0.04, 0.001);
    addPartial(v, 0, 7040, 0.1, 0.02, 0.001);
    return v;
}

std::vector<float> submarine() {
    auto v = silence(3.4); // the swell's 0.45 s decay well under -60 dB
    // A sonar ping: a low tone with a slow swell and a long, slightly wavering tail.
    double phase = 0;
    for (std::size_t i = 0; i < v.size(); ++i) {
        const double t = double(i) / kRate;
        const double f = 520 * (1 + 0.004 * std::sin(2 * kPi * 5 * t));
        phase += 2 * kPi * f / kRate;
        const double env = std::min(1.0, t / 0.04) * std::exp(-t / 0.45);
        v[i] = float(env * (std::sin(phase) + 0.25 * std::sin(2 * phase)));
    }
    addPartial(v, 0.32, 520, 0.18, 0.35, 0.04); // the echo
    return v;
}

std::vector<float> purr() {
    auto v = silence(1.0);
    // A soft low rumble, pulsing like a purr.
    for (std::size_t i = 0; i < v.size(); ++i) {
        const double t = double(i) / kRate;
        const double env = std::min(1.0, t / 0.06) * std::exp(-std::max(0.0, t - 0.45) / 0.07);
        const double pulse = 0.55 + 0.45 * std::sin(2 * kPi * 26 * t);
        const double s = std::sin(2 * kPi * 150 * t) + 0.5 * std::sin(2 * kPi * 300 * t) +
                         0.2 * std::sin(2 * kPi * 450 * t);
        v[i] = float(env * pulse * s);
    }
    return v;
}

std::vector<float> morse() {
    auto v = silence(0.62);
    // Dit, dit, dah.
    addTone(v, 0.00, 0.07, 880, 0.5);
    addTone(v, 0.13, 0.07, 880, 0.5);
    addTone(v, 0.26, 0.22, 880, 0.5);
    return v;
}

std::vector<float> hero() {
    auto v = silence(1.5);
    // A rising major arpeggio ending on a held octave.
    const double notes[] = {523.25, 659.25, 783.99, 1046.5};
    for (int k = 0; k < 4; ++k) {
        const double at = 0.11 * k;
        const double decay = k == 3 ? 0.5 : 0.2;
        for (int h = 1; h <= 4; ++h)
            addPartial(v, at, notes[k] * h, 0.4 / h, decay / std::sqrt(double(h)), 0.008);
    }
    return v;
}
} // namespace

const QStringList& names() {
    static const QStringList list{QStringLiteral("Glass"),     QStringLiteral("Ping"),
                                  QStringLiteral("Pop"),       QStringLiteral("Tink"),
                                  QStringLiteral("Submarine"), QStringLiteral("Purr"),
                                  QStringLiteral("Morse"),     QStringLiteral("Hero")};
    return list;
}

std::vector<float> renderBeep() {
    auto v = silence(0.2);
    addTone(v, 0.0, 0.15, 1000, 0.5);
    normalise(v, 0.4f);
    return v;
}

std::vector<float> render(const QString& name) {
    using Maker = std::vector<float> (*)();
    static const Maker makers[] = {glass, ping, pop, tink, submarine, purr, morse, hero};
    const qsizetype i = names().indexOf(name);
    if (i < 0)
        return renderBeep();
    auto v = makers[i]();
    normalise(v, 0.45f);
    return v;
}

} // namespace quill::NamedSoundSynth

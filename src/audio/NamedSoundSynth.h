#pragma once

#include <QString>
#include <QStringList>
#include <vector>

namespace quill {

/// Our own short cue sounds, one per name in the settings' sound lists, plus a beep for any
/// other name. Mono float at kSampleRate, peaks below 0.5, silent at both ends.
namespace NamedSoundSynth {
inline constexpr int kSampleRate = 48000;

/// "Glass", "Ping", "Pop", "Tink", "Submarine", "Purr", "Morse", "Hero".
const QStringList& names();
/// The sound for name, or the beep for a name not in names().
std::vector<float> render(const QString& name);
std::vector<float> renderBeep();
} // namespace NamedSoundSynth

} // namespace quill

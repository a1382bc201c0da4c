#pragma once

#include "model/ThemeTint.h"

#include <QString>
#include <array>
#include <optional>

namespace quill {

/// The eight ambient sounds, in catalogue order. The raw value is the identity,
/// the key of the stored volume and the resource name of the recording.
enum class AmbientSound { rain, waves, stream, wind, fire, birds, crickets, brownNoise };

inline constexpr std::size_t kAmbientSoundCount = 8;
inline constexpr std::array<AmbientSound, kAmbientSoundCount> kAllAmbientSounds{
    AmbientSound::rain, AmbientSound::waves, AmbientSound::stream,   AmbientSound::wind,
    AmbientSound::fire, AmbientSound::birds, AmbientSound::crickets, AmbientSound::brownNoise};

struct AmbientSoundInfo {
    AmbientSound sound;
    const char* raw;
    const char* title;    ///< UTF-8
    const char* subtitle; ///< UTF-8
    const char* symbol;   ///< symbol name, mapped to a glyph by the theme
    ThemeTint tint;
};

const AmbientSoundInfo& info(AmbientSound sound);
QString rawValue(AmbientSound sound);
QString title(AmbientSound sound);
QString subtitle(AmbientSound sound);
std::optional<AmbientSound> ambientSoundFromRaw(const QString& raw);
inline std::size_t indexOf(AmbientSound sound) {
    return static_cast<std::size_t>(sound);
}

} // namespace quill

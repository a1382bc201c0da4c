#pragma once

#include "model/AmbientSound.h"

#include <array>

namespace quill {

/// Linear gains handed to the ambient player: a master level and one per sound.
struct AmbientLevels {
    float master = 0.49f;
    std::array<float, kAmbientSoundCount> sounds{};

    bool operator==(const AmbientLevels&) const = default;
    float level(AmbientSound sound) const { return sounds[indexOf(sound)]; }
};

} // namespace quill

#pragma once

#include "store/AmbientOutput.h"
#include "store/SoundPlayer.h"

#include <memory>

namespace quill {

/// The app's named-sound player.
std::shared_ptr<SoundPlayer> createSoundPlayer();
/// The app's ambient player on the default audio output.
std::shared_ptr<AmbientOutput> createAmbientOutput();

} // namespace quill

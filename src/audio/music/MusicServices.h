#pragma once

#include "store/MusicPlayer.h"

#include <memory>

namespace quill {

/// The app's end-of-round music backend for this platform.
std::shared_ptr<MusicPlayer> createMusicPlayer();

} // namespace quill

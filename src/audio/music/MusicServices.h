#pragma once

#include "store/MusicPlayer.h"
#include "store/Scheduler.h"

#include <memory>

namespace quill {

/// The app's end-of-round music backend for this platform.
std::shared_ptr<MusicPlayer> createMusicPlayer();

/// Real timers for the music backends' deadlines and polls.
std::shared_ptr<Scheduler> createMusicScheduler();

} // namespace quill

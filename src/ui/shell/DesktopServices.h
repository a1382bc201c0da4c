#pragma once

#include "store/Services.h"

namespace quill {

/// Everything the running app talks to: the system clock, timers, randomness and data
/// folder, plus the real sound output and music control.
Services makeDesktopServices();

} // namespace quill

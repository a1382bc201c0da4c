#pragma once

#include "store/Services.h"

namespace quill {

/// The real clock, Qt timers, the system random generator, the platform data folder and
/// the Qt file dialog. Sounds, ambient audio and music are added by the caller.
Services makeSystemServices();

/// "<generic data location>/Quillmere", or empty when the platform reports none.
QString defaultDataDirectory();

} // namespace quill

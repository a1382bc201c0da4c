#include "audio/AudioLog.h"

namespace quill {
Q_LOGGING_CATEGORY(lcAudio, "quill.audio")
} // namespace quill

#include "audio/music/MusicLog.h"

namespace quill {

Q_LOGGING_CATEGORY(lcMusic, "quill.music", QtInfoMsg)

} // namespace quill

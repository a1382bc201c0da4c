#pragma once

#include <QLoggingCategory>

namespace quill {
/// Everything that makes sound logs here.
Q_DECLARE_LOGGING_CATEGORY(lcAudio)
} // namespace quill

#pragma once

#include <QLoggingCategory>

namespace quill {

/// End-of-round music: backend choice, interpreter runs and bus traffic.
Q_DECLARE_LOGGING_CATEGORY(lcMusic)

} // namespace quill

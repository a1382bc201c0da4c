#pragma once

#include <QLoggingCategory>

namespace quill {

Q_DECLARE_LOGGING_CATEGORY(lcFocusGuard)

} // namespace quill

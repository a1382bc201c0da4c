#include "store/focusguard/FocusGuardLog.h"

namespace quill {

Q_LOGGING_CATEGORY(lcFocusGuard, "quill.focusguard", QtInfoMsg)

} // namespace quill

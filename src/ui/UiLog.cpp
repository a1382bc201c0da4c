#include "UiLog.h"

namespace quill {
Q_LOGGING_CATEGORY(lcUi, "quillmere.ui")
}

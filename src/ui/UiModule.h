#pragma once

namespace quill {

/// Makes sure the QML module's type registration is linked into the program. The module
/// lives in a static library, where an unreferenced registration unit would be dropped.
/// Call once before loading any QML of the module.
void linkUiModule();

} // namespace quill

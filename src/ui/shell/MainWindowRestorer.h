#pragma once

class QWindow;

namespace quill {

/// Brings a window back: shown, out of the minimised state, raised and activated.
/// Used by the single-instance activation and the tray icon. Nothing happens without one.
void restoreWindow(QWindow* window);

} // namespace quill

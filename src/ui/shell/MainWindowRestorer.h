#pragma once

#include <QString>

class QWindow;

namespace quill {

/// Brings a window back: shown, out of the minimised state, raised and activated.
/// Used by the single-instance activation and the tray icon. Nothing happens without one.
/// `activationToken` is what a launcher or the desktop handed over for this activation
/// (an xdg-activation token on Wayland, a startup id on X11): with it the compositor lets
/// the window take the focus, and on Wayland it is the only way to bring a minimised window
/// back.
void restoreWindow(QWindow* window, const QString& activationToken = {});

} // namespace quill

#pragma once

class QByteArray;
class QWindow;

namespace quill::x11 {

/// True when the application runs on an X11 display.
bool isX11();

/// Asks the window manager to show the window on every workspace and to keep it off the
/// taskbar and the pager (`_NET_WM_DESKTOP` 0xFFFFFFFF, `_NET_WM_STATE_STICKY`,
/// `_NET_WM_STATE_SKIP_TASKBAR`, `_NET_WM_STATE_SKIP_PAGER`). Qt has no API for the first
/// two. Call after `create()`; the hints are written on the unmapped window and, once it is
/// mapped, requested again by client messages. Nothing happens off X11.
void showOnAllWorkspaces(QWindow* window);

/// Activates the window for a launch with this startup id: sets `_NET_STARTUP_ID`, which
/// KWin and Mutter take as a request to activate with the launch's time, and ends the
/// launch feedback. Nothing happens off X11.
void activateWithStartupId(QWindow* window, const QByteArray& startupId);

/// Marks the window a utility window (`_NET_WM_WINDOW_TYPE_UTILITY`), the type Qt gives a
/// `Qt::Tool` window. For a small panel that must outlive its main window's minimising: Qt
/// makes every parentless `Qt::Tool` window transient for the app's group leader, and KWin
/// minimises such a window together with the main window. So the panel is created as a plain
/// `Qt::Window` and given the utility type here, after `create()`. Nothing happens off X11.
void markAsUtility(QWindow* window);

/// True when a compositing manager owns the screen's `_NET_WM_CM_S<n>` selection, so a
/// translucent window's transparent pixels show what lies behind it.
bool compositorRunning();

/// True when an X11 system tray owns the screen's `_NET_SYSTEM_TRAY_S<n>` selection.
bool systemTrayRunning();

} // namespace quill::x11

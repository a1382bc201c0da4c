#pragma once

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

/// True when a compositing manager owns the screen's `_NET_WM_CM_S<n>` selection, so a
/// translucent window's transparent pixels show what lies behind it.
bool compositorRunning();

} // namespace quill::x11

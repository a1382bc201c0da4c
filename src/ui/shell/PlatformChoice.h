#pragma once

#include <QByteArray>

namespace quill {

/// The Qt platform the app runs on when nobody asked for one (QT_QPA_PLATFORM), from the
/// session's desktop and displays; empty leaves the choice to Qt (native Wayland where
/// there is a Wayland display). On GNOME it is XWayland: Mutter keeps sending frame
/// callbacks to a minimised Wayland window and tells it nothing else, so a Wayland client
/// cannot know it was minimised (no floating timer, no round-end notice), nor keep a window
/// above or on every workspace; through XWayland the window manager reports both and
/// honours the X11 hints, and X clients are drawn at the screen's own scale.
QByteArray preferredPlatform(const QByteArray& requested, const QByteArray& desktop,
                             const QByteArray& waylandDisplay, const QByteArray& x11Display);

/// Applies preferredPlatform() to this process's environment. Call before the application
/// object exists.
void choosePlatformForDesktop();

} // namespace quill

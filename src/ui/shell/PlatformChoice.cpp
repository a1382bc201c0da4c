#include "PlatformChoice.h"

#include <QList>

namespace quill {

QByteArray preferredPlatform(const QByteArray& requested, const QByteArray& desktop,
                             const QByteArray& waylandDisplay, const QByteArray& x11Display) {
    if (!requested.isEmpty() || waylandDisplay.isEmpty() || x11Display.isEmpty())
        return {};
    // XDG_CURRENT_DESKTOP is a colon-separated list, e.g. "ubuntu:GNOME".
    const QList<QByteArray> desktops = desktop.split(':');
    return desktops.contains("GNOME") ? QByteArrayLiteral("xcb") : QByteArray();
}

void choosePlatformForDesktop() {
    const QByteArray platform =
        preferredPlatform(qgetenv("QT_QPA_PLATFORM"), qgetenv("XDG_CURRENT_DESKTOP"),
                          qgetenv("WAYLAND_DISPLAY"), qgetenv("DISPLAY"));
    if (!platform.isEmpty())
        qputenv("QT_QPA_PLATFORM", platform);
}

} // namespace quill

#include "MainWindowRestorer.h"

#include "X11WindowHints.h"

#include <QGuiApplication>
#include <QWindow>

namespace quill {

void restoreWindow(QWindow* window, const QString& activationToken) {
    if (!window)
        return;
    if (window->windowStates() & Qt::WindowMinimized)
        window->setWindowStates(window->windowStates() & ~Qt::WindowMinimized);
    window->show();
    window->raise();
    if (!activationToken.isEmpty()) {
        if (x11::isX11())
            x11::activateWithStartupId(window, activationToken.toLatin1());
        else if (QGuiApplication::platformName().startsWith(QLatin1String("wayland")))
            qputenv("XDG_ACTIVATION_TOKEN", activationToken.toLatin1()); // read (and unset) by Qt's
                                                                         // next activation request
    }
    window->requestActivate();
}

} // namespace quill

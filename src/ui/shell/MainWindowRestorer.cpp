#include "MainWindowRestorer.h"

#include <QWindow>

namespace quill {

void restoreWindow(QWindow* window) {
    if (!window)
        return;
    if (window->windowStates() & Qt::WindowMinimized)
        window->setWindowStates(window->windowStates() & ~Qt::WindowMinimized);
    window->show();
    window->raise();
    window->requestActivate();
}

} // namespace quill

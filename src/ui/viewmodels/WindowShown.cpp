#include "WindowShown.h"

#include <QEvent>

namespace quill {

WindowShown::WindowShown(QObject* parent) : QObject(parent) {}

void WindowShown::setWindow(QWindow* window) {
    if (m_window == window)
        return;
    if (m_window) {
        m_window->removeEventFilter(this);
        disconnect(m_window, nullptr, this, nullptr);
    }
    m_window = window;
    if (m_window) {
        m_window->installEventFilter(this);
        connect(m_window, &QWindow::visibilityChanged, this, &WindowShown::update);
        connect(m_window, &QObject::destroyed, this, &WindowShown::update);
    }
    update();
    Q_EMIT windowChanged();
}

bool WindowShown::eventFilter(QObject* watched, QEvent* event) {
    // Exposure changes arrive as events only; there is no signal for them.
    if (watched == m_window && event->type() == QEvent::Expose)
        update();
    return false;
}

void WindowShown::update() {
    const QWindow* w = m_window;
    const bool shown = !w || (w->isExposed() && w->visibility() != QWindow::Hidden &&
                              w->visibility() != QWindow::Minimized);
    if (shown == m_shown)
        return;
    m_shown = shown;
    Q_EMIT shownChanged();
}

} // namespace quill

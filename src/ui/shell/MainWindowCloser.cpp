#include "MainWindowCloser.h"

#include "MainWindowRestorer.h"
#include "ui/viewmodels/ShellViewModel.h"

#include <QCoreApplication>
#include <QEvent>
#include <QGuiApplication>

namespace quill {

MainWindowCloser::MainWindowCloser(QObject* parent) : QObject(parent) {}

void MainWindowCloser::setWindow(QQuickWindow* window) {
    if (m_window == window)
        return;
    if (m_window)
        m_window->removeEventFilter(this);
    m_window = window;
    if (m_window)
        m_window->installEventFilter(this);
    Q_EMIT windowChanged();
}

void MainWindowCloser::setShell(ShellViewModel* shell) {
    if (m_shell == shell)
        return;
    if (m_shell)
        disconnect(m_shell, nullptr, this, nullptr);
    m_shell = shell;
    if (m_shell) {
        // Queued: the click or key that approved it returns before the loop ends.
        connect(m_shell, &ShellViewModel::quitApproved, QCoreApplication::instance(),
                &QCoreApplication::quit, Qt::QueuedConnection);
        connect(m_shell, &ShellViewModel::windowWanted, this, [this] { restoreWindow(m_window); });
    }
    Q_EMIT shellChanged();
}

void MainWindowCloser::setTrayHost(bool host) {
    if (m_trayHost == host)
        return;
    m_trayHost = host;
    // With a tray item the app lives on after its window is closed, as the tray panel and a
    // second launch can bring it back; without one, closing the idle window quits.
    QGuiApplication::setQuitOnLastWindowClosed(!host);
    Q_EMIT trayHostChanged();
}

bool MainWindowCloser::eventFilter(QObject* watched, QEvent* event) {
    if (watched != m_window || event->type() != QEvent::Close || !m_shell)
        return false;
    // A close accepted with a tray host only hides the window (the app does not quit on its
    // last window then); one accepted without a tray host quits.
    if (m_shell->closeAction(m_trayHost) != ShellViewModel::MinimiseWindow)
        return false;
    event->ignore();
    m_window->showMinimized();
    return true;
}

} // namespace quill

#pragma once

#include "ui/viewmodels/ShellViewModel.h"

#include <QObject>
#include <QPointer>
#include <QQuickWindow>
#include <QtQml/qqmlregistration.h>

namespace quill {

/// Carries out what closing the main window and quitting mean: the shell decides (a round
/// under way is never ended by a close), this applies the decision to the window and the app.
class MainWindowCloser : public QObject {
    Q_OBJECT
    QML_ELEMENT
    /// The main window whose close requests are handled.
    Q_PROPERTY(QQuickWindow* window READ window WRITE setWindow NOTIFY windowChanged)
    /// The shell that decides and asks.
    Q_PROPERTY(quill::ShellViewModel* shell READ shell WRITE setShell NOTIFY shellChanged)
    /// A tray host shows our icon, so a hidden window can be brought back.
    Q_PROPERTY(bool trayHost READ trayHost WRITE setTrayHost NOTIFY trayHostChanged)

public:
    explicit MainWindowCloser(QObject* parent = nullptr);

    QQuickWindow* window() const { return m_window; }
    void setWindow(QQuickWindow* window);
    ShellViewModel* shell() const { return m_shell; }
    void setShell(ShellViewModel* shell);
    bool trayHost() const { return m_trayHost; }
    void setTrayHost(bool host);

Q_SIGNALS:
    void windowChanged();
    void shellChanged();
    void trayHostChanged();

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    QPointer<QQuickWindow> m_window;
    QPointer<ShellViewModel> m_shell;
    bool m_trayHost = false;
};

} // namespace quill

#include "TrayIcon.h"

#include "AppIdentity.h"
#include "MainWindowRestorer.h"
#include "PanelPlacement.h"
#include "TrayIconArt.h"
#include "X11WindowHints.h"
#include "ui/theme/AdaptiveColor.h"

#include <QCursor>
#include <QGuiApplication>
#include <QIcon>
#include <QPixmap>
#include <QScreen>
#include <QSurfaceFormat>
#include <QSystemTrayIcon>
#include <QTimer>

#include <memory>

namespace quill {

TrayIcon::TrayIcon(QObject* parent) : QObject(parent), m_tray(std::make_unique<QSystemTrayIcon>()) {
    connect(m_tray.get(), &QSystemTrayIcon::activated, this,
            [this](QSystemTrayIcon::ActivationReason reason) {
                if (reason == QSystemTrayIcon::Trigger || reason == QSystemTrayIcon::DoubleClick)
                    activate();
            });
    // Looking the icons up in the icon themes and asking the desktop for a tray take a
    // while: they wait for the main window's first frame (see setMainWindow), or for the
    // event loop where there is no main window.
    QTimer::singleShot(0, this, [this] {
        if (!m_mainWindow)
            start();
    });
}

void TrayIcon::start() {
    if (m_started)
        return;
    m_started = true;
    updateIcon();
    m_tray->setToolTip(m_toolTip);
    // Without a tray host (plain X servers, the offscreen platform) there is nothing to show.
    if (QSystemTrayIcon::isSystemTrayAvailable())
        m_tray->show();
}

TrayIcon::~TrayIcon() = default;

void TrayIcon::setSymbol(const QString& symbol) {
    if (m_symbol == symbol)
        return;
    m_symbol = symbol;
    if (m_started)
        updateIcon();
    Q_EMIT symbolChanged();
}

void TrayIcon::setToolTip(const QString& tip) {
    if (m_toolTip == tip)
        return;
    m_toolTip = tip;
    m_tray->setToolTip(tip);
    Q_EMIT toolTipChanged();
}

void TrayIcon::setPanel(QQuickWindow* panel) {
    if (m_panel == panel)
        return;
    if (m_panel)
        disconnect(m_panel, nullptr, this, nullptr);
    m_panel = panel;
    if (m_panel) {
        // The panel draws its own rounded outline and shadow on a clear window.
        QSurfaceFormat format = m_panel->format();
        format.setAlphaBufferSize(8);
        m_panel->setFormat(format);
    }
    if (m_panel)
        connect(m_panel, &QWindow::activeChanged, this, &TrayIcon::onPanelActiveChanged);
    Q_EMIT panelChanged();
}

void TrayIcon::setMainWindow(QQuickWindow* window) {
    if (m_mainWindow == window)
        return;
    m_mainWindow = window;
    if (m_mainWindow && !m_started) {
        auto connection = std::make_shared<QMetaObject::Connection>();
        *connection = connect(m_mainWindow, &QQuickWindow::frameSwapped, this, [this, connection] {
            disconnect(*connection);
            QTimer::singleShot(0, this, &TrayIcon::start);
        });
    }
    Q_EMIT mainWindowChanged();
}

void TrayIcon::updateIcon() {
    m_tray->setIcon(currentIcon());
}

QIcon TrayIcon::currentIcon() const {
    // The installed icons by name, so the desktop draws them in its own panel style: the
    // monochrome one while idle, the mint one during a round. Run from a build tree, the
    // built-in drawings stand in: the idle outline a light neutral that reads on light and
    // dark panels, the running round's leaf mint.
    const bool running = m_symbol.endsWith(QLatin1String(".fill"));
    const QColor color = running ? colorFromRgb(0x78D7B2) : colorFromRgb(0xC9D4D0);
    QIcon builtIn;
    for (int size : {16, 22, 24, 32, 48, 64})
        builtIn.addPixmap(QPixmap::fromImage(trayIconImage(m_symbol, size, color)));
    const QString name = running ? appId() : appId() + QStringLiteral("-symbolic");
    // Not fromTheme(name, fallback): that also falls back for an icon found only as SVG.
    return QIcon::hasThemeIcon(name) ? QIcon::fromTheme(name) : builtIn;
}

QIcon TrayIcon::icon() const {
    return m_started ? m_tray->icon() : currentIcon();
}

void TrayIcon::activate() {
    if (m_mainWindow && (m_mainWindow->windowStates() & Qt::WindowMinimized))
        restoreWindow(m_mainWindow);
    if (!m_panel)
        Q_EMIT panelWanted();
    if (!m_panel)
        return;
    if (m_panel->isVisible()) {
        m_panel->hide();
        return;
    }
    showPanel();
}

void TrayIcon::showPanel() {
    TrayClick click;
    click.icon = m_tray->geometry();
    // Under XWayland the pointer Qt reports is where it last crossed one of our X windows,
    // not the click in the desktop's panel; on Wayland there is none.
    const bool xWayland = !qEnvironmentVariableIsEmpty("WAYLAND_DISPLAY");
    if (x11::isX11() && !xWayland)
        click.cursor = QCursor::pos();
    QScreen* screen = click.cursor ? QGuiApplication::screenAt(*click.cursor) : nullptr;
    if (!screen && click.icon.isValid())
        screen = QGuiApplication::screenAt(click.icon.center());
    if (!screen)
        screen = QGuiApplication::primaryScreen();
    if (screen) {
        click.screen = screen->geometry();
        click.available = screen->availableGeometry();
    }
    // GNOME keeps its tray in the top bar, Plasma and most others at the bottom.
    click.desktopTrayAtTop =
        qEnvironmentVariable("XDG_CURRENT_DESKTOP").contains(QLatin1String("GNOME"));
    m_panel->setPosition(panelPosition(trayAnchor(click), m_panel->size(), click.available));
    m_panelWasActive = false;
    m_panel->show();
    m_panel->raise();
    m_panel->requestActivate();
}

void TrayIcon::onPanelActiveChanged() {
    // Like a popover: clicking elsewhere closes it, once it has actually held the focus.
    if (!m_panel)
        return;
    if (m_panel->isActive())
        m_panelWasActive = true;
    else if (m_panelWasActive && m_panel->isVisible())
        m_panel->hide();
}

} // namespace quill

#include "TrayIcon.h"

#include "AppIdentity.h"
#include "KWinWindowRule.h"
#include "MainWindowRestorer.h"
#include "PanelPlacement.h"
#include "RoundedWindowMask.h"
#include "TrayHostWatch.h"
#include "TrayIconArt.h"
#include "X11WindowHints.h"

#include <QCursor>
#include <QDBusConnection>
#include <QElapsedTimer>
#include <QEvent>
#include <QGuiApplication>
#include <QIcon>
#include <QMenu>
#include <QPixmap>
#include <QScreen>
#include <QSurfaceFormat>
#include <QSystemTrayIcon>
#include <QTimer>

#include <memory>

namespace quill {

namespace {
// A click on the tray icon while the panel is open first moves the focus to the desktop's
// own panel (at the press) and only then reaches the app (at the release, over D-Bus on
// GNOME and Plasma). A click that comes this soon after the focus left closed the panel.
constexpr qint64 kSameClickMs = 500;

qint64 sinceStart() {
    static const QElapsedTimer started = [] {
        QElapsedTimer t;
        t.start();
        return t;
    }();
    return started.elapsed();
}
} // namespace

TrayIcon::TrayIcon(QObject* parent)
    : QObject(parent), m_menu(std::make_unique<QMenu>()), m_monotonicMs(sinceStart) {
    // The stand-in for a dock icon's menu: the window can always be brought back, and the
    // app quit, even when the window is closed.
    connect(m_menu->addAction(QStringLiteral("打开 Quillmere")), &QAction::triggered, this,
            &TrayIcon::showMainWindow);
    connect(m_menu->addAction(QStringLiteral("退出")), &QAction::triggered, this,
            &TrayIcon::quitRequested);
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
    // Without a tray host (plain X servers, the offscreen platform, GNOME without the
    // AppIndicator extension) there is nothing to show until one comes.
    m_hostWatch = new TrayHostWatch(QDBusConnection::sessionBus(), this);
    connect(m_hostWatch, &TrayHostWatch::hostFound, this, &TrayIcon::showInTray);
    m_hostWatch->start();
}

void TrayIcon::showInTray() {
    if (m_tray)
        return;
    m_tray = std::make_unique<QSystemTrayIcon>();
    m_tray->setContextMenu(m_menu.get());
    connect(m_tray.get(), &QSystemTrayIcon::activated, this,
            [this](QSystemTrayIcon::ActivationReason reason) {
                if (reason == QSystemTrayIcon::Trigger || reason == QSystemTrayIcon::DoubleClick)
                    activate();
            });
    updateIcon();
    m_tray->setToolTip(m_toolTip);
    m_tray->show();
    m_hostAvailable = true;
    Q_EMIT hostAvailableChanged();
}

TrayIcon::~TrayIcon() = default;

void TrayIcon::setSymbol(const QString& symbol) {
    if (m_symbol == symbol)
        return;
    m_symbol = symbol;
    updateIcon();
    Q_EMIT symbolChanged();
}

void TrayIcon::setToolTip(const QString& tip) {
    if (m_toolTip == tip)
        return;
    m_toolTip = tip;
    if (m_tray)
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
    if (m_panel) {
        connect(m_panel, &QWindow::activeChanged, this, &TrayIcon::onPanelActiveChanged);
        // Starting a round grows the panel: it keeps the edge next to the tray.
        connect(m_panel, &QWindow::heightChanged, this, [this] {
            if (m_panel->isVisible())
                placePanel();
        });
    }
    Q_EMIT panelChanged();
}

void TrayIcon::setMainWindow(QQuickWindow* window) {
    if (m_mainWindow == window)
        return;
    if (m_mainWindow)
        m_mainWindow->removeEventFilter(this);
    m_mainWindow = window;
    if (m_mainWindow)
        m_mainWindow->installEventFilter(this);
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
    if (m_tray)
        m_tray->setIcon(currentIcon());
}

QIcon TrayIcon::currentIcon() const {
    // The installed icons by name, so the desktop draws them in its own panel style: the
    // monochrome one while idle, the mint one during a round. Run from a build tree, the
    // built-in drawings stand in.
    const bool running = m_symbol.endsWith(QLatin1String(".fill"));
    QIcon builtIn;
    for (int size : {16, 22, 24, 32, 48, 64})
        builtIn.addPixmap(QPixmap::fromImage(trayIconImage(m_symbol, size)));
    const QString name = running ? appId() : appId() + QStringLiteral("-symbolic");
    // Not fromTheme(name, fallback): that also falls back for an icon found only as SVG.
    return QIcon::hasThemeIcon(name) ? QIcon::fromTheme(name) : builtIn;
}

QIcon TrayIcon::icon() const {
    return m_tray ? m_tray->icon() : currentIcon();
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
    if (m_closedByFocusLossAt >= 0 && m_monotonicMs() - m_closedByFocusLossAt < kSameClickMs) {
        m_closedByFocusLossAt = -1;
        return;
    }
    showPanel();
}

void TrayIcon::showMainWindow() {
    if (m_panel)
        m_panel->hide();
    restoreWindow(m_mainWindow);
}

QStringList TrayIcon::menuEntries() const {
    QStringList out;
    for (const QAction* action : m_menu->actions())
        out << action->text();
    return out;
}

void TrayIcon::triggerMenuEntry(int index) {
    const QList<QAction*> actions = m_menu->actions();
    if (index >= 0 && index < actions.size())
        actions[index]->trigger();
}

void TrayIcon::showPanel() {
    TrayClick click;
    if (m_tray)
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
    m_anchor = trayAnchor(click);
    m_anchorArea = click.available;
    // Asked at each opening: a compositor may have started or stopped since. Its change
    // resizes the panel (the margin comes or goes), which places it.
    const bool composited = x11::compositorRunning();
    if (composited != m_composited) {
        m_composited = composited;
        Q_EMIT compositedChanged();
    }
    placePanel();
    m_panelWasActive = false;
    // Off the task bar: on X11 by its window state; a Wayland client can neither ask for that
    // nor place its window, but on Plasma KWin's scripting can do both.
    if (QGuiApplication::platformName().startsWith(QLatin1String("wayland")) && !m_kwinRule) {
        m_kwinRule = std::make_unique<KWinWindowRule>(
            QDBusConnection::sessionBus(), m_panel->title(), QStringLiteral("tray-panel"),
            KWinWindowRule::Placement::TrayCorner);
        m_kwinRule->apply();
    }
    m_panel->create();
    x11::showOnAllWorkspaces(m_panel);
    m_panel->show();
    m_panel->raise();
    m_panel->requestActivate();
}

void TrayIcon::placePanel() {
    m_panel->setPosition(panelPosition(m_anchor, m_panel->size(), m_anchorArea));
    // Without a compositor the clear margin would be drawn black: the window is cut to the
    // panel's rounded outline instead.
    m_panel->setMask(
        m_composited ? QRegion()
                     : roundedWindowMask(m_panel->size(), m_panel->property("radius").toReal()));
}

bool TrayIcon::eventFilter(QObject* watched, QEvent* event) {
    // Like a popover: a click in the main window closes the panel, also where the window
    // manager never gave the panel the focus it could lose.
    if (watched == m_mainWindow && event->type() == QEvent::MouseButtonPress && m_panel &&
        m_panel->isVisible())
        m_panel->hide();
    return false;
}

void TrayIcon::onPanelActiveChanged() {
    // Like a popover: clicking elsewhere closes it, once it has actually held the focus.
    if (!m_panel)
        return;
    if (m_panel->isActive()) {
        m_panelWasActive = true;
    } else if (m_panelWasActive && m_panel->isVisible()) {
        m_closedByFocusLossAt = m_monotonicMs();
        m_panel->hide();
    }
}

} // namespace quill

#pragma once

#include <QIcon>
#include <QObject>
#include <QPointer>
#include <QQuickWindow>
#include <QtQml/qqmlregistration.h>
#include <functional>
#include <memory>

class QMenu;
class QSystemTrayIcon;

namespace quill {

class KWinWindowRule;
class TrayHostWatch;

/// The tray item: its icon follows `symbol`; clicking it toggles the small panel window
/// near the pointer and brings back a minimised main window. Its menu opens the main window
/// or asks to quit.
class TrayIcon : public QObject {
    Q_OBJECT
    QML_ELEMENT
    /// Symbol name of the icon ("leaf" idle, "leaf.fill" during a round).
    Q_PROPERTY(QString symbol READ symbol WRITE setSymbol NOTIFY symbolChanged)
    /// The panel window the click toggles; when absent, a click first asks for it
    /// (panelWanted), so it can be built on first use.
    Q_PROPERTY(QQuickWindow* panel READ panel WRITE setPanel NOTIFY panelChanged)
    /// The main window, restored when the icon is clicked while it is minimised.
    Q_PROPERTY(
        QQuickWindow* mainWindow READ mainWindow WRITE setMainWindow NOTIFY mainWindowChanged)
    /// Tooltip of the icon.
    Q_PROPERTY(QString toolTip READ toolTip WRITE setToolTip NOTIFY toolTipChanged)
    /// The panel's clear margin shows the desktop (a compositor runs), so it draws its shadow
    /// there; without one the window is exactly the panel, its corners masked.
    Q_PROPERTY(bool composited READ composited NOTIFY compositedChanged)
    /// A tray host showed the icon, so a hidden main window can still be brought back.
    Q_PROPERTY(bool hostAvailable READ hostAvailable NOTIFY hostAvailableChanged)
    /// The menu's entries, in order ("打开 Quillmere", "退出").
    Q_PROPERTY(QStringList menuEntries READ menuEntries CONSTANT)

public:
    explicit TrayIcon(QObject* parent = nullptr);
    ~TrayIcon() override;

    QString symbol() const { return m_symbol; }
    void setSymbol(const QString& symbol);
    QQuickWindow* panel() const { return m_panel; }
    void setPanel(QQuickWindow* panel);
    QQuickWindow* mainWindow() const { return m_mainWindow; }
    void setMainWindow(QQuickWindow* window);
    QString toolTip() const { return m_toolTip; }
    void setToolTip(const QString& tip);
    bool hostAvailable() const { return m_hostAvailable; }
    bool composited() const { return m_composited; }
    QStringList menuEntries() const;

    /// The icon shown: the installed one by name when there is one, else the drawn art.
    QIcon icon() const;

    /// What a click on the icon does: restore a minimised main window, toggle the panel.
    Q_INVOKABLE void activate();
    /// "打开 Quillmere": closes the panel and brings the main window to the front.
    Q_INVOKABLE void showMainWindow();
    /// Runs the menu entry at `index` as if it had been chosen.
    Q_INVOKABLE void triggerMenuEntry(int index);
    /// Milliseconds on a monotonic clock; tests move it themselves.
    void setClock(std::function<qint64()> monotonicMs) { m_monotonicMs = std::move(monotonicMs); }

Q_SIGNALS:
    void symbolChanged();
    void panelChanged();
    void panelWanted();
    void mainWindowChanged();
    void toolTipChanged();
    void hostAvailableChanged();
    void compositedChanged();
    /// "退出" was chosen; the shell decides whether to ask first.
    void quitRequested();

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void start();
    void showInTray();
    void placePanel();
    void updateIcon();
    QIcon currentIcon() const;
    void showPanel();
    void onPanelActiveChanged();

    std::unique_ptr<QMenu> m_menu; // outlives the tray item that shows it
    // Made once a tray host is known to be there: Qt's tray item asks the desktop
    // synchronously as it is made.
    std::unique_ptr<QSystemTrayIcon> m_tray;
    TrayHostWatch* m_hostWatch = nullptr;
    std::unique_ptr<KWinWindowRule> m_kwinRule; // the panel's, on Plasma's Wayland session
    QString m_symbol = QStringLiteral("leaf");
    QString m_toolTip = QStringLiteral("Quillmere");
    QPointer<QQuickWindow> m_panel;
    QPointer<QQuickWindow> m_mainWindow;
    bool m_panelWasActive = false;
    std::function<qint64()> m_monotonicMs;
    qint64 m_closedByFocusLossAt = -1; // when the panel last closed for losing the focus
    bool m_started = false;            // looking for a tray host
    bool m_hostAvailable = false;
    bool m_composited = true;
    // Where the panel was opened: it stays anchored there as its content grows or shrinks.
    QPoint m_anchor;
    QRect m_anchorArea;
};

} // namespace quill

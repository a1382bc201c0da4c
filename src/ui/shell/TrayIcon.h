#pragma once

#include <QIcon>
#include <QObject>
#include <QPointer>
#include <QQuickWindow>
#include <QtQml/qqmlregistration.h>
#include <memory>

class QSystemTrayIcon;

namespace quill {

/// The tray item: its icon follows `symbol`; clicking it toggles the small panel window
/// near the pointer and brings back a minimised main window.
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

    /// The icon shown: the installed one by name when there is one, else the drawn art.
    QIcon icon() const;

    /// What a click on the icon does: restore a minimised main window, toggle the panel.
    Q_INVOKABLE void activate();

Q_SIGNALS:
    void symbolChanged();
    void panelChanged();
    void panelWanted();
    void mainWindowChanged();
    void toolTipChanged();

private:
    void start();
    void updateIcon();
    QIcon currentIcon() const;
    void showPanel();
    void onPanelActiveChanged();

    std::unique_ptr<QSystemTrayIcon> m_tray;
    QString m_symbol = QStringLiteral("leaf");
    QString m_toolTip = QStringLiteral("Quillmere");
    QPointer<QQuickWindow> m_panel;
    QPointer<QQuickWindow> m_mainWindow;
    bool m_panelWasActive = false;
    bool m_started = false; // icon set and shown
};

} // namespace quill

#pragma once

#include "FloatingTimerPlace.h"
#include "model/AppSettings.h"

#include <QObject>
#include <QPointer>
#include <QQuickWindow>
#include <QtQml/qqmlregistration.h>
#include <memory>

class QQmlComponent;
class QQmlEngine;

namespace quill {

class AppStore;
class KWinWindowRule;
class ViewModels;

/// Opens the floating countdown panel while a round runs and the main window is minimised or
/// closed into the tray (and the settings ask for it), and closes it otherwise. The panel is a
/// top-level window built on demand from FloatingTimerPanel.qml and destroyed when it closes, so
/// nothing of it lives while it is not shown.
class FloatingTimerController : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("Built by the running user interface beside its main window")
    /// The open panel, or null.
    Q_PROPERTY(QQuickWindow* panel READ panel NOTIFY panelChanged)
    /// The panel's transparent margin shows the desktop (a compositor runs), so it can draw
    /// its own shadow there; without one the window is exactly the panel, its corners masked.
    Q_PROPERTY(bool composited READ composited NOTIFY panelChanged)
    /// The state file keeping where the user left the panel; the user's state home if unset.
    Q_PROPERTY(QString placeFile READ placeFile WRITE setPlaceFile NOTIFY placeFileChanged)

public:
    /// Watches mainWindow (minimised, hidden into the tray) and builds the panel with engine
    /// on the store behind models; a child of mainWindow.
    FloatingTimerController(ViewModels& models, QQmlEngine& engine, QQuickWindow& mainWindow);
    ~FloatingTimerController() override;

    /// The opening rule: minimised, a round active, and the countdown or the buttons wanted.
    static bool wanted(bool mainMinimised, bool sessionActive, const AppSettings& settings);

    QQuickWindow* panel() const { return m_panel; }
    bool composited() const { return m_composited; }
    QString placeFile() const { return m_placeFile; }
    void setPlaceFile(const QString& path);

    /// The restore button: brings the main window back and closes the panel.
    Q_INVOKABLE void restoreMainWindow();
    /// Lets the window system move the panel with the pointer (works on Wayland too).
    Q_INVOKABLE void startMove();

Q_SIGNALS:
    void panelChanged();
    void placeFileChanged();

private:
    void update();
    QQmlComponent* component();
    void open();
    void dismiss();
    void watchStore();
    void watchMainWindow();
    /// Minimised, or closed into the tray.
    bool mainOutOfSight() const;
    FloatingTimerPlace& place();
    void rememberPlace();

    ViewModels& m_models;
    AppStore& m_store;
    QQmlEngine& m_engine;
    QQuickWindow& m_mainWindow;
    QPointer<QQuickWindow> m_panel;
    // Compiled when a round starts, so minimising only has to instantiate it.
    QQmlComponent* m_component = nullptr;
    QString m_placeFile;
    std::unique_ptr<FloatingTimerPlace> m_place; // read on first open, kept for the session
    // Plasma on Wayland: keeps the panel above and on every desktop.
    std::unique_ptr<KWinWindowRule> m_kwinRule;
    bool m_mainMinimised = false;
    bool m_composited = false;
    // What the open-rule last saw of the settings: a settings write that changes neither
    // floating switch does not re-evaluate it.
    bool m_countdownSetting = true;
    bool m_buttonsSetting = false;
};

} // namespace quill

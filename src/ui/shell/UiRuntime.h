#pragma once

#include "store/Services.h"

#include <QObject>
#include <QPointer>
#include <memory>

class QQmlApplicationEngine;
#include <QQuickWindow>

namespace quill {

class AppStore;
class ViewModels;

/// The running user interface: one store on the given services and the QML engine showing
/// the main window (which owns the tray panel). The app, the UI tests, the screenshot tool
/// and the benchmark harness all start the screens through this one path.
class UiRuntime : public QObject {
    Q_OBJECT

public:
    explicit UiRuntime(Services services, QObject* parent = nullptr);
    ~UiRuntime() override;

    /// Loads the main window; false (with the QML errors logged) if it could not be built.
    bool load();

    AppStore* store() const { return m_store.get(); }
    ViewModels* models() const { return m_models.get(); }
    QQmlApplicationEngine* engine() const { return m_engine.get(); }
    QQuickWindow* mainWindow() const { return m_mainWindow; }

    /// Shows the main window and brings it in front (a second launch asked for it, handing
    /// over its launcher's activation token).
    void bringToFront(const QString& activationToken = {});

    /// The app-wide font (Noto Sans CJK SC) and the Basic controls style. Call once after
    /// the application object exists and before `load()`.
    static void prepareApplication();
    /// The resource path of the main window's QML file.
    static QString mainQmlUrl();

private:
    std::unique_ptr<AppStore> m_store;
    std::unique_ptr<ViewModels> m_models;            // what the windows show of the store
    std::unique_ptr<QQmlApplicationEngine> m_engine; // destroyed before the store it shows
    QPointer<QQuickWindow> m_mainWindow;
};

} // namespace quill

#pragma once

#include "store/AppStore.h"
#include "support/FakeServices.h"
#include "ui/shell/UiRuntime.h"

#include <QQuickItem>
#include <QQuickWindow>
#include <functional>
#include <memory>

namespace quill::test {

/// The real main window on the offscreen platform, showing the real store on fake services
/// in virtual time. Items are found by objectName and clicked like a user would.
class UiHarness {
public:
    /// `seed` runs before the store exists (e.g. to write a data file into its folder).
    explicit UiHarness(const std::function<void(FakeServices&)>& seed = {});
    ~UiHarness();

    AppStore& store() const { return *m_runtime->store(); }
    QQuickWindow* window() const { return m_runtime->mainWindow(); }
    /// The tray panel window, owned by the main window.
    QQuickWindow* trayPanel() const;
    /// The tray item (a non-visual object of the main window).
    QObject* trayIcon() const;

    /// The item with this objectName in the window's visual tree (popups included), or null.
    QQuickItem* item(const QString& name, QQuickWindow* in = nullptr) const;
    /// True if the item exists and it and all its ancestors are visible.
    bool isShown(const QString& name, QQuickWindow* in = nullptr) const;
    /// Its "text" property.
    QString text(const QString& name, QQuickWindow* in = nullptr) const;
    /// Clicks the centre of the item; fails the test if it is missing or hidden.
    void click(const QString& name, QQuickWindow* in = nullptr);
    /// Clicks a point of the window, in scene coordinates.
    void clickAt(QPointF scenePoint, QQuickWindow* in = nullptr);
    void pressKey(Qt::Key key, QQuickWindow* in = nullptr);
    /// Types ASCII text into the item with the keyboard focus.
    void typeText(const QString& text, QQuickWindow* in = nullptr);
    /// Moves virtual time and lets the window catch up.
    void advance(qint64 ms);
    /// Runs pending events and lays the window out (positioners arrange on polish).
    void settle(QQuickWindow* in = nullptr);

    FakeServices fakes;

private:
    std::unique_ptr<UiRuntime> m_runtime;
};

/// A stored round that started at `start` (local time) with this much focus.
StudySession sessionAt(const QDateTime& start, qint64 focusedSeconds = 1500,
                       const std::optional<QString>& task = std::nullopt);

/// Seeds a data file with these sessions (and default settings) before the store starts.
std::function<void(FakeServices&)> seedSessions(const QList<StudySession>& sessions);

} // namespace quill::test

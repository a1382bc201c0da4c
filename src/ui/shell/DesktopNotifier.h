#pragma once

#include <QDBusConnection>
#include <QObject>
#include <QString>

class QDBusMessage;

namespace quill {

/// One desktop notification at a time over org.freedesktop.Notifications: a newer one
/// replaces the shown one. Calls never block; without a bus or a notification server
/// nothing is shown and nothing is reported to the user.
class DesktopNotifier : public QObject {
    Q_OBJECT

public:
    explicit DesktopNotifier(QDBusConnection bus, QObject* parent = nullptr);

    /// Shows summary and body; clicking it (its default action, labelled actionLabel)
    /// emits activated() with the activation token the server sent for the click, if any.
    void show(const QString& summary, const QString& body, const QString& actionLabel);
    /// Withdraws the shown notification, also one whose id has not arrived yet.
    void close();

Q_SIGNALS:
    void activated(const QString& activationToken);

private Q_SLOTS:
    void onActionInvoked(uint id, const QString& action);
    void onClosed(uint id, uint reason);
    void onActivationToken(uint id, const QString& token);

private:
    void onShown(const QDBusMessage& message);

    QDBusConnection m_bus;
    uint m_id = 0;
    QString m_token;
    bool m_closeWhenShown = false;
};

} // namespace quill

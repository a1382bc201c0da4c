#pragma once

#include "store/focusguard/NotificationHold.h"

#include <QDBusConnection>
#include <QDBusPendingCall>
#include <QObject>
#include <memory>
#include <optional>

namespace quill {

/// Holds banners through the notification server's own Inhibit call, as KDE Plasma offers
/// it. The server ends an inhibition whose connection closes, so a crash never leaves one.
class PlasmaNotificationHold final : public QObject, public NotificationHold {
    Q_OBJECT

public:
    PlasmaNotificationHold(QDBusConnection bus, QString desktopEntry, QObject* parent = nullptr);
    ~PlasmaNotificationHold() override;

    void setHeld(bool held) override;
    /// Available when the server has the `Inhibited` property that comes with Inhibit.
    void probe(Answer answer) override;

private:
    void converge();

    QDBusConnection m_bus;
    QString m_desktopEntry;
    bool m_wanted = false;
    bool m_inhibiting = false;                     ///< an Inhibit call awaits its cookie
    std::optional<QDBusPendingCall> m_inhibitCall; ///< that call, while it is on its way
    std::optional<uint> m_cookie;
    std::shared_ptr<bool> m_alive = std::make_shared<bool>(true);
};

} // namespace quill

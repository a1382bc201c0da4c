#pragma once

#include "store/focusguard/ScreenLockWatch.h"

#include <QDBusConnection>
#include <QObject>

class QDBusMessage;

namespace quill {

/// Screen locks as logind reports them for the user's session on the system bus (`Lock`,
/// and `LockedHint` turning true); where logind is not there, as the desktop's screensaver
/// reports them on the session bus (`ActiveChanged` of org.gnome.ScreenSaver and
/// org.freedesktop.ScreenSaver). Nothing waits for an answer.
class SessionLockWatch final : public QObject, public ScreenLockWatch {
    Q_OBJECT

public:
    /// `sessionId` is logind's id of this session (XDG_SESSION_ID); empty: the session this
    /// process belongs to.
    SessionLockWatch(QDBusConnection systemBus, QDBusConnection sessionBus, QString sessionId,
                     QObject* parent = nullptr);

    void watch(Locked locked) override;

private Q_SLOTS:
    void onLock();
    void onSessionPropertiesChanged(const QString& interface, const QVariantMap& changed,
                                    const QStringList& invalidated);
    void onScreenSaverActive(bool active);

private:
    void followSession(const QDBusMessage& reply);
    void watchScreenSaver();

    QDBusConnection m_system;
    QDBusConnection m_session;
    QString m_sessionId;
    Locked m_locked;
};

} // namespace quill

#include "store/focusguard/SessionLockWatch.h"

#include "store/BusReply.h"
#include "store/focusguard/FocusGuardLog.h"

#include <QCoreApplication>
#include <QDBusMessage>
#include <QDBusObjectPath>

namespace quill {

namespace {
const QString kLogin = QStringLiteral("org.freedesktop.login1");
const QString kSessionInterface = QStringLiteral("org.freedesktop.login1.Session");
} // namespace

SessionLockWatch::SessionLockWatch(QDBusConnection systemBus, QDBusConnection sessionBus,
                                   QString sessionId, QObject* parent)
    : QObject(parent), m_system(std::move(systemBus)), m_session(std::move(sessionBus)),
      m_sessionId(std::move(sessionId)) {}

void SessionLockWatch::watch(Locked locked) {
    m_locked = std::move(locked);
    if (!m_system.isConnected())
        return watchScreenSaver();
    // Signals come from the session's own path, which "auto" only stands in for in calls.
    QDBusMessage call =
        m_sessionId.isEmpty()
            ? QDBusMessage::createMethodCall(kLogin, QStringLiteral("/org/freedesktop/login1"),
                                             kLogin + QStringLiteral(".Manager"),
                                             QStringLiteral("GetSessionByPID"))
            : QDBusMessage::createMethodCall(kLogin, QStringLiteral("/org/freedesktop/login1"),
                                             kLogin + QStringLiteral(".Manager"),
                                             QStringLiteral("GetSession"));
    if (m_sessionId.isEmpty())
        call << uint(QCoreApplication::applicationPid());
    else
        call << m_sessionId;
    onBusReply(this, m_system.asyncCall(call),
               [this](const QDBusMessage& reply) { followSession(reply); });
}

void SessionLockWatch::followSession(const QDBusMessage& reply) {
    const QString path = reply.type() == QDBusMessage::ReplyMessage && !reply.arguments().isEmpty()
                             ? qvariant_cast<QDBusObjectPath>(reply.arguments().constFirst()).path()
                             : QString();
    if (path.isEmpty()) {
        qCInfo(lcFocusGuard) << "No logind session, watching the screensaver:"
                             << reply.errorMessage();
        return watchScreenSaver();
    }
    // Any sender: naming the service would make Qt ask for its owner, and wait for it.
    m_system.connect(QString(), path, kSessionInterface, QStringLiteral("Lock"), this,
                     SLOT(onLock()));
    m_system.connect(QString(), path, QStringLiteral("org.freedesktop.DBus.Properties"),
                     QStringLiteral("PropertiesChanged"), this,
                     SLOT(onSessionPropertiesChanged(QString, QVariantMap, QStringList)));
}

void SessionLockWatch::watchScreenSaver() {
    m_session.connect(QString(), QStringLiteral("/org/gnome/ScreenSaver"),
                      QStringLiteral("org.gnome.ScreenSaver"), QStringLiteral("ActiveChanged"),
                      this, SLOT(onScreenSaverActive(bool)));
    for (const QString& path :
         {QStringLiteral("/org/freedesktop/ScreenSaver"), QStringLiteral("/ScreenSaver")})
        m_session.connect(QString(), path, QStringLiteral("org.freedesktop.ScreenSaver"),
                          QStringLiteral("ActiveChanged"), this, SLOT(onScreenSaverActive(bool)));
}

void SessionLockWatch::onLock() {
    if (m_locked)
        m_locked();
}

void SessionLockWatch::onSessionPropertiesChanged(const QString& interface,
                                                  const QVariantMap& changed, const QStringList&) {
    if (interface == kSessionInterface && changed.value(QStringLiteral("LockedHint")).toBool())
        onLock();
}

void SessionLockWatch::onScreenSaverActive(bool active) {
    if (active)
        onLock();
}

} // namespace quill

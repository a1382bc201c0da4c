#include "store/focusguard/PlasmaNotificationHold.h"

#include "store/focusguard/FocusGuardLog.h"

#include <QDBusMessage>
#include <QDBusPendingCallWatcher>
#include <QDBusPendingReply>
#include <QDBusVariant>

namespace quill {

namespace {
const QString kService = QStringLiteral("org.freedesktop.Notifications");
const QString kPath = QStringLiteral("/org/freedesktop/Notifications");
const QString kInterface = QStringLiteral("org.freedesktop.Notifications");

QDBusMessage notificationsCall(const QString& method) {
    return QDBusMessage::createMethodCall(kService, kPath, kInterface, method);
}

/// Runs `done` with the reply once it arrives, unless `owner` is gone by then.
template <class Done>
QDBusPendingCall whenAnswered(QObject* owner, QDBusConnection& bus, const QDBusMessage& call,
                              Done done) {
    const QDBusPendingCall pending = bus.asyncCall(call);
    auto* watcher = new QDBusPendingCallWatcher(pending, owner);
    QObject::connect(watcher, &QDBusPendingCallWatcher::finished, owner,
                     [watcher, done = std::move(done)] {
                         watcher->deleteLater();
                         done(QDBusMessage(watcher->reply()));
                     });
    return pending;
}

QDBusMessage unInhibitCall(uint cookie) {
    QDBusMessage call = notificationsCall(QStringLiteral("UnInhibit"));
    call << cookie;
    return call;
}
} // namespace

PlasmaNotificationHold::PlasmaNotificationHold(QDBusConnection bus, QString desktopEntry,
                                               QObject* parent)
    : QObject(parent), m_bus(std::move(bus)), m_desktopEntry(std::move(desktopEntry)) {}

PlasmaNotificationHold::~PlasmaNotificationHold() {
    *m_alive = false;
    if (!m_bus.isConnected())
        return;
    if (m_cookie)
        m_bus.send(unInhibitCall(*m_cookie));
    if (m_inhibiting && m_inhibitCall) {
        // The cookie is still on its way: released when it comes, without waiting for it here.
        auto* watcher = new QDBusPendingCallWatcher(*m_inhibitCall);
        QObject::connect(
            watcher, &QDBusPendingCallWatcher::finished, [watcher, bus = m_bus]() mutable {
                watcher->deleteLater();
                const QDBusMessage reply(watcher->reply());
                if (reply.type() == QDBusMessage::ReplyMessage && !reply.arguments().isEmpty())
                    bus.send(unInhibitCall(reply.arguments().constFirst().toUInt()));
            });
    }
}

void PlasmaNotificationHold::probe(Answer answer) {
    QDBusMessage call = QDBusMessage::createMethodCall(
        kService, kPath, QStringLiteral("org.freedesktop.DBus.Properties"), QStringLiteral("Get"));
    call << kInterface << QStringLiteral("Inhibited");
    whenAnswered(this, m_bus, call, [answer = std::move(answer)](const QDBusMessage& reply) {
        const bool available = reply.type() == QDBusMessage::ReplyMessage;
        if (!available)
            qCDebug(lcFocusGuard) << "No notification inhibition:" << reply.errorMessage();
        answer(available);
    });
}

void PlasmaNotificationHold::setHeld(bool held) {
    m_wanted = held;
    converge();
}

void PlasmaNotificationHold::converge() {
    // One call at a time: a release asked for while Inhibit is on its way waits for the
    // cookie it needs.
    if (m_inhibiting || !m_bus.isConnected())
        return;
    if (m_wanted && !m_cookie) {
        QDBusMessage call = notificationsCall(QStringLiteral("Inhibit"));
        call << m_desktopEntry << QStringLiteral("专注中") << QVariantMap();
        m_inhibiting = true;
        m_inhibitCall = whenAnswered(this, m_bus, call, [this](const QDBusMessage& reply) {
            m_inhibiting = false;
            m_inhibitCall.reset();
            if (reply.type() == QDBusMessage::ReplyMessage && !reply.arguments().isEmpty()) {
                m_cookie = reply.arguments().constFirst().toUInt();
            } else {
                qCWarning(lcFocusGuard)
                    << "Notifications could not be held:" << reply.errorMessage();
                m_wanted = false; // not retried until the next hold
            }
            converge();
        });
    } else if (!m_wanted && m_cookie) {
        m_bus.asyncCall(unInhibitCall(*m_cookie));
        m_cookie.reset();
    }
}

} // namespace quill

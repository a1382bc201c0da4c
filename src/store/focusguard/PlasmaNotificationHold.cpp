#include "store/focusguard/PlasmaNotificationHold.h"

#include "store/BusReply.h"
#include "store/focusguard/FocusGuardLog.h"

#include <QDBusMessage>
#include <QDBusVariant>

namespace quill {

namespace {
const QString kService = QStringLiteral("org.freedesktop.Notifications");
const QString kPath = QStringLiteral("/org/freedesktop/Notifications");
const QString kInterface = QStringLiteral("org.freedesktop.Notifications");

QDBusMessage notificationsCall(const QString& method) {
    return QDBusMessage::createMethodCall(kService, kPath, kInterface, method);
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
        onBusReply(nullptr, *m_inhibitCall, [bus = m_bus](const QDBusMessage& reply) mutable {
            if (reply.type() == QDBusMessage::ReplyMessage && !reply.arguments().isEmpty())
                bus.send(unInhibitCall(reply.arguments().constFirst().toUInt()));
        });
    }
}

void PlasmaNotificationHold::probe(Answer answer) {
    QDBusMessage call = QDBusMessage::createMethodCall(
        kService, kPath, QStringLiteral("org.freedesktop.DBus.Properties"), QStringLiteral("Get"));
    call << kInterface << QStringLiteral("Inhibited");
    onBusReply(
        this, m_bus.asyncCall(call), [answer = std::move(answer)](const QDBusMessage& reply) {
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
        m_inhibitCall = m_bus.asyncCall(call);
        onBusReply(this, *m_inhibitCall, [this](const QDBusMessage& reply) {
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

#include "DesktopNotifier.h"

#include "AppIdentity.h"
#include "store/BusReply.h"
#include "ui/UiLog.h"

#include <QDBusMessage>
#include <QDBusPendingReply>
#include <QVariantMap>

namespace quill {

namespace {
const QString kService = QStringLiteral("org.freedesktop.Notifications");
const QString kPath = QStringLiteral("/org/freedesktop/Notifications");
const QString kInterface = QStringLiteral("org.freedesktop.Notifications");
const QString kDefaultAction = QStringLiteral("default");
} // namespace

DesktopNotifier::DesktopNotifier(QDBusConnection bus, QObject* parent)
    : QObject(parent), m_bus(std::move(bus)) {
    if (!m_bus.isConnected())
        return;
    // Any sender: the server's unique name changes when it restarts.
    m_bus.connect(QString(), kPath, kInterface, QStringLiteral("ActionInvoked"), this,
                  SLOT(onActionInvoked(uint, QString)));
    m_bus.connect(QString(), kPath, kInterface, QStringLiteral("NotificationClosed"), this,
                  SLOT(onClosed(uint, uint)));
    // Servers of notification spec 1.2 send the token to raise a window with just before
    // the action.
    m_bus.connect(QString(), kPath, kInterface, QStringLiteral("ActivationToken"), this,
                  SLOT(onActivationToken(uint, QString)));
}

void DesktopNotifier::show(const QString& summary, const QString& body,
                           const QString& actionLabel) {
    if (!m_bus.isConnected())
        return;
    m_closeWhenShown = false;
    QDBusMessage call =
        QDBusMessage::createMethodCall(kService, kPath, kInterface, QStringLiteral("Notify"));
    const QVariantMap hints{{QStringLiteral("desktop-entry"), appId()},
                            {QStringLiteral("urgency"), QVariant::fromValue(uchar(1))}};
    call << QStringLiteral("Quillmere") << m_id << appId() << summary << body
         << QStringList{kDefaultAction, actionLabel} << hints << qint32(-1);
    onBusReply(this, m_bus.asyncCall(call), [this](const QDBusMessage& reply) { onShown(reply); });
}

void DesktopNotifier::onShown(const QDBusMessage& message) {
    const QDBusPendingReply<uint> reply = message;
    if (reply.isError()) {
        // No notification server is an ordinary desktop; the window still shows the review.
        qCDebug(lcUi) << "No desktop notification:" << reply.error().message();
        return;
    }
    m_id = reply.value();
    if (m_closeWhenShown)
        close();
}

void DesktopNotifier::close() {
    if (!m_bus.isConnected())
        return;
    if (m_id == 0) {
        m_closeWhenShown = true;
        return;
    }
    m_closeWhenShown = false;
    QDBusMessage call = QDBusMessage::createMethodCall(kService, kPath, kInterface,
                                                       QStringLiteral("CloseNotification"));
    call << m_id;
    m_bus.asyncCall(call);
    m_id = 0;
}

void DesktopNotifier::onActionInvoked(uint id, const QString& action) {
    if (id != 0 && id == m_id && action == kDefaultAction)
        Q_EMIT activated(m_token);
    m_token.clear();
}

void DesktopNotifier::onActivationToken(uint id, const QString& token) {
    m_token = id != 0 && id == m_id ? token : QString();
}

void DesktopNotifier::onClosed(uint id, uint) {
    if (id != 0 && id == m_id)
        m_id = 0;
}

} // namespace quill

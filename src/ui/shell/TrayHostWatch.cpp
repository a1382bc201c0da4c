#include "TrayHostWatch.h"

#include "X11WindowHints.h"
#include "store/BusReply.h"

#include <QDBusMessage>
#include <QDBusPendingReply>
#include <QDBusServiceWatcher>
#include <QDBusVariant>

namespace quill {

namespace {
const QString kWatcher = QStringLiteral("org.kde.StatusNotifierWatcher");
const QString kWatcherPath = QStringLiteral("/StatusNotifierWatcher");
} // namespace

TrayHostWatch::TrayHostWatch(QDBusConnection bus, QObject* parent)
    : QObject(parent), m_bus(std::move(bus)) {}

void TrayHostWatch::start() {
    if (m_serviceWatch || m_found)
        return;
    if (x11::systemTrayRunning()) {
        setFound();
        return;
    }
    if (!m_bus.isConnected())
        return;
    // The watcher may start after the app (a desktop still coming up, an extension turned
    // on), and a host may register with it later than the watcher itself.
    m_serviceWatch =
        new QDBusServiceWatcher(kWatcher, m_bus, QDBusServiceWatcher::WatchForRegistration, this);
    connect(m_serviceWatch, &QDBusServiceWatcher::serviceRegistered, this, &TrayHostWatch::ask);
    m_bus.connect(kWatcher, kWatcherPath, kWatcher, QStringLiteral("StatusNotifierHostRegistered"),
                  this, SLOT(ask()));
    ask();
}

void TrayHostWatch::ask() {
    if (m_found)
        return;
    QDBusMessage get = QDBusMessage::createMethodCall(
        kWatcher, kWatcherPath, QStringLiteral("org.freedesktop.DBus.Properties"),
        QStringLiteral("Get"));
    get << kWatcher << QStringLiteral("IsStatusNotifierHostRegistered");
    onBusReply(this, m_bus.asyncCall(get), [this](const QDBusMessage& message) {
        const QDBusPendingReply<QDBusVariant> reply = message;
        if (!reply.isError() && reply.value().variant().toBool())
            setFound();
    });
}

void TrayHostWatch::setFound() {
    if (m_found)
        return;
    m_found = true;
    Q_EMIT hostFound();
}

} // namespace quill

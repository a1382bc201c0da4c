#include "SingleInstance.h"

#include "ui/UiLog.h"

#include <QDir>
#include <QFileInfo>
#include <QLocalServer>
#include <QLocalSocket>

namespace quill {

namespace {
constexpr int kConnectTimeoutMs = 500;
constexpr int kMaxSocketPath = 100; // sun_path holds 108 bytes on Linux, 104 on macOS
const QByteArray kActivate = QByteArrayLiteral("activate\n");
} // namespace

SingleInstance::SingleInstance(const QString& key, QObject* parent) : QObject(parent) {
    // The session's own runtime folder is private to the user and to this login, so a second
    // session (or a test with its own runtime folder) never meets this one.
    const QString runtime = qEnvironmentVariable("XDG_RUNTIME_DIR");
    if (!runtime.isEmpty() && QFileInfo(runtime).isDir()) {
        const QString path = QDir(runtime).filePath(key);
        if (path.toLocal8Bit().size() <= kMaxSocketPath) {
            m_serverName = path;
            return;
        }
    }
    QString user = qEnvironmentVariable("USER");
    if (user.isEmpty())
        user = qEnvironmentVariable("USERNAME");
    m_serverName = key + QLatin1Char('-') + (user.isEmpty() ? QStringLiteral("user") : user);
}

SingleInstance::~SingleInstance() = default;

bool SingleInstance::claim() {
    if (notifyRunning())
        return false;
    m_server = std::make_unique<QLocalServer>();
    m_server->setSocketOptions(QLocalServer::UserAccessOption);
    connect(m_server.get(), &QLocalServer::newConnection, this, &SingleInstance::onNewConnection);
    if (!m_server->listen(m_serverName)) {
        // Nobody answered, so a socket left by a crashed instance is in the way.
        QLocalServer::removeServer(m_serverName);
        if (!m_server->listen(m_serverName))
            qCWarning(lcUi) << "Single-instance socket unavailable:" << m_server->errorString();
    }
    return true;
}

bool SingleInstance::notifyRunning() {
    QLocalSocket socket;
    socket.connectToServer(m_serverName);
    // A local socket answers at once or not at all; this runs before any window exists.
    if (!socket.waitForConnected(kConnectTimeoutMs))
        return false;
    socket.write(kActivate);
    socket.waitForBytesWritten(kConnectTimeoutMs);
    socket.disconnectFromServer();
    return true;
}

void SingleInstance::onNewConnection() {
    while (QLocalSocket* socket = m_server->nextPendingConnection()) {
        connect(socket, &QLocalSocket::disconnected, socket, &QObject::deleteLater);
        auto readRequests = [this, socket] {
            while (socket->canReadLine()) {
                if (socket->readLine() == kActivate)
                    Q_EMIT activationRequested();
            }
        };
        connect(socket, &QLocalSocket::readyRead, this, readRequests);
        readRequests(); // the request may already be buffered
    }
}

} // namespace quill

#include "SingleInstance.h"

#include "ui/UiLog.h"

#include <QDir>
#include <QFileInfo>
#include <QLocalServer>
#include <QLocalSocket>

#include <algorithm>

namespace quill {

namespace {
constexpr int kConnectTimeoutMs = 500;
constexpr int kMaxSocketPath = 100; // sun_path holds 108 bytes on Linux, 104 on macOS
constexpr int kMaxTokenBytes = 512;
const QByteArray kActivate = QByteArrayLiteral("activate");

// Launchers make tokens of printable ASCII; anything else is not passed on to the window system.
bool wellFormedToken(const QByteArray& token) {
    if (token.isEmpty() || token.size() > kMaxTokenBytes)
        return false;
    return std::all_of(token.begin(), token.end(), [](char c) { return c > ' ' && c < 127; });
}
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
    const QString token = takeLaunchToken();
    socket.write(kActivate + (token.isEmpty() ? QByteArray() : ' ' + token.toLatin1()) + '\n');
    socket.waitForBytesWritten(kConnectTimeoutMs);
    socket.disconnectFromServer();
    return true;
}

QString SingleInstance::takeLaunchToken() {
    for (const char* name : {"XDG_ACTIVATION_TOKEN", "DESKTOP_STARTUP_ID"}) {
        const QByteArray token = qgetenv(name);
        qunsetenv(name);
        if (wellFormedToken(token))
            return QString::fromLatin1(token);
    }
    return {};
}

std::optional<QString> SingleInstance::parseRequest(const QByteArray& line) {
    const QByteArray request = line.trimmed();
    if (request == kActivate)
        return QString();
    if (!request.startsWith(kActivate + ' '))
        return std::nullopt;
    const QByteArray token = request.mid(kActivate.size() + 1);
    return wellFormedToken(token) ? QString::fromLatin1(token) : QString();
}

void SingleInstance::onNewConnection() {
    while (QLocalSocket* socket = m_server->nextPendingConnection()) {
        connect(socket, &QLocalSocket::disconnected, socket, &QObject::deleteLater);
        auto readRequests = [this, socket] {
            while (socket->canReadLine()) {
                if (const auto token = parseRequest(socket->readLine()))
                    Q_EMIT activationRequested(*token);
            }
        };
        connect(socket, &QLocalSocket::readyRead, this, readRequests);
        readRequests(); // the request may already be buffered
    }
}

} // namespace quill

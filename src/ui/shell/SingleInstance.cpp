#include "SingleInstance.h"

#include "ui/UiLog.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QLocalServer>
#include <QLocalSocket>
#include <sys/socket.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>

namespace quill {

namespace {
constexpr int kConnectTimeoutMs = 500;
constexpr int kMaxSocketPath = 100; // sun_path holds 108 bytes on Linux, 104 on macOS
constexpr int kMaxTokenBytes = 512;
const QByteArray kActivate = QByteArrayLiteral("activate");
/// A request is one line with at most a token; a peer that sends more is cut off, never
/// buffered.
constexpr qint64 kMaxRequest = 1024;

// Launchers make tokens of printable ASCII; anything else is not passed on to the window system.
bool wellFormedToken(const QByteArray& token) {
    if (token.isEmpty() || token.size() > kMaxTokenBytes)
        return false;
    return std::all_of(token.begin(), token.end(), [](char c) { return c > ' ' && c < 127; });
}

/// The other end runs as this user. Anyone else (a socket planted by another user) is
/// neither asked nor listened to.
bool peerIsThisUser(qintptr descriptor) {
    ucred credentials{};
    socklen_t length = sizeof credentials;
    return descriptor >= 0 &&
           ::getsockopt(int(descriptor), SOL_SOCKET, SO_PEERCRED, &credentials, &length) == 0 &&
           credentials.uid == ::geteuid();
}

/// A folder of this user's alone: created 0700, and only used when it is a real folder (not
/// a link) owned by this user, tightened to 0700 if it was left more open.
bool isPrivateFolder(const QString& path) {
    const QByteArray native = QFile::encodeName(path);
    ::mkdir(native.constData(), 0700);
    struct stat info {};
    if (::lstat(native.constData(), &info) != 0 || !S_ISDIR(info.st_mode) ||
        info.st_uid != ::geteuid())
        return false;
    return (info.st_mode & 077) == 0 || ::chmod(native.constData(), 0700) == 0;
}

QString privateSocketFolder() {
    // The session's own runtime folder is private to the user and to this login, so a second
    // session (or a test with its own runtime folder) never meets this one.
    const QString runtime = qEnvironmentVariable("XDG_RUNTIME_DIR");
    if (QDir::isAbsolutePath(runtime) && QFileInfo(runtime).isDir())
        return runtime;
    // Never a shared folder such as /tmp, where another user could be listening first.
    QString cache = qEnvironmentVariable("XDG_CACHE_HOME");
    if (!QDir::isAbsolutePath(cache))
        cache = QDir::homePath() + QStringLiteral("/.cache");
    QDir().mkpath(cache);
    const QString folder = QDir(cache).filePath(QStringLiteral("Quillmere"));
    return isPrivateFolder(folder) ? folder : QString();
}
} // namespace

SingleInstance::SingleInstance(const QString& key, QObject* parent) : QObject(parent) {
    const QString folder = privateSocketFolder();
    if (folder.isEmpty()) {
        qCWarning(lcUi) << "Single-instance socket unavailable: no private folder for it";
        return;
    }
    m_serverName = QDir(folder).filePath(key);
    if (QFile::encodeName(m_serverName).size() > kMaxSocketPath)
        qCWarning(lcUi) << "Single-instance socket path too long:" << m_serverName;
}

SingleInstance::~SingleInstance() = default;

bool SingleInstance::claim() {
    if (m_serverName.isEmpty())
        return true; // runs on its own rather than not at all
    if (notifyRunning())
        return false;
    m_server = std::make_unique<QLocalServer>();
    m_server->setSocketOptions(QLocalServer::UserAccessOption);
    connect(m_server.get(), &QLocalServer::newConnection, this, &SingleInstance::onNewConnection);
    if (!m_server->listen(m_serverName)) {
        // Nobody of ours answered, so a socket left by a crashed instance is in the way.
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
    if (!peerIsThisUser(socket.socketDescriptor())) {
        qCWarning(lcUi) << "Single-instance socket belongs to another user; not using it";
        socket.abort();
        return false;
    }
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
        if (!peerIsThisUser(socket->socketDescriptor())) {
            socket->abort();
            socket->deleteLater();
            continue;
        }
        socket->setReadBufferSize(kMaxRequest);
        auto readRequests = [this, socket] {
            while (socket->canReadLine()) {
                if (const auto token = parseRequest(socket->readLine(kMaxRequest)))
                    Q_EMIT activationRequested(*token);
            }
            if (socket->bytesAvailable() >= kMaxRequest)
                socket->abort(); // a full buffer and still no line: not one of ours
        };
        connect(socket, &QLocalSocket::readyRead, this, readRequests);
        readRequests(); // the request may already be buffered
    }
}

} // namespace quill

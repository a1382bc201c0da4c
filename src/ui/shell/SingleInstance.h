#pragma once

#include <QObject>
#include <QString>
#include <memory>

class QLocalServer;

namespace quill {

/// Keeps one running copy of the app per user. The first launch listens on a local socket;
/// a later launch finds it, asks it to come to the front and leaves.
class SingleInstance : public QObject {
    Q_OBJECT

public:
    /// `key` names the socket, which lives in the session's runtime folder; without one, in a
    /// 0700 folder of the user's own under the cache home. A peer of another user is refused.
    explicit SingleInstance(const QString& key, QObject* parent = nullptr);
    ~SingleInstance() override;

    /// True when this process is now the one instance. False when another instance answered
    /// and was asked to activate itself (this process should then quit).
    bool claim();
    QString serverName() const { return m_serverName; }

Q_SIGNALS:
    /// Another launch asked the running app to show its main window.
    void activationRequested();

private:
    bool notifyRunning();
    void onNewConnection();

    QString m_serverName;
    std::unique_ptr<QLocalServer> m_server;
};

} // namespace quill

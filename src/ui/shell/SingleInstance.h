#pragma once

#include <QObject>
#include <QString>
#include <memory>
#include <optional>

class QLocalServer;

namespace quill {

/// Keeps one running copy of the app per user. The first launch listens on a local socket;
/// a later launch finds it, asks it to come to the front and leaves. The request carries the
/// later launch's activation token (`XDG_ACTIVATION_TOKEN` on Wayland, `DESKTOP_STARTUP_ID`
/// on X11): the window system lets the running app take the focus with it.
class SingleInstance : public QObject {
    Q_OBJECT

public:
    /// `key` names the socket, which lives in the session's runtime folder; without one, in
    /// the temporary folder with the user name added, so users do not meet each other.
    explicit SingleInstance(const QString& key, QObject* parent = nullptr);
    ~SingleInstance() override;

    /// True when this process is now the one instance. False when another instance answered
    /// and was asked to activate itself (this process should then quit).
    bool claim();
    QString serverName() const { return m_serverName; }

    /// The token this launch was started with (and takes it out of the environment, as it
    /// is good for one activation only); empty when there is none or it is malformed.
    static QString takeLaunchToken();
    /// The token of one request line, or nullopt when the line is no activation request.
    static std::optional<QString> parseRequest(const QByteArray& line);

Q_SIGNALS:
    /// Another launch asked the running app to show its main window; `token` is its launcher's
    /// activation token, empty when it had none.
    void activationRequested(const QString& token);

private:
    bool notifyRunning();
    void onNewConnection();

    QString m_serverName;
    std::unique_ptr<QLocalServer> m_server;
};

} // namespace quill

#pragma once

#include <QByteArray>
#include <QProcess>
#include <QString>
#include <QTemporaryDir>
#include <memory>

namespace quill::test {

/// A private PulseAudio daemon with two null sinks, started and torn down by the test that
/// owns it. It never touches the user's own sound server: its socket and runtime folder live
/// in a temporary directory, and clients find it through PULSE_SERVER.
class PulseTestServer {
public:
    PulseTestServer();
    ~PulseTestServer();

    /// Starts the daemon; on failure returns false and explains why in error().
    bool start();
    /// Ends the daemon, as a restarting sound server does; start() brings it back.
    void stop();
    const QString& error() const { return m_error; }
    QString serverAddress() const;
    /// Points this process's PulseAudio clients (SDL included) at the daemon.
    void exportEnvironment() const;

    /// Runs pactl with arguments; returns its standard output, or a null array on failure.
    QByteArray pactl(const QStringList& arguments);
    /// Index of the module that created the sink, or -1.
    int moduleOfSink(const QString& sink);

private:
    QProcessEnvironment environment() const;
    QTemporaryDir m_dir;
    QProcess m_daemon;
    QString m_error;
};

} // namespace quill::test

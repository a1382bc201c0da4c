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

/// parec recording a sink's monitor as 48 kHz stereo float.
class MonitorRecorder {
public:
    MonitorRecorder(const PulseTestServer& server, const QString& sink);
    ~MonitorRecorder();
    bool start();
    /// Runs the event loop until at least frames more frames arrived (or the cap passes).
    bool waitForFrames(qint64 frames, int capMs = 10000);
    /// Runs the event loop until done() holds (or the cap passes).
    bool waitUntil(const std::function<bool()>& done, int capMs = 10000);
    qint64 frames() const { return m_data.size() / qint64(2 * sizeof(float)); }
    /// Interleaved samples recorded so far.
    const float* samples() const { return reinterpret_cast<const float*>(m_data.constData()); }

private:
    QProcess m_process;
    QByteArray m_data;
};

} // namespace quill::test

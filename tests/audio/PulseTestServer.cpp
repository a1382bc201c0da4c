#include "PulseTestServer.h"

#include <QCoreApplication>
#include <QFile>
#include <QStandardPaths>

namespace quill::test {

PulseTestServer::PulseTestServer() = default;

PulseTestServer::~PulseTestServer() {
    stop();
}

void PulseTestServer::stop() {
    if (m_daemon.state() != QProcess::NotRunning) {
        m_daemon.terminate();
        if (!m_daemon.waitForFinished(5000)) {
            m_daemon.kill();
            m_daemon.waitForFinished(2000);
        }
    }
}

QString PulseTestServer::serverAddress() const {
    return QStringLiteral("unix:") + m_dir.path() + QStringLiteral("/native");
}

QProcessEnvironment PulseTestServer::environment() const {
    QProcessEnvironment env = QProcessEnvironment::systemEnvironment();
    env.insert(QStringLiteral("HOME"), m_dir.path());
    env.insert(QStringLiteral("PULSE_RUNTIME_PATH"), m_dir.path() + QStringLiteral("/runtime"));
    env.insert(QStringLiteral("XDG_RUNTIME_DIR"), m_dir.path() + QStringLiteral("/runtime"));
    env.insert(QStringLiteral("PULSE_SERVER"), serverAddress());
    env.insert(QStringLiteral("PULSE_CLIENTCONFIG"), m_dir.path() + QStringLiteral("/client.conf"));
    return env;
}

bool PulseTestServer::start() {
    const QString binary = QStandardPaths::findExecutable(QStringLiteral("pulseaudio"));
    if (binary.isEmpty() || QStandardPaths::findExecutable(QStringLiteral("pactl")).isEmpty() ||
        QStandardPaths::findExecutable(QStringLiteral("parec")).isEmpty()) {
        m_error = QStringLiteral("pulseaudio, pactl or parec is not installed");
        return false;
    }
    if (!m_dir.isValid()) {
        m_error = QStringLiteral("no temporary directory");
        return false;
    }
    QFile conf(m_dir.path() + QStringLiteral("/client.conf"));
    if (!conf.open(QIODevice::WriteOnly) || conf.write("autospawn = no\n") < 0) {
        m_error = QStringLiteral("cannot write client.conf");
        return false;
    }
    conf.close();

    m_daemon.setProcessEnvironment(environment());
    m_daemon.setProcessChannelMode(QProcess::MergedChannels);
    // As root a per-user daemon needs --system=false spelled out; -n skips the desktop's
    // default script, so only our socket and our two sinks exist.
    m_daemon.start(binary,
                   {QStringLiteral("-n"), QStringLiteral("--daemonize=no"),
                    QStringLiteral("--system=false"), QStringLiteral("--exit-idle-time=-1"),
                    QStringLiteral("--use-pid-file=no"), QStringLiteral("--disallow-exit=yes"),
                    QStringLiteral("--log-target=stderr"), QStringLiteral("--log-level=info"),
                    QStringLiteral("-L"),
                    QStringLiteral("module-native-protocol-unix socket=") + m_dir.path() +
                        QStringLiteral("/native auth-anonymous=1"),
                    QStringLiteral("-L"), QStringLiteral("module-null-sink sink_name=quill_a"),
                    QStringLiteral("-L"), QStringLiteral("module-null-sink sink_name=quill_b")});
    if (!m_daemon.waitForStarted(5000)) {
        m_error = QStringLiteral("pulseaudio did not start: ") + m_daemon.errorString();
        return false;
    }
    // The daemon says when it is ready; read its log until then.
    QByteArray log;
    while (!log.contains("Daemon startup complete")) {
        if (!m_daemon.waitForReadyRead(10000)) {
            m_error = QStringLiteral("pulseaudio did not become ready: ") +
                      QString::fromLocal8Bit(log.right(600));
            return false;
        }
        log += m_daemon.readAll();
    }
    if (pactl({QStringLiteral("set-default-sink"), QStringLiteral("quill_a")}).isNull()) {
        m_error = QStringLiteral("pactl cannot reach the test daemon");
        return false;
    }
    return true;
}

void PulseTestServer::exportEnvironment() const {
    const QProcessEnvironment env = environment();
    for (const char* name : {"PULSE_SERVER", "PULSE_CLIENTCONFIG", "PULSE_RUNTIME_PATH"})
        qputenv(name, env.value(QString::fromLatin1(name)).toLocal8Bit());
    qputenv("SDL_AUDIODRIVER", "pulseaudio");
}

QByteArray PulseTestServer::pactl(const QStringList& arguments) {
    QProcess p;
    p.setProcessEnvironment(environment());
    p.start(QStringLiteral("pactl"), arguments);
    if (!p.waitForFinished(10000) || p.exitStatus() != QProcess::NormalExit || p.exitCode() != 0)
        return {};
    QByteArray out = p.readAllStandardOutput();
    if (out.isNull())
        out = QByteArray("");
    return out;
}

int PulseTestServer::moduleOfSink(const QString& sink) {
    const QByteArray modules =
        pactl({QStringLiteral("list"), QStringLiteral("short"), QStringLiteral("modules")});
    for (const QByteArray& line : modules.split('\n'))
        if (line.contains("sink_name=" + sink.toLatin1()))
            return line.split('\t').value(0).toInt();
    return -1;
}

} // namespace quill::test

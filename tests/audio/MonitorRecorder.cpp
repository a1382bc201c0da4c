#include "MonitorRecorder.h"

#include "AudioTestSupport.h"

namespace quill::test {

MonitorRecorder::MonitorRecorder(const PulseTestServer& server, const QString& sink) {
    QProcessEnvironment env = QProcessEnvironment::systemEnvironment();
    env.insert(QStringLiteral("PULSE_SERVER"), server.serverAddress());
    env.insert(QStringLiteral("PULSE_CLIENTCONFIG"), qEnvironmentVariable("PULSE_CLIENTCONFIG"));
    m_process.setProcessEnvironment(env);
    m_process.setProgram(QStringLiteral("parec"));
    m_process.setArguments({QStringLiteral("-d"), sink + QStringLiteral(".monitor"),
                            QStringLiteral("--format=float32le"), QStringLiteral("--channels=2"),
                            QStringLiteral("--rate=48000"), QStringLiteral("--raw"),
                            QStringLiteral("--latency-msec=20")});
    QObject::connect(&m_process, &QProcess::readyReadStandardOutput,
                     [this] { m_data += m_process.readAllStandardOutput(); });
}

MonitorRecorder::~MonitorRecorder() {
    if (m_process.state() != QProcess::NotRunning) {
        m_process.kill();
        m_process.waitForFinished(3000);
    }
}

bool MonitorRecorder::start() {
    m_process.start();
    return m_process.waitForStarted(5000);
}

bool MonitorRecorder::waitForFrames(qint64 count, int capMs) {
    const qint64 target = frames() + count;
    return waitUntil([&] { return frames() >= target; }, capMs);
}

bool MonitorRecorder::waitUntil(const std::function<bool()>& done, int capMs) {
    return spinUntil(done, capMs);
}

} // namespace quill::test

#include "MonitorRecorder.h"

#include <QEventLoop>
#include <QTimer>

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
    // Real sound arrives in real time; the cap only guards against a hung server.
    QEventLoop loop;
    QTimer cap;
    cap.setSingleShot(true);
    QObject::connect(&cap, &QTimer::timeout, &loop, &QEventLoop::quit);
    QTimer poll;
    QObject::connect(&poll, &QTimer::timeout, &loop, [&] {
        if (done())
            loop.quit();
    });
    cap.start(capMs);
    poll.start(10);
    if (!done())
        loop.exec();
    return done();
}

} // namespace quill::test

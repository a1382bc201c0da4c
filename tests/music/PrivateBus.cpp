#include "PrivateBus.h"

namespace quill::test {

PrivateBus::PrivateBus() {
    m_daemon.setProgram(QStringLiteral("dbus-daemon"));
    m_daemon.setArguments({QStringLiteral("--session"), QStringLiteral("--print-address"),
                           QStringLiteral("--nofork")});
    m_daemon.setProcessChannelMode(QProcess::SeparateChannels);
    m_daemon.start();
    if (!m_daemon.waitForStarted()) {
        m_error = m_daemon.errorString();
        return;
    }
    // The daemon prints its address as its first line once it listens.
    while (!m_daemon.canReadLine()) {
        if (!m_daemon.waitForReadyRead(10000)) {
            m_error = QStringLiteral("dbus-daemon printed no address: ") +
                      QString::fromLocal8Bit(m_daemon.readAllStandardError());
            return;
        }
    }
    m_address = QString::fromUtf8(m_daemon.readLine()).trimmed();
}

PrivateBus::~PrivateBus() {
    if (m_daemon.state() != QProcess::NotRunning) {
        m_daemon.kill();
        m_daemon.waitForFinished();
    }
}

} // namespace quill::test

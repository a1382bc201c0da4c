#include "PrivateBus.h"

#include <QFile>

namespace quill::test {

PrivateBus::PrivateBus() {
    // The standard session configuration without its service folders.
    const QString config = m_dir.filePath(QStringLiteral("bus.conf"));
    QFile file(config);
    if (!file.open(QIODevice::WriteOnly)) {
        m_error = QStringLiteral("no place for the bus configuration");
        return;
    }
    file.write("<busconfig><type>session</type><listen>unix:dir=" + m_dir.path().toUtf8() +
               "</listen><auth>EXTERNAL</auth><policy context=\"default\"><allow "
               "send_destination=\"*\" eavesdrop=\"true\"/><allow eavesdrop=\"true\"/><allow "
               "own=\"*\"/></policy></busconfig>\n");
    file.close();
    m_daemon.setProgram(QStringLiteral("dbus-daemon"));
    m_daemon.setArguments({QStringLiteral("--config-file=") + config,
                           QStringLiteral("--print-address"), QStringLiteral("--nofork")});
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

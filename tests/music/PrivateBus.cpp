#include "PrivateBus.h"

#include <QFile>

namespace quill::test {

namespace {
QByteArray configuration(const QString& folder) {
    return "<!DOCTYPE busconfig PUBLIC \"-//freedesktop//DTD D-Bus Bus Configuration 1.0//EN\"\n"
           " \"http://www.freedesktop.org/standards/dbus/1.0/busconfig.dtd\">\n"
           "<busconfig>\n"
           "  <type>session</type>\n"
           "  <listen>unix:dir=" +
           folder.toUtf8() +
           "</listen>\n"
           "  <auth>EXTERNAL</auth>\n"
           "  <policy context=\"default\">\n"
           "    <allow send_destination=\"*\" eavesdrop=\"true\"/>\n"
           "    <allow eavesdrop=\"true\"/>\n"
           "    <allow own=\"*\"/>\n"
           "  </policy>\n"
           "</busconfig>\n";
}
} // namespace

PrivateBus::PrivateBus() {
    const QString config = m_folder.filePath(QStringLiteral("bus.conf"));
    QFile file(config);
    if (!m_folder.isValid() || !file.open(QIODevice::WriteOnly) ||
        file.write(configuration(m_folder.path())) < 0) {
        m_error = QStringLiteral("cannot write the bus configuration");
        return;
    }
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

#pragma once

#include <QProcess>
#include <QString>
#include <QTemporaryDir>

namespace quill::test {

/// A session bus of the test's own: a dbus-daemon started for it and killed with it, so
/// the tests need no desktop session and see no player of the machine's. It lists no
/// service folders, so nothing installed on the machine (a notification server of Plasma
/// or GNOME, a player) is started on demand.
class PrivateBus {
public:
    PrivateBus();
    ~PrivateBus();
    PrivateBus(const PrivateBus&) = delete;
    PrivateBus& operator=(const PrivateBus&) = delete;

    bool isRunning() const { return !m_address.isEmpty(); }
    QString address() const { return m_address; }
    QString error() const { return m_error; }

private:
    QTemporaryDir m_dir;
    QProcess m_daemon;
    QString m_address;
    QString m_error;
};

} // namespace quill::test

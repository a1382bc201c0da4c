#pragma once

#include <QDBusConnection>
#include <QObject>

class QDBusServiceWatcher;

namespace quill {

/// Finds out, without waiting, whether a tray shows items: a StatusNotifier host on the
/// session bus (Plasma, GNOME's AppIndicator extension) or an X11 system tray. Qt's own check
/// holds the UI thread on D-Bus calls a busy desktop may answer late or never, and keeps a
/// "no" for the whole run; this one answers through the event loop and notices a host that
/// comes after the app.
class TrayHostWatch : public QObject {
    Q_OBJECT

public:
    explicit TrayHostWatch(QDBusConnection bus, QObject* parent = nullptr);

    /// Starts looking; hostFound() follows once a host is there, now or later.
    void start();
    bool found() const { return m_found; }

Q_SIGNALS:
    void hostFound();

private Q_SLOTS:
    void ask();

private:
    void setFound();

    QDBusConnection m_bus;
    QDBusServiceWatcher* m_serviceWatch = nullptr;
    bool m_found = false;
};

} // namespace quill

#pragma once

#include <QDBusConnection>
#include <QString>

namespace quill {

/// Keeps this process's windows with one title above the others, on every desktop and off
/// the task bar, by KWin's own scripting: on Plasma's Wayland session a client cannot ask
/// for any of that itself. Loaded into KWin once, asynchronously; where KWin is not on the
/// session bus (GNOME, a plain X session) the calls fail quietly and nothing changes.
class KWinWindowRule {
public:
    /// Where KWin puts the window: its own choice, or the work area's corner by the panel,
    /// where Plasma keeps its tray (a Wayland client cannot place its windows).
    enum class Placement { Kwin, TrayCorner };

    /// `name` tells this rule's script from the app's others (and replaces an earlier run's).
    KWinWindowRule(QDBusConnection bus, QString title, QString name,
                   Placement placement = Placement::Kwin);

    /// Sends the script to KWin the first time; later calls do nothing.
    void apply();
    /// The script KWin runs for this process id.
    QString script(qint64 pid) const;

private:
    static void load(QDBusConnection bus, const QString& path, const QString& name);

    QDBusConnection m_bus;
    QString m_title;
    QString m_name;
    Placement m_placement;
    bool m_applied = false;
};

} // namespace quill

#include "KWinWindowRule.h"

#include "store/BusReply.h"
#include "ui/UiLog.h"

#include <QCoreApplication>
#include <QDBusMessage>
#include <QDBusPendingReply>
#include <QDir>
#include <QFile>
#include <QStandardPaths>

namespace quill {

namespace {
const QString kService = QStringLiteral("org.kde.KWin");
const QString kScripting = QStringLiteral("org.kde.kwin.Scripting");

// Quotes text for a JavaScript string literal.
QString jsString(const QString& text) {
    QString quoted = text;
    quoted.replace(QLatin1Char('\\'), QStringLiteral("\\\\"))
        .replace(QLatin1Char('\''), QStringLiteral("\\'"));
    return QLatin1Char('\'') + quoted + QLatin1Char('\'');
}
} // namespace

KWinWindowRule::KWinWindowRule(QDBusConnection bus, QString title, QString name,
                               Placement placement)
    : m_bus(std::move(bus)), m_title(std::move(title)), m_name(QStringLiteral("quillmere-") + name),
      m_placement(placement) {}

QString KWinWindowRule::script(qint64 pid) const {
    // In the corner of the work area by the panel (at the top when the panel is there),
    // kept there as the window grows or shrinks.
    const QString corner =
        m_placement == Placement::TrayCorner
            ? QStringLiteral("    var place = function () {\n"
                             "        var a = workspace.clientArea(KWin.PlacementArea, c);\n"
                             "        var s = workspace.clientArea(KWin.ScreenArea, c);\n"
                             "        var g = c.frameGeometry;\n"
                             "        var x = a.x + a.width - g.width;\n"
                             "        var y = a.y > s.y ? a.y : a.y + a.height - g.height;\n"
                             "        if (g.x !== x || g.y !== y)\n"
                             "            c.frameGeometry = { x: x, y: y, width: g.width, "
                             "height: g.height };\n"
                             "    };\n"
                             "    place();\n"
                             "    c.frameGeometryChanged.connect(place);\n")
            : QString();
    return QStringLiteral("function keep(c) {\n"
                          "    if (c.pid !== %1 || c.caption !== %2) return;\n"
                          "    c.keepAbove = true; c.onAllDesktops = true;\n"
                          "    c.skipTaskbar = true; c.skipPager = true; c.skipSwitcher = true;\n"
                          "%3"
                          "}\n"
                          "workspace.clientList().forEach(keep);\n"
                          "workspace.clientAdded.connect(keep);\n")
        .arg(pid)
        .arg(jsString(m_title), corner);
}

void KWinWindowRule::apply() {
    if (m_applied || !m_bus.isConnected())
        return;
    m_applied = true;
    // KWin reads the script from a file; the runtime folder is the user's own.
    QString folder = QStandardPaths::writableLocation(QStandardPaths::RuntimeLocation);
    if (folder.isEmpty())
        folder = QDir::tempPath();
    const QString path = QDir(folder).filePath(m_name + QStringLiteral(".js"));
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly | QIODevice::Truncate)) {
        qCWarning(lcUi) << "The KWin window rule could not be written:" << file.errorString();
        return;
    }
    file.write(script(QCoreApplication::applicationPid()).toUtf8());
    file.close();
    // An earlier run's rule (another process id) is replaced; then this one is loaded and run.
    QDBusMessage unload = QDBusMessage::createMethodCall(
        kService, QStringLiteral("/Scripting"), kScripting, QStringLiteral("unloadScript"));
    unload << m_name;
    onBusReply(nullptr, m_bus.asyncCall(unload),
               [bus = m_bus, path, name = m_name](const QDBusMessage& reply) {
                   if (reply.type() == QDBusMessage::ErrorMessage) {
                       qCDebug(lcUi)
                           << "No KWin scripting on the session bus:" << reply.errorMessage();
                       return;
                   }
                   load(bus, path, name);
               });
}

void KWinWindowRule::load(QDBusConnection bus, const QString& path, const QString& name) {
    QDBusMessage loadScript = QDBusMessage::createMethodCall(
        kService, QStringLiteral("/Scripting"), kScripting, QStringLiteral("loadScript"));
    loadScript << path << name;
    onBusReply(nullptr, bus.asyncCall(loadScript), [bus](const QDBusMessage& reply) mutable {
        const QDBusPendingReply<int> id = reply;
        if (id.isError() || id.value() < 0) {
            qCWarning(lcUi) << "KWin did not load the window rule:" << id.error().message();
            return;
        }
        // Starts every loaded script not yet running. (KWin numbers a script by how many
        // are loaded, so right after an unload the new one's own path can still belong to
        // the old one.)
        bus.asyncCall(QDBusMessage::createMethodCall(kService, QStringLiteral("/Scripting"),
                                                     kScripting, QStringLiteral("start")));
    });
}

} // namespace quill

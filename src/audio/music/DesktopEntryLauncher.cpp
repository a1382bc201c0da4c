#include "audio/music/DesktopEntryLauncher.h"

#include "audio/music/MprisProtocol.h"
#include "audio/music/MusicLog.h"

#include <QFile>
#include <QProcess>
#include <QStandardPaths>

namespace quill {

namespace {

// The string-level escapes every desktop-entry value may use.
QString unescapeValue(const QString& value) {
    QString out;
    out.reserve(value.size());
    for (qsizetype i = 0; i < value.size(); ++i) {
        const QChar c = value.at(i);
        if (c != u'\\' || i + 1 >= value.size()) {
            out += c;
            continue;
        }
        const QChar n = value.at(++i);
        if (n == u's')
            out += u' ';
        else if (n == u'n')
            out += u'\n';
        else if (n == u't')
            out += u'\t';
        else if (n == u'r')
            out += u'\r';
        else if (n == u'\\')
            out += u'\\';
        else
            out += QString(u'\\') + n;
    }
    return out;
}

// Exec's own quoting: blanks separate arguments, double quotes group them, and inside quotes
// a backslash escapes '"', '`', '$' and itself.
QStringList splitExec(const QString& value) {
    QStringList arguments;
    QString current;
    bool quoted = false;
    bool pending = false;
    for (qsizetype i = 0; i < value.size(); ++i) {
        const QChar c = value.at(i);
        if (quoted) {
            if (c == u'"') {
                quoted = false;
            } else if (c == u'\\' && i + 1 < value.size() &&
                       QStringView(u"\"`$\\").contains(value.at(i + 1))) {
                current += value.at(++i);
            } else {
                current += c;
            }
            continue;
        }
        if (c == u'"') {
            quoted = true;
            pending = true;
        } else if (c == u' ' || c == u'\t') {
            if (pending)
                arguments << current;
            current.clear();
            pending = false;
        } else {
            current += c;
            pending = true;
        }
    }
    if (pending)
        arguments << current;
    return arguments;
}

QString withoutFieldCodes(const QString& argument) {
    QString out;
    for (qsizetype i = 0; i < argument.size(); ++i) {
        if (argument.at(i) == u'%' && i + 1 < argument.size()) {
            if (argument.at(i + 1) == u'%')
                out += u'%';
            ++i;
            continue;
        }
        out += argument.at(i);
    }
    return out;
}

} // namespace

QStringList DesktopEntryLauncher::knownEntryNames() {
    return {
        QStringLiteral("netease-cloud-music.desktop"),
        QStringLiteral("com.netease.163music.desktop"),
        QStringLiteral("netease-cloud-music-gtk.desktop"),
        QStringLiteral("com.github.gmg137.netease-cloud-music-gtk.desktop"),
        QStringLiteral("yesplaymusic.desktop"),
    };
}

QStringList DesktopEntryLauncher::musicPlayerEntryNames() {
    static const QStringList musicTypes{QStringLiteral("audio/mpeg"), QStringLiteral("audio/flac"),
                                        QStringLiteral("audio/x-vorbis+ogg"),
                                        QStringLiteral("audio/ogg")};
    QStringList lists;
    for (const QString& dir :
         QStandardPaths::standardLocations(QStandardPaths::GenericConfigLocation))
        lists << dir + QStringLiteral("/mimeapps.list");
    for (const QString& dir :
         QStandardPaths::standardLocations(QStandardPaths::ApplicationsLocation))
        lists << dir + QStringLiteral("/mimeapps.list");
    QStringList names;
    for (const QString& path : std::as_const(lists)) {
        QFile file(path);
        if (!file.open(QIODevice::ReadOnly))
            continue;
        bool inDefaults = false;
        const QStringList lines = QString::fromUtf8(file.readAll()).split(QLatin1Char('\n'));
        for (QString line : lines) {
            line = line.trimmed();
            if (line.startsWith(u'[')) {
                inDefaults = line == QLatin1String("[Default Applications]");
                continue;
            }
            const qsizetype eq = line.indexOf(u'=');
            if (!inDefaults || eq < 0 || !musicTypes.contains(line.left(eq).trimmed()))
                continue;
            for (const QString& entry : line.mid(eq + 1).split(u';', Qt::SkipEmptyParts)) {
                const mpris::PlayerInfo asPlayer{QString(), QString(), entry.trimmed()};
                if (!mpris::isBrowserOrVideoPlayer(asPlayer) && !names.contains(entry.trimmed()))
                    names << entry.trimmed();
            }
        }
    }
    for (const char* known :
         {"org.gnome.Rhythmbox3.desktop", "rhythmbox.desktop", "org.gnome.Music.desktop",
          "org.kde.elisa.desktop", "io.bassi.Amberol.desktop", "org.gnome.Lollypop.desktop",
          "org.strawberrymusicplayer.strawberry.desktop",
          "org.clementine_player.Clementine.desktop", "io.github.quodlibet.QuodLibet.desktop",
          "audacious.desktop", "org.kde.amarok.desktop", "deadbeef.desktop"}) {
        const QString name = QString::fromLatin1(known);
        if (!names.contains(name))
            names << name;
    }
    return names;
}

DesktopEntryLauncher::DesktopEntryLauncher(QStringList entryNames)
    : m_entryNames(std::move(entryNames)) {}

QStringList DesktopEntryLauncher::commandFromDesktopEntry(const QString& entryText) {
    bool inMainGroup = false;
    const QStringList lines = entryText.split(QLatin1Char('\n'));
    for (QString line : lines) {
        line = line.trimmed();
        if (line.startsWith(u'[')) {
            inMainGroup = line == QLatin1String("[Desktop Entry]");
            continue;
        }
        if (!inMainGroup || !line.startsWith(QLatin1String("Exec")))
            continue;
        const qsizetype eq = line.indexOf(u'=');
        if (eq < 0 || line.left(eq).trimmed() != QLatin1String("Exec"))
            continue;
        QStringList command;
        const QStringList parts = splitExec(unescapeValue(line.mid(eq + 1).trimmed()));
        for (const QString& part : parts) {
            // A field code standing alone (%U, %f …) expands to nothing when nothing is opened.
            const QString argument = withoutFieldCodes(part);
            if (argument.isEmpty() && !part.isEmpty())
                continue;
            command << argument;
        }
        return command;
    }
    return {};
}

NetEaseLauncher::Result DesktopEntryLauncher::launchInBackground() {
    for (const QString& name : std::as_const(m_entryNames)) {
        const QString path = QStandardPaths::locate(QStandardPaths::ApplicationsLocation, name);
        if (path.isEmpty())
            continue;
        QFile file(path);
        if (!file.open(QIODevice::ReadOnly))
            continue;
        const QStringList command = commandFromDesktopEntry(QString::fromUtf8(file.readAll()));
        if (command.isEmpty())
            continue;
        qCInfo(lcMusic) << "launching" << path;
        if (QProcess::startDetached(command.first(), command.mid(1)))
            return Result::launched;
        qCWarning(lcMusic) << "could not launch" << command.first();
        return Result::failed;
    }
    return Result::notInstalled;
}

} // namespace quill

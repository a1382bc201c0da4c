#include "audio/music/DesktopEntryLauncher.h"

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
        qCInfo(lcMusic) << "launching the NetEase client from" << path;
        if (QProcess::startDetached(command.first(), command.mid(1)))
            return Result::launched;
        qCWarning(lcMusic) << "could not launch" << command.first();
        return Result::failed;
    }
    return Result::notInstalled;
}

} // namespace quill

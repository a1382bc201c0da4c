#include "audio/AmbientResources.h"

#include <QCoreApplication>
#include <QDir>
#include <QFileInfo>
#include <QStandardPaths>

namespace quill {

AmbientResources::AmbientResources() {
    const QString appDir =
        QCoreApplication::instance() ? QCoreApplication::applicationDirPath() : QString();
    m_directories =
        searchOrder(appDir, QStandardPaths::standardLocations(QStandardPaths::GenericDataLocation));
}

QStringList AmbientResources::searchOrder(const QString& applicationDir,
                                          const QStringList& dataDirs) {
    QStringList order;
    // <prefix>/bin/quillmere beside <prefix>/share/quillmere/Ambient, whatever the prefix;
    // a build tree has the same shape (src/quillmere beside share/).
    if (!applicationDir.isEmpty())
        order << QDir::cleanPath(applicationDir + QStringLiteral("/../share/quillmere/Ambient"));
    for (const QString& dir : dataDirs) {
        const QString candidate = QDir::cleanPath(dir + QStringLiteral("/quillmere/Ambient"));
        if (!order.contains(candidate))
            order << candidate;
    }
    return order;
}

AmbientResources::AmbientResources(QString directory) {
    m_directories << std::move(directory);
}

const QStringList& AmbientResources::extensions() {
    static const QStringList list{QStringLiteral("flac"), QStringLiteral("ogg"),
                                  QStringLiteral("oga"),  QStringLiteral("opus"),
                                  QStringLiteral("wav"),  QStringLiteral("aiff"),
                                  QStringLiteral("aif"),  QStringLiteral("mp3")};
    return list;
}

QString AmbientResources::locate(const QString& raw) const {
    if (raw.isEmpty())
        return {};
    for (const QString& dir : m_directories)
        for (const QString& ext : extensions()) {
            const QString path = dir + QLatin1Char('/') + raw + QLatin1Char('.') + ext;
            if (QFileInfo(path).isFile())
                return path;
        }
    return {};
}

} // namespace quill

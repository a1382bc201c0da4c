#include "audio/AmbientResources.h"

#include <QCoreApplication>
#include <QDir>
#include <QFileInfo>

namespace quill {

AmbientResources::AmbientResources() {
    const QString appDir =
        QCoreApplication::instance() ? QCoreApplication::applicationDirPath() : QString();
    if (!appDir.isEmpty()) {
        // Installed: <prefix>/bin/quillmere and <prefix>/share/quillmere/Ambient.
        m_directories << QDir::cleanPath(appDir + QStringLiteral("/../share/quillmere/Ambient"));
        m_directories << QDir::cleanPath(appDir + QStringLiteral("/share/quillmere/Ambient"));
    }
#ifdef QUILL_BUILD_AMBIENT_DIR
    // Build tree: executables sit in subfolders, the rendered recordings in the top one.
    m_directories << QStringLiteral(QUILL_BUILD_AMBIENT_DIR);
#endif
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

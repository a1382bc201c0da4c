#include "storage/Persistence.h"

#include "storage/DataFileCodec.h"
#include "storage/StorageLog.h"

#include <QDir>
#include <QFile>
#include <QSaveFile>

Q_LOGGING_CATEGORY(lcStorage, "quillmere.storage")

namespace quill::Persistence {

QString dataFilePath(const QString& directory) {
    return QDir(directory).filePath(QStringLiteral("focus-data.json"));
}

LoadResult load(const QString& directory) {
    LoadResult result;
    if (directory.isEmpty())
        return result;
    QFile file(dataFilePath(directory));
    if (!file.exists())
        return result;
    if (!file.open(QIODevice::ReadOnly)) {
        result.unreadableFileExists = true;
        return result;
    }
    if (auto decoded = DataFileCodec::decode(file.readAll()))
        result.data = std::move(*decoded);
    else
        result.unreadableFileExists = true;
    return result;
}

bool writeAtomically(const QString& path, const QByteArray& bytes, QString* error) {
    QSaveFile file(path);
    if (!file.open(QIODevice::WriteOnly)) {
        *error = file.errorString();
        return false;
    }
    if (file.write(bytes) != bytes.size() || !file.commit()) {
        *error = file.errorString();
        file.cancelWriting();
        return false;
    }
    return true;
}

bool save(const QString& directory, const AppSettings& settings,
          const QList<StudySession>& sessions) {
    if (directory.isEmpty()) {
        qCWarning(lcStorage).noquote() << "Quillmere save failed: no data location is available";
        return false;
    }
    if (!QDir().mkpath(directory)) {
        qCWarning(lcStorage).noquote()
            << "Quillmere save failed: cannot create the folder" << directory;
        return false;
    }
    QString error;
    if (!writeAtomically(dataFilePath(directory), DataFileCodec::encode(settings, sessions),
                         &error)) {
        qCWarning(lcStorage).noquote() << "Quillmere save failed: " + error;
        return false;
    }
    return true;
}

bool preserveUnreadable(const QString& directory, const QDateTime& now) {
    const QString path = dataFilePath(directory);
    if (!QFile::exists(path))
        return true;
    const QString stamp = now.toUTC().toString(QStringLiteral("yyyyMMdd'T'HHmmss'Z'"));
    const QString base = path + QStringLiteral(".unreadable-") + stamp;
    // A second unreadable file within the same second gets a counter, never a refusal.
    for (int attempt = 1; attempt <= 100; ++attempt) {
        const QString kept =
            attempt == 1 ? base : base + QLatin1Char('-') + QString::number(attempt);
        if (QFile::exists(kept))
            continue;
        if (QFile::rename(path, kept) || QFile::copy(path, kept)) {
            qCWarning(lcStorage).noquote()
                << "Quillmere data file could not be read; kept it as" << kept;
            return true;
        }
        break;
    }
    qCWarning(lcStorage).noquote()
        << "Quillmere save failed: cannot set aside the unreadable" << path;
    return false;
}

} // namespace quill::Persistence

#include "storage/Persistence.h"

#include "storage/DataFileCodec.h"
#include "storage/StorageLog.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QRegularExpression>
#include <QSaveFile>
#include <cerrno>
#include <unistd.h>

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
    result.stamp = FileStamp::ofDescriptor(file.handle());
    if (auto decoded = DataFileCodec::decode(file.readAll()))
        result.data = std::move(*decoded);
    else
        result.unreadableFileExists = true;
    return result;
}

bool writeAtomically(const QString& path, const QByteArray& bytes, QString* error,
                     FileStamp* writtenStamp) {
    QSaveFile file(path);
    // Each step is checked on its own: a failed flush leaves QSaveFile's later error text
    // empty, and its commit can report success after a buffered write hit a full disk.
    const bool written =
        file.open(QIODevice::WriteOnly) && file.write(bytes) == bytes.size() && file.flush();
    if (!written) {
        *error = file.errorString();
        // QSaveFile words a refusal to write in its own terms; the system's are clearer.
        const QByteArray folder = QFile::encodeName(QFileInfo(path).absolutePath());
        if (!file.isOpen() && ::access(folder.constData(), W_OK) != 0)
            *error = qt_error_string(errno);
        file.cancelWriting();
        return false;
    }
    // Taken before the rename, which alters only the change time: whatever stamp the path
    // shows later is someone else's file if it differs from this.
    const FileStamp stamp = FileStamp::ofDescriptor(file.handle());
    if (!file.commit() || file.error() != QFileDevice::NoError) {
        *error = file.errorString();
        return false;
    }
    if (writtenStamp)
        *writtenStamp = stamp;
    return true;
}

namespace {
QString systemError(int code, const char* fallback) {
    return code != 0 ? qt_error_string(code) : QString::fromLatin1(fallback);
}

bool makeDirectory(const QString& directory, QString* error) {
    const QFileInfo info(directory);
    if (info.exists() && !info.isDir()) {
        *error = qt_error_string(ENOTDIR);
        return false;
    }
    errno = 0;
    if (QDir().mkpath(directory))
        return true;
    *error = systemError(errno, "cannot create the folder");
    return false;
}
} // namespace

bool save(const QString& directory, const AppSettings& settings,
          const QList<StudySession>& sessions, QString* error) {
    return save(directory, PersistedData{settings, sessions, {}}, error);
}

bool save(const QString& directory, const PersistedData& data, QString* error, FileStamp* written) {
    QString description;
    if (directory.isEmpty()) {
        description = QStringLiteral("no data location is available");
    } else if (makeDirectory(directory, &description) &&
               writeAtomically(dataFilePath(directory), DataFileCodec::encode(data), &description,
                               written)) {
        return true;
    }
    qCWarning(lcStorage).noquote() << "Quillmere save failed: " + description;
    if (error)
        *error = description;
    return false;
}

bool isStaleTemporaryName(const QString& fileName) {
    static const QRegularExpression pattern(QStringLiteral("^focus-data\\.json\\.[A-Za-z0-9]{6}$"));
    return pattern.match(fileName).hasMatch();
}

int removeStaleTemporaries(const QString& directory) {
    if (directory.isEmpty())
        return 0;
    int removed = 0;
    const QFileInfoList entries = QDir(directory).entryInfoList(
        {QStringLiteral("focus-data.json.*")}, QDir::Files | QDir::Hidden | QDir::System);
    for (const QFileInfo& entry : entries) {
        if (entry.isSymLink() || !isStaleTemporaryName(entry.fileName()))
            continue;
        if (QFile::remove(entry.filePath()))
            ++removed;
    }
    return removed;
}

bool preserveUnreadable(const QString& directory, const QDateTime& now, QString* error) {
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
    const QString description =
        QStringLiteral("cannot set aside the unreadable ") + QDir::toNativeSeparators(path);
    qCWarning(lcStorage).noquote() << "Quillmere save failed: " + description;
    if (error)
        *error = description;
    return false;
}

} // namespace quill::Persistence

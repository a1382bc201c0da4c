#include "storage/Persistence.h"

#include "storage/DataFileCodec.h"
#include "storage/StorageLog.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QRandomGenerator>
#include <QRegularExpression>
#include <cerrno>
#include <fcntl.h>
#include <optional>
#include <sys/stat.h>
#include <unistd.h>

Q_LOGGING_CATEGORY(lcStorage, "quillmere.storage")

namespace quill::Persistence {

QString dataFilePath(const QString& directory) {
    return QDir(directory).filePath(QStringLiteral("focus-data.json"));
}

namespace {
// Far beyond any real history (100,000 sessions take about 60 MB): anything larger is not ours.
constexpr qint64 kMaxDataFileBytes = qint64(512) * 1024 * 1024;

bool isSaneFile(const struct stat& info) {
    return S_ISREG(info.st_mode) && info.st_size <= kMaxDataFileBytes;
}

/// The whole file, or nothing when it is not a regular file of sane size. Never blocks on a
/// FIFO or a device: the kind is checked before opening, the open does not wait, and the open
/// file is checked again in case the path was swapped in between.
std::optional<QByteArray> readDataFile(const QByteArray& path, FileStamp* stamp) {
    struct stat info {};
    if (::stat(path.constData(), &info) != 0 || !isSaneFile(info))
        return std::nullopt;
    const int fd = ::open(path.constData(), O_RDONLY | O_NONBLOCK | O_CLOEXEC);
    if (fd < 0)
        return std::nullopt;
    QByteArray bytes;
    bool ok = ::fstat(fd, &info) == 0 && isSaneFile(info);
    if (ok) {
        *stamp = FileStamp::ofDescriptor(fd);
        // One byte more than the size says, to notice a file that grew past the bound.
        bytes.resize(qsizetype(info.st_size) + 1);
        qsizetype filled = 0;
        while (ok && filled < bytes.size()) {
            const ssize_t n = ::read(fd, bytes.data() + filled, std::size_t(bytes.size() - filled));
            if (n == 0)
                break;
            if (n < 0 && errno == EINTR)
                continue;
            ok = n > 0;
            filled += n > 0 ? n : 0;
            if (filled == bytes.size() && filled <= kMaxDataFileBytes)
                bytes.resize(std::min<qsizetype>(bytes.size() * 2, kMaxDataFileBytes + 1));
        }
        ok = ok && filled <= kMaxDataFileBytes;
        bytes.truncate(filled);
    }
    ::close(fd);
    if (!ok)
        return std::nullopt;
    return bytes;
}
} // namespace

LoadResult load(const QString& directory) {
    LoadResult result;
    if (directory.isEmpty())
        return result;
    const QByteArray path = QFile::encodeName(dataFilePath(directory));
    struct stat info {};
    if (::lstat(path.constData(), &info) != 0)
        return result; // no file yet
    if (::stat(path.constData(), &info) != 0 && errno == ENOENT)
        return result; // a link to nothing: nothing of the user's to keep
    const std::optional<QByteArray> bytes = readDataFile(path, &result.stamp);
    if (!bytes) {
        qCWarning(lcStorage).noquote()
            << "Quillmere data file is not a regular file of sane size; it will be set aside";
        result.unreadableFileExists = true;
        return result;
    }
    if (auto decoded = DataFileCodec::decode(*bytes))
        result.data = std::move(*decoded);
    else
        result.unreadableFileExists = true;
    return result;
}

namespace {
/// Our own temporaries are named "<file>.quillmere-save-" and six letters or digits, so
/// start-up never mistakes a file of the user's for one of them.
const QString kTemporaryInfix = QStringLiteral(".quillmere-save-");

QString randomSuffix() {
    static const char alphabet[] = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789";
    QString suffix;
    for (int i = 0; i < 6; ++i)
        suffix += QLatin1Char(alphabet[QRandomGenerator::global()->bounded(62)]);
    return suffix;
}

bool writeAll(int fd, const QByteArray& bytes) {
    qsizetype done = 0;
    while (done < bytes.size()) {
        const ssize_t n = ::write(fd, bytes.constData() + done, std::size_t(bytes.size() - done));
        if (n < 0 && errno == EINTR)
            continue;
        if (n <= 0)
            return false;
        done += n;
    }
    return true;
}
} // namespace

bool writeAtomically(const QString& path, const QByteArray& bytes, QString* error,
                     FileStamp* writtenStamp) {
    // A data file the user links elsewhere (a sync folder) is replaced where it lives.
    QString target = path;
    if (const QFileInfo info(path); info.isSymLink() && info.exists())
        target = info.canonicalFilePath();
    // Private from the start: the temporary is created 0600, so the file it becomes is too.
    QByteArray temporary;
    int fd = -1;
    for (int attempt = 0; attempt < 100 && fd < 0; ++attempt) {
        temporary = QFile::encodeName(target + kTemporaryInfix + randomSuffix());
        fd = ::open(temporary.constData(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC | O_NOFOLLOW,
                    0600);
        if (fd < 0 && errno != EEXIST)
            break;
    }
    if (fd < 0) {
        *error = qt_error_string(errno);
        return false;
    }
    // Each step is checked: a full disk may only show at the flush to the device.
    bool ok = writeAll(fd, bytes) && ::fsync(fd) == 0;
    int code = ok ? 0 : errno;
    // Taken before the rename, which alters only the change time: whatever stamp the path
    // shows later is someone else's file if it differs from this.
    const FileStamp stamp = FileStamp::ofDescriptor(fd);
    if (::close(fd) != 0 && ok) {
        ok = false;
        code = errno;
    }
    if (ok && ::rename(temporary.constData(), QFile::encodeName(target).constData()) != 0) {
        ok = false;
        code = errno;
    }
    if (!ok) {
        ::unlink(temporary.constData());
        *error = qt_error_string(code);
        return false;
    }
    // The rename itself reaches the disk with its folder.
    const int folder = ::open(QFile::encodeName(QFileInfo(target).absolutePath()).constData(),
                              O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    if (folder >= 0) {
        ::fsync(folder);
        ::close(folder);
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
    const QByteArray path = QFile::encodeName(directory);
    if (!info.exists()) {
        // The folder's own creation says best what is in the way (a file, a read-only disk).
        QDir().mkpath(info.absolutePath());
        if (::mkdir(path.constData(), 0700) != 0 && errno != EEXIST) {
            *error = systemError(errno, "cannot create the folder");
            return false;
        }
    }
    // Notes are private: a folder an earlier version made open to others is closed now.
    struct stat folder {};
    if (::stat(path.constData(), &folder) == 0 && (folder.st_mode & 077) != 0 &&
        folder.st_uid == ::geteuid())
        ::chmod(path.constData(), folder.st_mode & 0700);
    return true;
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
    static const QRegularExpression pattern(
        QStringLiteral("^focus-data\\.json\\.quillmere-save-[A-Za-z0-9]{6}$"));
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
    if (!QFileInfo(path).exists() && !QFileInfo(path).isSymLink())
        return true;
    const QString stamp = now.toUTC().toString(QStringLiteral("yyyyMMdd'T'HHmmss'Z'"));
    const QString base = path + QStringLiteral(".unreadable-") + stamp;
    // A second unreadable file within the same second gets a counter, never a refusal.
    for (int attempt = 1; attempt <= 100; ++attempt) {
        const QString kept =
            attempt == 1 ? base : base + QLatin1Char('-') + QString::number(attempt);
        if (QFileInfo(kept).exists() || QFileInfo(kept).isSymLink())
            continue;
        // Whatever it is (a FIFO, a device, a folder) is moved aside as it is; only a regular
        // file of sane size is ever copied, since reading anything else may never end.
        struct stat info {};
        const bool copyable =
            ::stat(QFile::encodeName(path).constData(), &info) == 0 && isSaneFile(info);
        if (::rename(QFile::encodeName(path).constData(), QFile::encodeName(kept).constData()) ==
                0 ||
            (copyable && QFile::copy(path, kept))) {
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

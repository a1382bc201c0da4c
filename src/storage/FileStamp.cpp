#include "storage/FileStamp.h"

#include <QFile>
#include <sys/stat.h>

namespace quill {

namespace {
FileStamp fromStat(const struct stat& st) {
    return FileStamp{true, quint64(st.st_dev), quint64(st.st_ino), qint64(st.st_size),
                     qint64(st.st_mtim.tv_sec) * 1'000'000'000 + st.st_mtim.tv_nsec};
}
} // namespace

FileStamp FileStamp::ofDescriptor(int fd) {
    struct stat st {};
    return fd >= 0 && ::fstat(fd, &st) == 0 ? fromStat(st) : FileStamp{};
}

FileStamp FileStamp::ofPath(const QString& path) {
    struct stat st {};
    const QByteArray native = QFile::encodeName(path);
    return !path.isEmpty() && ::stat(native.constData(), &st) == 0 ? fromStat(st) : FileStamp{};
}

} // namespace quill

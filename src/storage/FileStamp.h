#pragma once

#include <QString>
#include <QtGlobal>

namespace quill {

/// Which version of a file is at a path: an atomic replace gives a new inode, a write in place
/// a new size or modification time. Cheap enough to check before every save.
struct FileStamp {
    bool exists = false;
    quint64 device = 0;
    quint64 inode = 0;
    qint64 size = 0;
    qint64 modifiedNs = 0;

    bool operator==(const FileStamp&) const = default;
    static FileStamp ofDescriptor(int fd);
    static FileStamp ofPath(const QString& path);
};

} // namespace quill

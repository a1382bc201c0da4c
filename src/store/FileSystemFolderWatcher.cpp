#include "store/FileSystemFolderWatcher.h"

#include <QDir>
#include <QFileInfo>
#include <QFileSystemWatcher>

namespace quill {

namespace {
class WatchHandle final : public FolderWatcher::Handle {
public:
    WatchHandle(const QString& directory, const QString& fileName, std::function<void()> changed)
        : m_directory(QDir::cleanPath(directory)), m_file(QDir(m_directory).filePath(fileName)),
          m_changed(std::move(changed)) {
        auto onChange = [this] {
            rearm();
            m_changed();
        };
        QObject::connect(&m_watcher, &QFileSystemWatcher::directoryChanged, onChange);
        QObject::connect(&m_watcher, &QFileSystemWatcher::fileChanged, onChange);
        rearm();
    }

private:
    // Watches the folder, or until it exists (the first save creates it) the nearest folder
    // above it, and the file whenever there is one: a replaced file's watch ends with it.
    void rearm() {
        QString folder = m_directory;
        while (!QFileInfo(folder).isDir() && QFileInfo(folder).path() != folder)
            folder = QFileInfo(folder).path();
        if (folder != m_folder && !m_folder.isEmpty())
            m_watcher.removePath(m_folder);
        m_folder = folder;
        if (!m_watcher.directories().contains(folder))
            m_watcher.addPath(folder);
        if (!m_watcher.files().contains(m_file) && QFileInfo::exists(m_file))
            m_watcher.addPath(m_file);
    }

    QString m_directory, m_file, m_folder;
    std::function<void()> m_changed;
    QFileSystemWatcher m_watcher;
};
} // namespace

std::unique_ptr<FolderWatcher::Handle>
FileSystemFolderWatcher::watch(const QString& directory, const QString& fileName,
                               std::function<void()> changed) {
    if (directory.isEmpty())
        return nullptr;
    return std::make_unique<WatchHandle>(directory, fileName, std::move(changed));
}

} // namespace quill

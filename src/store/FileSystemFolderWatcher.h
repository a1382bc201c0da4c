#pragma once

#include "store/FolderWatcher.h"

namespace quill {

/// Watches through the system's file notifications (QFileSystemWatcher). The folder is
/// watched as well as the file: an atomic replace brings a new file, and the old one's watch
/// ends with it.
class FileSystemFolderWatcher final : public FolderWatcher {
public:
    std::unique_ptr<Handle> watch(const QString& directory, const QString& fileName,
                                  std::function<void()> changed) override;
};

} // namespace quill

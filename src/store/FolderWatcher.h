#pragma once

#include <QString>
#include <functional>
#include <memory>

namespace quill {

/// Tells when the data folder or the data file in it changed, so that a file another writer
/// put there is merged while the app runs.
class FolderWatcher {
public:
    class Handle {
    public:
        virtual ~Handle() = default;
    };

    virtual ~FolderWatcher() = default;
    /// Calls `changed` on the main thread after changes to `directory` (which need not exist
    /// yet) or to `fileName` in it, until the handle is destroyed.
    virtual std::unique_ptr<Handle> watch(const QString& directory, const QString& fileName,
                                          std::function<void()> changed) = 0;
};

} // namespace quill

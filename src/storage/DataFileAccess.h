#pragma once

#include "storage/Persistence.h"

#include <memory>

namespace quill {

/// The data file's operations that merging needs, so that they can be run against a file
/// kept in memory; `disk()` is the data file itself.
class DataFileAccess {
public:
    virtual ~DataFileAccess() = default;
    /// The version of the file at the path now; `exists` is false when there is none.
    virtual FileStamp stamp(const QString& directory) = 0;
    virtual Persistence::LoadResult load(const QString& directory) = 0;
    virtual bool setAside(const QString& directory, const QDateTime& now, QString* error) = 0;
    virtual bool save(const QString& directory, const PersistedData& data, QString* error,
                      FileStamp* written) = 0;

    static std::shared_ptr<DataFileAccess> disk();
};

} // namespace quill

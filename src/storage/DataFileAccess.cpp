#include "storage/DataFileAccess.h"

namespace quill {

namespace {
class DiskAccess final : public DataFileAccess {
public:
    FileStamp stamp(const QString& directory) override {
        return directory.isEmpty() ? FileStamp{}
                                   : FileStamp::ofPath(Persistence::dataFilePath(directory));
    }
    Persistence::LoadResult load(const QString& directory) override {
        return Persistence::load(directory);
    }
    bool setAside(const QString& directory, const QDateTime& now, QString* error) override {
        return Persistence::preserveUnreadable(directory, now, error);
    }
    bool save(const QString& directory, const PersistedData& data, QString* error,
              FileStamp* written) override {
        return Persistence::save(directory, data, error, written);
    }
};
} // namespace

std::shared_ptr<DataFileAccess> DataFileAccess::disk() {
    static const auto access = std::make_shared<DiskAccess>();
    return access;
}

} // namespace quill

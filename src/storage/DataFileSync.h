#pragma once

#include "storage/DataFileAccess.h"

#include <QDateTime>
#include <QString>
#include <deque>
#include <optional>

namespace quill {

/// Writes the data file without overwriting what another writer (a sync tool, a second
/// computer) put there: it remembers the file as it last read or wrote it, and when the file
/// at the path is another version, reads it and merges before writing. Used from one thread.
///
/// A merged result goes back to the app, which may hand over more data before it has taken
/// the result in. Each result is numbered; the app says with each hand-over how many it has
/// taken in, and the ones it has not yet are merged into what it hands over.
class DataFileSync {
public:
    struct Result {
        bool saved = false;
        QString error; ///< the system's description when not saved
        /// Set when an outside change was merged: `merged` is what the app's data becomes,
        /// from `sent`, which was the app's data as far as this knew it.
        std::optional<PersistedData> sent, merged;
        int mergeNumber = 0;
    };

    /// `loaded`: what was read at start-up, and `stamp` the version it came from.
    DataFileSync(PersistedData loaded, FileStamp stamp,
                 std::shared_ptr<DataFileAccess> access = DataFileAccess::disk());

    /// Writes `ours`, merged first with the file if that changed since. `takenIn`: the
    /// number of the last merged result the app has taken in.
    Result save(const QString& directory, const PersistedData& ours, const QDateTime& now,
                int takenIn);
    /// Merges the file into `ours` if it changed since, writing only what the file lacks.
    Result refresh(const QString& directory, const PersistedData& ours, const QDateTime& now,
                   int takenIn);

private:
    Result sync(const QString& directory, const PersistedData& ours, const QDateTime& now,
                int takenIn, bool writeAlways);

    struct Handed {
        int number;
        PersistedData sent, merged;
    };
    std::shared_ptr<DataFileAccess> m_access;
    PersistedData m_base;
    FileStamp m_stamp;
    int m_merges = 0;
    std::deque<Handed> m_notTakenIn;
};

} // namespace quill

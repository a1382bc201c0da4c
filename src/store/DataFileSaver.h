#pragma once

#include "storage/DataFileSync.h"
#include "store/WorkQueue.h"

#include <QDateTime>
#include <QString>
#include <cstdint>
#include <functional>
#include <memory>
#include <mutex>
#include <optional>

namespace quill {

/// Saves snapshots of the settings and history on a work queue. A snapshot still waiting
/// when a newer one arrives is replaced by it: every write stores everything, so the file
/// only ever moves forward and a burst of changes costs one write. What another writer put
/// in the file meanwhile is merged in first, and the merged data comes back with the outcome.
class DataFileSaver {
public:
    /// Whether it was saved, what an outside change merged in made of the data, and the
    /// newest snapshot this write stored (or failed to).
    struct Outcome : DataFileSync::Result {
        std::uint64_t serial = 0;
    };
    using Done = std::function<void(const Outcome&)>;

    /// `keepUnreadableFirst`: a file that could not be read is set aside before the first write.
    /// `loaded` and `stamp`: what was read at start-up and from which version of the file.
    DataFileSaver(std::shared_ptr<WorkQueue> queue, bool keepUnreadableFirst,
                  PersistedData loaded = {}, FileStamp stamp = {});

    /// Copies are cheap: the lists share their data until changed. `takenIn`: the number of
    /// the last merged outcome the caller has taken in. Returns the snapshot's serial, which
    /// the outcome that covers it carries.
    std::uint64_t save(const QString& directory, const PersistedData& data, const QDateTime& now,
                       int takenIn, Done done);
    /// Merges the file if another writer changed it; writes only if the app has more.
    void refresh(const QString& directory, const PersistedData& data, const QDateTime& now,
                 int takenIn, Done done);
    /// Writes on the calling thread once the queue is idle, and says how it went: for the
    /// last word before the app goes.
    Outcome saveAndWait(const QString& directory, const PersistedData& data, const QDateTime& now,
                        int takenIn);
    /// Blocks until every snapshot handed over is on disk (or has failed).
    void waitForIdle();

private:
    struct Snapshot {
        QString directory;
        PersistedData data;
        QDateTime now;
        int takenIn = 0;
        bool writeAlways = true;
        std::uint64_t serial = 0;
    };
    struct Shared {
        explicit Shared(DataFileSync s) : sync(std::move(s)) {}
        std::mutex mutex;
        std::optional<Snapshot> waiting;
        bool keepUnreadable = false; ///< only the worker reads and writes it
        DataFileSync sync;           ///< only the worker uses it
    };
    void hand(Snapshot snapshot, Done done);
    static Outcome write(Shared& shared);

    std::shared_ptr<WorkQueue> m_queue;
    std::shared_ptr<Shared> m_shared;
    std::uint64_t m_serial = 0;
};

} // namespace quill

#pragma once

#include "model/AppSettings.h"
#include "model/StudySession.h"
#include "store/WorkQueue.h"

#include <QDateTime>
#include <QList>
#include <QString>
#include <cstdint>
#include <functional>
#include <memory>
#include <mutex>
#include <optional>

namespace quill {

/// Saves snapshots of the settings and history on a work queue. A snapshot still waiting
/// when a newer one arrives is replaced by it: every write stores everything, so the file
/// only ever moves forward and a burst of changes costs one write.
class DataFileSaver {
public:
    struct Outcome {
        bool saved = false;
        QString error;            ///< the system's description when not saved
        std::uint64_t serial = 0; ///< the newest snapshot this write stored (or failed to)
    };
    using Done = std::function<void(const Outcome&)>;

    /// `keepUnreadableFirst`: a file that could not be read is set aside before the first write.
    DataFileSaver(std::shared_ptr<WorkQueue> queue, bool keepUnreadableFirst);

    /// Copies are cheap: the lists share their data until changed. Returns the snapshot's
    /// serial, which the outcome that covers it carries.
    std::uint64_t save(const QString& directory, const AppSettings& settings,
                       const QList<StudySession>& sessions, const QDateTime& now, Done done);
    /// Writes on the calling thread once the queue is idle, and says how it went: for the
    /// last word before the app goes.
    Outcome saveAndWait(const QString& directory, const AppSettings& settings,
                        const QList<StudySession>& sessions, const QDateTime& now);
    /// Blocks until every snapshot handed over is on disk (or has failed).
    void waitForIdle();

private:
    struct Snapshot {
        QString directory;
        AppSettings settings;
        QList<StudySession> sessions;
        QDateTime now;
        std::uint64_t serial = 0;
    };
    struct Shared {
        std::mutex mutex;
        std::optional<Snapshot> waiting;
        bool keepUnreadable = false; ///< only the worker reads and writes it
    };
    static Outcome write(Shared& shared);

    std::shared_ptr<WorkQueue> m_queue;
    std::shared_ptr<Shared> m_shared;
    std::uint64_t m_serial = 0;
};

} // namespace quill

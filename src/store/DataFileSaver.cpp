#include "store/DataFileSaver.h"

#include "storage/Persistence.h"

namespace quill {

DataFileSaver::DataFileSaver(std::shared_ptr<WorkQueue> queue, bool keepUnreadableFirst,
                             PersistedData loaded, FileStamp stamp)
    : m_queue(std::move(queue)),
      m_shared(std::make_shared<Shared>(DataFileSync(std::move(loaded), stamp))) {
    m_shared->keepUnreadable = keepUnreadableFirst;
}

std::uint64_t DataFileSaver::save(const QString& directory, const PersistedData& data,
                                  const QDateTime& now, int takenIn, Done done) {
    const std::uint64_t serial = ++m_serial;
    hand(Snapshot{directory, data, now, takenIn, true, serial}, std::move(done));
    return serial;
}

void DataFileSaver::refresh(const QString& directory, const PersistedData& data,
                            const QDateTime& now, int takenIn, Done done) {
    // It holds everything saved so far, so it covers the newest serial too.
    hand(Snapshot{directory, data, now, takenIn, false, m_serial}, std::move(done));
}

void DataFileSaver::hand(Snapshot snapshot, Done done) {
    bool jobQueued;
    {
        std::lock_guard lock(m_shared->mutex);
        jobQueued = m_shared->waiting.has_value();
        if (jobQueued && m_shared->waiting->writeAlways)
            snapshot.writeAlways = true; // a refresh never cancels a save still waiting
        m_shared->waiting = std::move(snapshot);
    }
    if (jobQueued)
        return; // the job already queued picks up this newer snapshot
    auto outcome = std::make_shared<Outcome>();
    m_queue->post([shared = m_shared, outcome] { *outcome = write(*shared); },
                  [outcome, done = std::move(done)] {
                      if (done)
                          done(*outcome);
                  });
}

DataFileSaver::Outcome DataFileSaver::saveAndWait(const QString& directory,
                                                  const PersistedData& data, const QDateTime& now,
                                                  int takenIn) {
    m_queue->waitForIdle();
    {
        std::lock_guard lock(m_shared->mutex);
        m_shared->waiting = Snapshot{directory, data, now, takenIn, true, ++m_serial};
    }
    return write(*m_shared);
}

void DataFileSaver::waitForIdle() {
    m_queue->waitForIdle();
}

DataFileSaver::Outcome DataFileSaver::write(Shared& shared) {
    std::optional<Snapshot> snapshot;
    {
        std::lock_guard lock(shared.mutex);
        snapshot.swap(shared.waiting);
    }
    Outcome outcome;
    if (!snapshot) {
        outcome.saved = true;
        return outcome;
    }
    outcome.serial = snapshot->serial;
    // A file we could not read is the user's data too: set it aside before replacing it.
    if (shared.keepUnreadable && snapshot->writeAlways) {
        if (!Persistence::preserveUnreadable(snapshot->directory, snapshot->now, &outcome.error))
            return outcome;
        shared.keepUnreadable = false;
    }
    const Snapshot& s = *snapshot;
    static_cast<DataFileSync::Result&>(outcome) =
        s.writeAlways ? shared.sync.save(s.directory, s.data, s.now, s.takenIn)
                      : shared.sync.refresh(s.directory, s.data, s.now, s.takenIn);
    return outcome;
}

} // namespace quill

#include "store/DataFileSaver.h"

#include "storage/Persistence.h"

namespace quill {

DataFileSaver::DataFileSaver(std::shared_ptr<WorkQueue> queue, bool keepUnreadableFirst)
    : m_queue(std::move(queue)), m_shared(std::make_shared<Shared>()) {
    m_shared->keepUnreadable = keepUnreadableFirst;
}

std::uint64_t DataFileSaver::save(const QString& directory, const AppSettings& settings,
                                  const QList<StudySession>& sessions, const QDateTime& now,
                                  Done done) {
    const std::uint64_t serial = ++m_serial;
    bool jobQueued;
    {
        std::lock_guard lock(m_shared->mutex);
        jobQueued = m_shared->waiting.has_value();
        m_shared->waiting = Snapshot{directory, settings, sessions, now, serial};
    }
    if (jobQueued)
        return serial; // the job already queued picks up this newer snapshot
    auto outcome = std::make_shared<Outcome>();
    m_queue->post([shared = m_shared, outcome] { *outcome = write(*shared); },
                  [outcome, done = std::move(done)] {
                      if (done)
                          done(*outcome);
                  });
    return serial;
}

DataFileSaver::Outcome DataFileSaver::saveAndWait(const QString& directory,
                                                  const AppSettings& settings,
                                                  const QList<StudySession>& sessions,
                                                  const QDateTime& now) {
    m_queue->waitForIdle();
    {
        std::lock_guard lock(m_shared->mutex);
        m_shared->waiting = Snapshot{directory, settings, sessions, now, ++m_serial};
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
    if (!snapshot)
        return Outcome{true, {}, 0};
    outcome.serial = snapshot->serial;
    // A file we could not read is the user's data too: set it aside before replacing it.
    if (shared.keepUnreadable) {
        if (!Persistence::preserveUnreadable(snapshot->directory, snapshot->now, &outcome.error))
            return outcome;
        shared.keepUnreadable = false;
    }
    outcome.saved = Persistence::save(snapshot->directory, snapshot->settings, snapshot->sessions,
                                      &outcome.error);
    return outcome;
}

} // namespace quill

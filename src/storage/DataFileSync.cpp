#include "storage/DataFileSync.h"

#include "storage/DataMerge.h"

namespace quill {

namespace {
bool sameData(const PersistedData& a, const PersistedData& b) {
    return a.settings == b.settings && a.ledger == b.ledger && a.sessions == b.sessions;
}
} // namespace

DataFileSync::DataFileSync(PersistedData loaded, FileStamp stamp,
                           std::shared_ptr<DataFileAccess> access)
    : m_access(std::move(access)), m_base(std::move(loaded)), m_stamp(stamp) {}

DataFileSync::Result DataFileSync::save(const QString& directory, const PersistedData& ours,
                                        const QDateTime& now, int takenIn) {
    return sync(directory, ours, now, takenIn, true);
}

DataFileSync::Result DataFileSync::refresh(const QString& directory, const PersistedData& ours,
                                           const QDateTime& now, int takenIn) {
    return sync(directory, ours, now, takenIn, false);
}

DataFileSync::Result DataFileSync::sync(const QString& directory, const PersistedData& ours,
                                        const QDateTime& now, int takenIn, bool writeAlways) {
    Result result;
    while (!m_notTakenIn.empty() && m_notTakenIn.front().number <= takenIn)
        m_notTakenIn.pop_front();
    // Data handed over before the app took in an earlier merge lacks what that merge brought.
    PersistedData data = ours;
    for (const Handed& h : m_notTakenIn)
        data = DataMerge::adopt(h.sent, data, h.merged, now);
    data.ledger.forgetDeletionsBefore(now);
    bool write = writeAlways;
    // One stat on the usual path: a file that is still the version last read or written (or
    // that is gone) has nothing to merge.
    const FileStamp current = m_access->stamp(directory);
    if (current.exists && !(current == m_stamp)) {
        const Persistence::LoadResult theirs = m_access->load(directory);
        if (theirs.unreadableFileExists) {
            // Another writer's file that cannot be read is the user's too: kept beside ours.
            if (!m_access->setAside(directory, now, &result.error))
                return result;
            write = true;
        } else if (theirs.stamp.exists) {
            const PersistedData before = data;
            data = DataMerge::merge(m_base, before, theirs.data, now);
            m_base = theirs.data;
            m_stamp = theirs.stamp;
            write = write || !sameData(data, theirs.data);
            if (!sameData(data, before)) {
                result.mergeNumber = ++m_merges;
                result.sent = before;
                result.merged = data;
                m_notTakenIn.push_back({m_merges, before, data});
            }
        }
    }
    if (write) {
        // A file that keeps a ledger says which write made it.
        if (data.ledger.settingsChangedAt || !data.ledger.deletedSessions.isEmpty())
            data.ledger.revision = QUuid::createUuid();
        FileStamp written;
        result.saved = m_access->save(directory, data, &result.error, &written);
        if (result.saved) {
            m_base = std::move(data);
            m_stamp = written;
        }
    } else {
        result.saved = true;
    }
    return result;
}

} // namespace quill

#include "storage/SyncLedger.h"

namespace quill {

void SyncLedger::recordDeletion(const QUuid& id, const QDateTime& when) {
    const QDateTime date = stamp(when);
    auto it = deletedSessions.find(id);
    if (it == deletedSessions.end())
        deletedSessions.insert(id, date);
    else if (*it < date)
        *it = date;
}

void SyncLedger::forgetDeletionsBefore(const QDateTime& now) {
    const QDateTime oldest = now.addDays(-kKeptDays);
    deletedSessions.removeIf([&](auto entry) { return entry.value() < oldest; });
}

QDateTime SyncLedger::stamp(const QDateTime& date) {
    const qint64 ms = date.toMSecsSinceEpoch();
    const qint64 secs = ms / 1000 - (ms % 1000 < 0 ? 1 : 0);
    return QDateTime::fromSecsSinceEpoch(secs, Qt::UTC);
}

} // namespace quill

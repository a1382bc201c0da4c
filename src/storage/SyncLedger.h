#pragma once

#include <QDateTime>
#include <QMap>
#include <QUuid>
#include <optional>

namespace quill {

/// What the data file remembers so that copies of it changed apart (a sync folder, a second
/// computer) can be merged: which sessions were deleted and when, and when the settings last
/// changed. Dates are whole seconds in UTC, as the file stores them.
struct SyncLedger {
    /// A deletion is remembered this long; a copy that still has the session after that may
    /// bring it back.
    static constexpr int kKeptDays = 90;

    QMap<QUuid, QDateTime> deletedSessions;
    std::optional<QDateTime> settingsChangedAt;
    /// Names the write that made the file, fresh at each write by this app: a file whose
    /// revision is the one last seen was changed by something that keeps no ledger.
    QUuid revision;

    /// What the ledger remembers; the revision names a write, not content.
    bool operator==(const SyncLedger& other) const {
        return deletedSessions == other.deletedSessions &&
               settingsChangedAt == other.settingsChangedAt;
    }
    /// Remembers a deletion; the later date wins when the id is already there.
    void recordDeletion(const QUuid& id, const QDateTime& when);
    void forgetDeletionsBefore(const QDateTime& now);
    /// Whole seconds in UTC, so that what is remembered compares equal after a round trip.
    static QDateTime stamp(const QDateTime& date);
};

} // namespace quill

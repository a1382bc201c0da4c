#include "storage/DataMerge.h"

#include <QHash>
#include <QSet>
#include <algorithm>

namespace quill::DataMerge {

namespace {
using Index = QHash<QUuid, const StudySession*>;

Index indexById(const QList<StudySession>& sessions) {
    Index index;
    index.reserve(sessions.size());
    for (const StudySession& s : sessions)
        index.insert(s.id, &s);
    return index;
}

// When a side's settings took their value. A side that changed them without dating the change
// (an older writer, a hand edit) is taken to have changed them when the change was seen; a
// dated side keeps its date even when older than the base's: a copy that had not yet seen the
// newer settings wrote its own older ones, which is no change.
QDateTime changeDate(const PersistedData& side, const PersistedData& base, const QDateTime& now) {
    const auto& date = side.ledger.settingsChangedAt;
    const auto& before = base.ledger.settingsChangedAt;
    if (side.settings == base.settings)
        return date.value_or(before.value_or(QDateTime::fromSecsSinceEpoch(0, Qt::UTC)));
    if (date && date != before)
        return *date;
    return SyncLedger::stamp(now);
}

void mergeSettings(const PersistedData& base, const PersistedData& ours,
                   const PersistedData& theirs, const QDateTime& now, PersistedData& out) {
    const bool oursChanged = !(ours.settings == base.settings);
    const bool theirsChanged = !(theirs.settings == base.settings);
    const auto& oursDate = ours.ledger.settingsChangedAt;
    const auto& theirsDate = theirs.ledger.settingsChangedAt;
    if (ours.settings == theirs.settings || !theirsChanged) {
        out.settings = ours.settings;
        out.ledger.settingsChangedAt = oursDate && theirsDate ? std::max(*oursDate, *theirsDate)
                                       : oursDate             ? oursDate
                                                              : theirsDate;
        return;
    }
    const QDateTime theirsAt = changeDate(theirs, base, now);
    const QDateTime oursAt = changeDate(ours, base, now);
    // On a tie the file's side wins, so that both copies settle on the same settings.
    const bool theirsWin = oursAt <= theirsAt;
    out.settings = theirsWin ? theirs.settings : ours.settings;
    out.ledger.settingsChangedAt = std::max(oursAt, theirsAt);
}
} // namespace

PersistedData merge(const PersistedData& base, const PersistedData& ours,
                    const PersistedData& theirs, const QDateTime& now) {
    PersistedData out;
    mergeSettings(base, ours, theirs, now, out);

    SyncLedger& ledger = out.ledger;
    ledger.deletedSessions = ours.ledger.deletedSessions;
    for (auto it = theirs.ledger.deletedSessions.cbegin();
         it != theirs.ledger.deletedSessions.cend(); ++it)
        ledger.recordDeletion(it.key(), it.value());
    const Index theirsById = indexById(theirs.sessions);
    // A copy of this app records what it deletes; what its file lacks otherwise it has not
    // seen yet (a copy that was offline, a sync tool's conflict resolution picking the other
    // version). Anything else (an older version, a script, a text editor) deletes by leaving
    // out; it leaves no revision of its own.
    const bool writtenByACopy =
        !theirs.ledger.revision.isNull() && theirs.ledger.revision != base.ledger.revision;
    for (const StudySession& s : writtenByACopy ? QList<StudySession>{} : base.sessions)
        if (!theirsById.contains(s.id) && !ledger.deletedSessions.contains(s.id))
            ledger.recordDeletion(s.id, now);

    const Index baseById = indexById(base.sessions);
    QSet<QUuid> taken;
    taken.reserve(ours.sessions.size() + theirs.sessions.size());
    QList<StudySession>& sessions = out.sessions;
    sessions.reserve(ours.sessions.size() + theirs.sessions.size());
    for (const StudySession& s : ours.sessions) {
        if (ledger.deletedSessions.contains(s.id) || taken.contains(s.id))
            continue;
        taken.insert(s.id);
        const StudySession* other = theirsById.value(s.id);
        const StudySession* before = baseById.value(s.id);
        // Changed only in the file: the file's version; changed here (or on both): ours.
        sessions.append(other && before && *before == s ? *other : s);
    }
    for (const StudySession& s : theirs.sessions) {
        if (ledger.deletedSessions.contains(s.id) || taken.contains(s.id))
            continue;
        taken.insert(s.id);
        sessions.append(s);
    }
    std::stable_sort(sessions.begin(), sessions.end(),
                     [](const StudySession& a, const StudySession& b) {
                         if (a.startedAt != b.startedAt)
                             return a.startedAt > b.startedAt;
                         return a.id < b.id;
                     });
    ledger.forgetDeletionsBefore(now);
    return out;
}

PersistedData adopt(const PersistedData& sent, const PersistedData& current,
                    const PersistedData& merged, const QDateTime& now) {
    // The lists are shared until changed, so "unchanged" costs no walk through the history.
    const bool unchanged = current.sessions.constData() == sent.sessions.constData() &&
                           current.sessions.size() == sent.sessions.size() &&
                           current.settings == sent.settings && current.ledger == sent.ledger;
    return unchanged ? merged : merge(sent, current, merged, now);
}

} // namespace quill::DataMerge

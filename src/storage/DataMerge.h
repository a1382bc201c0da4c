#pragma once

#include "storage/PersistedData.h"

namespace quill::DataMerge {

/// Merges a data file that another writer changed into the app's own data, by session id.
/// `base` is the file as this app last read or wrote it, `ours` the app's data now, `theirs`
/// the file now. Sessions from either side are kept unless deleted on either side: a deletion
/// is known from either ledger, or, when `theirs` was not written by a copy of this app (its
/// revision is none or the one in `base`), from a session that was in `base` and is gone
/// from `theirs`. Otherwise a session missing from one side is one
/// that side has not seen yet. Settings come from the side whose settings are newer by the
/// ledger's dates. The result is sorted newest first and forgets deletions older than the
/// ledger keeps them.
PersistedData merge(const PersistedData& base, const PersistedData& ours,
                    const PersistedData& theirs, const QDateTime& now);

/// What the app's data becomes when a merge made from `sent` comes back after the app moved
/// on to `current`: the merged data itself when nothing changed meanwhile, else the changes
/// made meanwhile merged over it.
PersistedData adopt(const PersistedData& sent, const PersistedData& current,
                    const PersistedData& merged, const QDateTime& now);

} // namespace quill::DataMerge

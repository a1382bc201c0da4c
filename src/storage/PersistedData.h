#pragma once

#include "model/AppSettings.h"
#include "model/StudySession.h"
#include "storage/SyncLedger.h"

#include <QList>

namespace quill {

/// The whole content of the data file.
struct PersistedData {
    AppSettings settings;
    QList<StudySession> sessions;
    SyncLedger ledger;
};

} // namespace quill

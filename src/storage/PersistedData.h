#pragma once

#include "model/AppSettings.h"
#include "model/StudySession.h"

#include <QList>

namespace quill {

/// The whole content of the data file.
struct PersistedData {
    AppSettings settings;
    QList<StudySession> sessions;
};

} // namespace quill

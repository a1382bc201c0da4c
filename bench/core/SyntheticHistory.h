#pragma once

#include "model/AppSettings.h"
#include "model/StudySession.h"

#include <QList>

namespace quill::bench {

/// The instant the synthetic histories end at, and the benchmarks' "now".
QDateTime historyEnd();

/// `count` sessions, newest first, a few per day going back from historyEnd(): about eight
/// events each, a short note, task names from a realistic mix (Chinese, English, none).
QList<StudySession> syntheticHistory(qsizetype count);

/// Settings as a long-time user has them: a task list, ambient sounds and volumes.
AppSettings syntheticSettings();

} // namespace quill::bench

#pragma once

#include "model/AppSettings.h"
#include "model/StudySession.h"

#include <QDateTime>

namespace quill::screenshots {

/// A week of plausible rounds ending today, fixed so every run draws the same pictures.
QList<StudySession> demoSessions(const QDateTime& now);
/// Settings with a few tasks, one chosen, in the given appearance.
AppSettings demoSettings(AppearanceMode appearance);

} // namespace quill::screenshots

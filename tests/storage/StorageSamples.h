#pragma once

#include "model/AppSettings.h"
#include "model/StudySession.h"
#include "support/SampleSession.h"
#include "support/WarningCatcher.h"

#include <QDateTime>
#include <QStringList>
#include <QTimeZone>

namespace quill::test {

inline QDateTime utc(int y, int mo, int d, int h, int mi, int s = 0, int ms = 0) {
    return QDateTime(QDate(y, mo, d), QTime(h, mi, s, ms), Qt::UTC);
}

inline FocusEvent eventAt(const char* uuid, const QDateTime& date, qint64 elapsed,
                          FocusEventKind kind) {
    return FocusEvent{QUuid::fromString(QLatin1String(uuid)), date, elapsed, kind};
}

/// A session with every required field set to plain values.
inline StudySession plainSession(const char* uuid, const QDateTime& start) {
    StudySession s = sampleSession(start);
    s.id = QUuid::fromString(QLatin1String(uuid));
    s.plannedMinutes = 30;
    return s;
}

/// The settings keys a data file may leave out.
inline constexpr const char* kOptionalSettingKeys[] = {"musicService",
                                                       "appearanceMode",
                                                       "floatingTimerOnMinimize",
                                                       "floatingSignalButtons",
                                                       "taskNames",
                                                       "selectedTaskName",
                                                       "ambientSounds",
                                                       "ambientVolumes",
                                                       "ambientMasterVolume",
                                                       "ambientFollowsFocus",
                                                       "pauseNotificationsWhileFocusing",
                                                       "pauseRoundOnScreenLock"};

/// `s` with every optional setting absent, as a file that leaves them all out reads.
inline AppSettings withoutOptionals(AppSettings s) {
    s.musicService.reset();
    s.appearanceMode.reset();
    s.floatingTimerOnMinimize.reset();
    s.floatingSignalButtons.reset();
    s.taskNames.reset();
    s.selectedTaskName.reset();
    s.ambientSounds.reset();
    s.ambientVolumes.reset();
    s.ambientMasterVolume.reset();
    s.ambientFollowsFocus.reset();
    s.pauseNotificationsWhileFocusing.reset();
    s.pauseRoundOnScreenLock.reset();
    return s;
}

} // namespace quill::test

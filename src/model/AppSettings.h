#pragma once

#include "model/AmbientLevels.h"
#include "model/SettingsEnums.h"

#include <QList>
#include <QString>
#include <algorithm>
#include <map>
#include <optional>

namespace quill {

/// The single persisted record of user preferences. Optional fields may be absent
/// (older data files); readers substitute the documented value through the accessors.
struct AppSettings {
    qint64 selectedDurationMinutes = 50;
    qint64 reminderMinimumMinutes = 3;
    qint64 reminderMaximumMinutes = 5;
    qint64 microBreakSeconds = 10;
    QString reminderSound = QStringLiteral("Glass");
    QString completionSound = QStringLiteral("Hero");
    bool showNextReminder = false;
    bool autoPlayMusic = false;
    std::optional<MusicService> musicService = MusicService::appleMusic;
    MusicSource musicSource = MusicSource::library;
    QString playlistName;
    std::optional<AppearanceMode> appearanceMode = AppearanceMode::dark;
    std::optional<bool> floatingTimerOnMinimize = true;
    std::optional<bool> floatingSignalButtons = false;
    std::optional<QList<QString>> taskNames = QList<QString>{};
    std::optional<QString> selectedTaskName;
    std::optional<QList<QString>> ambientSounds = QList<QString>{};
    std::optional<std::map<QString, double>> ambientVolumes = std::map<QString, double>{};
    std::optional<double> ambientMasterVolume = 0.7;
    std::optional<bool> ambientFollowsFocus = true;

    bool operator==(const AppSettings&) const = default;

    // Effective values: an absent field reads as its documented value.
    MusicService effectiveMusicService() const {
        return musicService.value_or(MusicService::appleMusic);
    }
    AppearanceMode effectiveAppearance() const {
        return appearanceMode.value_or(AppearanceMode::dark);
    }
    bool effectiveFloatingTimerOnMinimize() const { return floatingTimerOnMinimize.value_or(true); }
    bool effectiveFloatingSignalButtons() const { return floatingSignalButtons.value_or(false); }
    QList<QString> effectiveTaskNames() const { return taskNames.value_or(QList<QString>{}); }
    /// The lowest latest-reminder time the repair keeps: the earliest time, at least 1.
    qint64 reminderMaximumFloor() const { return std::max<qint64>(reminderMinimumMinutes, 1); }
    double effectiveMasterVolume() const { return ambientMasterVolume.value_or(0.7); }
    bool effectiveAmbientFollowsFocus() const { return ambientFollowsFocus.value_or(true); }

    /// Valid entries of `ambientSounds`, in stored order, repeats kept.
    QList<AmbientSound> selectedAmbientSounds() const;
    /// Stored volume for the sound, unclamped; 0.7 when none is stored.
    double ambientVolume(AmbientSound sound) const;
    /// Squared volumes for the selected sounds, 0 for the rest; squared master.
    AmbientLevels ambientLevels() const;
};

/// The settings repair: task list cleaned and de-duplicated, selection checked, ranges limited.
AppSettings normalizedSettings(const AppSettings& settings);

} // namespace quill

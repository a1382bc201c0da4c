#include "model/AppSettings.h"

#include "model/TextRules.h"

#include <QSet>
#include <algorithm>

namespace quill {

QList<AmbientSound> AppSettings::selectedAmbientSounds() const {
    QList<AmbientSound> result;
    if (!ambientSounds)
        return result;
    for (const QString& raw : *ambientSounds)
        if (auto sound = ambientSoundFromRaw(raw))
            result.append(*sound);
    return result;
}

double AppSettings::ambientVolume(AmbientSound sound) const {
    if (ambientVolumes) {
        auto it = ambientVolumes->find(rawValue(sound));
        if (it != ambientVolumes->end())
            return it->second;
    }
    return 0.7;
}

AmbientLevels AppSettings::ambientLevels() const {
    AmbientLevels levels;
    const double master = effectiveMasterVolume();
    levels.master = static_cast<float>(master * master);
    const QList<AmbientSound> selected = selectedAmbientSounds();
    for (AmbientSound sound : kAllAmbientSounds) {
        if (selected.contains(sound)) {
            const double v = ambientVolume(sound);
            levels.sounds[indexOf(sound)] = static_cast<float>(v * v);
        } else {
            levels.sounds[indexOf(sound)] = 0.0f;
        }
    }
    return levels;
}

AppSettings normalizedSettings(const AppSettings& settings) {
    AppSettings out = settings;

    // Each name is folded once; the repair runs on every settings change and round start,
    // so it must stay linear in the length of the list.
    const QList<QString> entries = settings.effectiveTaskNames();
    QList<QString> tasks;
    tasks.reserve(entries.size());
    QSet<QString> seenKeys;
    seenKeys.reserve(entries.size());
    for (const QString& entry : entries) {
        const QString name = text::cleanedTaskName(entry);
        if (name.isEmpty())
            continue;
        const QString key = text::caseAndDiacriticFoldKey(name);
        if (seenKeys.contains(key))
            continue;
        seenKeys.insert(key);
        tasks.append(name);
    }
    out.taskNames = tasks;

    if (settings.selectedTaskName) {
        const QString selected = text::cleanedTaskName(*settings.selectedTaskName);
        const bool listed = tasks.contains(selected) ||
                            std::any_of(tasks.begin(), tasks.end(), [&](const QString& t) {
                                return text::canonicallyEqual(t, selected);
                            });
        out.selectedTaskName = listed ? std::optional<QString>(selected) : std::nullopt;
    }

    out.selectedDurationMinutes = std::clamp<qint64>(settings.selectedDurationMinutes, 1, 1440);
    out.reminderMinimumMinutes = std::clamp<qint64>(settings.reminderMinimumMinutes, 1, 60);
    out.reminderMaximumMinutes =
        std::max(std::min<qint64>(settings.reminderMaximumMinutes, 90), out.reminderMaximumFloor());
    out.microBreakSeconds = std::clamp<qint64>(settings.microBreakSeconds, 5, 60);
    return out;
}

} // namespace quill

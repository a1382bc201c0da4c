#include "SettingsBridge.h"

#include <algorithm>
#include <cmath>

namespace quill {

SettingsBridge::SettingsBridge(QObject* parent) : StoreViewModel(parent) {}

void SettingsBridge::connectStore(AppStore* store) {
    connect(store, &AppStore::settingsChanged, this, &SettingsBridge::changed);
}

AppSettings SettingsBridge::current() const {
    return store() ? store()->settings() : AppSettings{};
}

template <class Edit> void SettingsBridge::write(Edit edit) {
    if (!store())
        return;
    AppSettings updated = store()->settings();
    edit(updated);
    store()->setSettings(updated);
}

int SettingsBridge::selectedDurationMinutes() const {
    return int(current().selectedDurationMinutes);
}

void SettingsBridge::setSelectedDurationMinutes(int minutes) {
    write([minutes](AppSettings& s) { s.selectedDurationMinutes = minutes; });
}

int SettingsBridge::reminderMinimumMinutes() const {
    return int(current().reminderMinimumMinutes);
}

void SettingsBridge::setReminderMinimumMinutes(int minutes) {
    write([minutes](AppSettings& s) { s.reminderMinimumMinutes = minutes; });
}

int SettingsBridge::reminderMaximumMinutes() const {
    return int(current().reminderMaximumMinutes);
}

void SettingsBridge::setReminderMaximumMinutes(int minutes) {
    const int floor = reminderMaximumFloor();
    write(
        [minutes, floor](AppSettings& s) { s.reminderMaximumMinutes = std::max(minutes, floor); });
}

int SettingsBridge::reminderMaximumFloor() const {
    return int(std::max<qint64>(current().reminderMinimumMinutes, 1));
}

bool SettingsBridge::showNextReminder() const {
    return current().showNextReminder;
}

bool SettingsBridge::darkAppearance() const {
    return current().effectiveAppearance() == AppearanceMode::dark;
}

bool SettingsBridge::ambientFollowsFocus() const {
    return current().effectiveAmbientFollowsFocus();
}

void SettingsBridge::setAmbientFollowsFocus(bool follows) {
    write([follows](AppSettings& s) { s.ambientFollowsFocus = follows; });
}

double SettingsBridge::ambientMasterVolume() const {
    return current().effectiveMasterVolume();
}

void SettingsBridge::setAmbientMasterVolume(double volume) {
    // A slider never sends anything else, but a script might: keep the stored value sane.
    const double v = std::isfinite(volume) ? std::clamp(volume, 0.0, 1.0) : 0.0;
    write([v](AppSettings& s) { s.ambientMasterVolume = v; });
}

QStringList SettingsBridge::taskNames() const {
    return current().effectiveTaskNames();
}

bool SettingsBridge::floatingTimerOnMinimize() const {
    return current().effectiveFloatingTimerOnMinimize();
}

bool SettingsBridge::floatingSignalButtons() const {
    return current().effectiveFloatingSignalButtons();
}

} // namespace quill

#include "SettingsBridge.h"

#include <algorithm>
#include <cmath>

namespace quill {

SettingsBridge::SettingsBridge(AppStore& store, QObject* parent) : StoreViewModel(store, parent) {
    follow(&AppStore::settingsChanged, &SettingsBridge::changed);
}

AppSettings SettingsBridge::current() const {
    return store().settings();
}

bool SettingsBridge::ambientFollowsFocus() const {
    return current().effectiveAmbientFollowsFocus();
}

void SettingsBridge::setAmbientFollowsFocus(bool follows) {
    editSettings([follows](AppSettings& s) { s.ambientFollowsFocus = follows; });
}

double SettingsBridge::ambientMasterVolume() const {
    return current().effectiveMasterVolume();
}

void SettingsBridge::setAmbientMasterVolume(double volume) {
    // A slider never sends anything else, but a script might: keep the stored value sane.
    const double v = std::isfinite(volume) ? std::clamp(volume, 0.0, 1.0) : 0.0;
    editSettings([v](AppSettings& s) { s.ambientMasterVolume = v; });
}

} // namespace quill

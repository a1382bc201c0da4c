#include "FocusGuardViewModel.h"

namespace quill {

FocusGuardViewModel::FocusGuardViewModel(AppStore& store, QObject* parent)
    : StoreViewModel(store, parent) {
    follow(&AppStore::settingsChanged, &FocusGuardViewModel::changed);
    follow(&AppStore::notificationHoldAvailableChanged, &FocusGuardViewModel::changed);
}

bool FocusGuardViewModel::holdAvailable() const {
    return store().notificationHoldAvailable();
}

bool FocusGuardViewModel::holdNotifications() const {
    return holdAvailable() && store().settings().effectivePauseNotifications();
}

void FocusGuardViewModel::setHoldNotifications(bool on) {
    if (holdAvailable())
        editSettings([on](AppSettings& s) { s.pauseNotificationsWhileFocusing = on; });
    else
        Q_EMIT changed(); // the switch shows off again
}

QString FocusGuardViewModel::holdDetail() const {
    return holdAvailable() ? QStringLiteral("计时和微休息期间不弹出通知，暂停或结束后恢复原样")
                           : QStringLiteral("当前桌面无法暂停通知（支持 GNOME 和 KDE Plasma）");
}

bool FocusGuardViewModel::pauseOnLock() const {
    return store().settings().effectivePauseOnScreenLock();
}

void FocusGuardViewModel::setPauseOnLock(bool on) {
    editSettings([on](AppSettings& s) { s.pauseRoundOnScreenLock = on; });
}

} // namespace quill

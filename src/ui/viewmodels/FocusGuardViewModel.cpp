#include "FocusGuardViewModel.h"

namespace quill {

FocusGuardViewModel::FocusGuardViewModel(QObject* parent) : StoreViewModel(parent) {}

void FocusGuardViewModel::connectStore(AppStore* store) {
    connect(store, &AppStore::settingsChanged, this, &FocusGuardViewModel::changed);
    connect(store, &AppStore::notificationHoldAvailableChanged, this,
            &FocusGuardViewModel::changed);
}

bool FocusGuardViewModel::holdAvailable() const {
    return store() && store()->notificationHoldAvailable();
}

bool FocusGuardViewModel::holdNotifications() const {
    return holdAvailable() && store()->settings().effectivePauseNotifications();
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
    return store() && store()->settings().effectivePauseOnScreenLock();
}

void FocusGuardViewModel::setPauseOnLock(bool on) {
    editSettings([on](AppSettings& s) { s.pauseRoundOnScreenLock = on; });
}

} // namespace quill

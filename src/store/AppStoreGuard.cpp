// The focus guard: the desktop's banners are held while a round runs, and a locked screen
// pauses the round.
#include "store/AppStore.h"

namespace quill {

void AppStore::startFocusGuard() {
    const std::weak_ptr<bool> alive = m_alive;
    if (m_services.notificationHold) {
        m_services.notificationHold->probe([this, alive](bool available) {
            if (auto a = alive.lock(); !a || !*a)
                return;
            m_notificationHoldAvailable = available;
            Q_EMIT notificationHoldAvailableChanged();
        });
    }
    if (m_services.screenLock) {
        m_services.screenLock->watch([this, alive] {
            if (auto a = alive.lock(); a && *a)
                pauseForScreenLock();
        });
    }
}

void AppStore::updateNotificationHold() {
    if (!m_services.notificationHold)
        return;
    const bool running = m_phase == SessionPhase::focusing || m_phase == SessionPhase::microBreak;
    const bool held = running && m_settings.effectivePauseNotifications();
    if (held == m_notificationsHeld)
        return;
    m_notificationsHeld = held;
    m_services.notificationHold->setHeld(held);
}

void AppStore::pauseForScreenLock() {
    if (m_settings.effectivePauseOnScreenLock())
        pauseRunningRound(QStringLiteral("锁屏期间本轮已暂停。"));
}

} // namespace quill

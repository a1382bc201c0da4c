#pragma once

#include "StoreViewModel.h"

namespace quill {

/// The "专注保护" card: holding the desktop's notifications during a round, where the
/// desktop allows it, and pausing the round when the screen locks.
class FocusGuardViewModel : public StoreViewModel {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("Built by ViewModels on the app's store")
    /// The desktop lets the app hold its notifications.
    Q_PROPERTY(bool holdAvailable READ holdAvailable NOTIFY changed)
    /// Notifications are held while focusing; shown off where they cannot be.
    Q_PROPERTY(
        bool holdNotifications READ holdNotifications WRITE setHoldNotifications NOTIFY changed)
    /// The line under the notification switch: what it does, or why it is unavailable.
    Q_PROPERTY(QString holdDetail READ holdDetail NOTIFY changed)
    /// A locked screen pauses the running round (on when unset).
    Q_PROPERTY(bool pauseOnLock READ pauseOnLock WRITE setPauseOnLock NOTIFY changed)

public:
    explicit FocusGuardViewModel(AppStore& store, QObject* parent = nullptr);

    bool holdAvailable() const;
    bool holdNotifications() const;
    void setHoldNotifications(bool on);
    QString holdDetail() const;
    bool pauseOnLock() const;
    void setPauseOnLock(bool on);

Q_SIGNALS:
    void changed();
};

} // namespace quill

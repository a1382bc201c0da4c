#pragma once

#include "store/focusguard/NotificationHold.h"

#include <QDBusConnection>
#include <QObject>
#include <memory>
#include <optional>
#include <vector>

namespace quill {

/// The notification hold of the desktop the app runs on: the notification server's
/// inhibition where it has one (KDE Plasma), else GNOME's banner switch while GNOME Shell
/// runs, else none. The choice
/// is made once, on the bus; holds asked for meanwhile wait for it.
class DesktopNotificationHold final : public QObject, public NotificationHold {
    Q_OBJECT

public:
    /// `inhibition` and `bannerSwitch` are the two candidates.
    DesktopNotificationHold(QDBusConnection bus, std::shared_ptr<NotificationHold> inhibition,
                            std::shared_ptr<NotificationHold> bannerSwitch,
                            QObject* parent = nullptr);

    void setHeld(bool held) override;
    void probe(Answer answer) override;

private:
    void choose();
    void askGnome();
    void chosen(std::shared_ptr<NotificationHold> hold);

    QDBusConnection m_bus;
    std::shared_ptr<NotificationHold> m_inhibition;
    std::shared_ptr<NotificationHold> m_bannerSwitch;
    bool m_choosing = false;
    bool m_decided = false;
    std::shared_ptr<NotificationHold> m_chosen;
    bool m_wanted = false;
    std::vector<Answer> m_waiting;
};

} // namespace quill

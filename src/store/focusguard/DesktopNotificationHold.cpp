#include "store/focusguard/DesktopNotificationHold.h"

#include "store/BusReply.h"
#include "store/focusguard/FocusGuardLog.h"

#include <QDBusMessage>
#include <QPointer>
#include <utility>

namespace quill {

DesktopNotificationHold::DesktopNotificationHold(QDBusConnection bus,
                                                 std::shared_ptr<NotificationHold> inhibition,
                                                 std::shared_ptr<NotificationHold> bannerSwitch,
                                                 QObject* parent)
    : QObject(parent), m_bus(std::move(bus)), m_inhibition(std::move(inhibition)),
      m_bannerSwitch(std::move(bannerSwitch)) {}

void DesktopNotificationHold::setHeld(bool held) {
    m_wanted = held;
    if (m_chosen)
        m_chosen->setHeld(held);
    else if (!m_decided)
        choose();
}

void DesktopNotificationHold::probe(Answer answer) {
    if (m_decided) {
        // Later, as promised, never during the call.
        QMetaObject::invokeMethod(
            this, [answer, available = m_chosen != nullptr] { answer(available); },
            Qt::QueuedConnection);
        return;
    }
    m_waiting.push_back(std::move(answer));
    choose();
}

void DesktopNotificationHold::choose() {
    if (m_choosing)
        return;
    m_choosing = true;
    QPointer<DesktopNotificationHold> self(this);
    m_inhibition->probe([this, self](bool available) {
        if (!self)
            return;
        if (available)
            chosen(m_inhibition);
        else
            askGnome();
    });
}

void DesktopNotificationHold::askGnome() {
    // GNOME's banner switch means something only to a running GNOME Shell, not to another
    // desktop that merely has GNOME's settings installed. Asked of the bus itself, so no
    // notification server is started by the question.
    QDBusMessage call = QDBusMessage::createMethodCall(
        QStringLiteral("org.freedesktop.DBus"), QStringLiteral("/org/freedesktop/DBus"),
        QStringLiteral("org.freedesktop.DBus"), QStringLiteral("NameHasOwner"));
    call << QStringLiteral("org.gnome.Shell");
    onBusReply(this, m_bus.asyncCall(call), [this](const QDBusMessage& reply) {
        const bool gnome = reply.type() == QDBusMessage::ReplyMessage &&
                           !reply.arguments().isEmpty() && reply.arguments().constFirst().toBool();
        if (!gnome)
            return chosen(nullptr);
        QPointer<DesktopNotificationHold> self(this);
        m_bannerSwitch->probe([this, self](bool available) {
            if (self)
                chosen(available ? m_bannerSwitch : nullptr);
        });
    });
}

void DesktopNotificationHold::chosen(std::shared_ptr<NotificationHold> hold) {
    m_choosing = false;
    m_decided = true;
    m_chosen = std::move(hold);
    qCInfo(lcFocusGuard) << (m_chosen == m_inhibition     ? "Notifications held by inhibition"
                             : m_chosen == m_bannerSwitch ? "Notifications held by GNOME's switch"
                                                          : "Notifications cannot be held here");
    if (m_chosen && m_wanted)
        m_chosen->setHeld(true);
    for (const Answer& answer : std::exchange(m_waiting, {}))
        answer(m_chosen != nullptr);
}

} // namespace quill

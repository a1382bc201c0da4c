#pragma once

#include <QDBusMessage>
#include <QDBusPendingCallWatcher>

namespace quill {

/// Runs `done` with the reply to `pending` once it arrives, never waiting for it: on the
/// thread of `owner`, and only while `owner` lives (with a null owner, whenever it comes).
template <class Done> void onBusReply(QObject* owner, const QDBusPendingCall& pending, Done done) {
    auto* watcher = new QDBusPendingCallWatcher(pending, owner);
    QObject* context = owner ? owner : watcher;
    QObject::connect(watcher, &QDBusPendingCallWatcher::finished, context,
                     [watcher, done = std::move(done)]() mutable {
                         watcher->deleteLater();
                         done(QDBusMessage(watcher->reply()));
                     });
}

} // namespace quill

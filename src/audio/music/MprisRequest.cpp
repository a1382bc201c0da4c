#include "audio/music/MprisRequest.h"

#include "audio/music/MusicLog.h"
#include "store/BusReply.h"

#include <QDBusVariant>
#include <QPointer>
#include <QThreadPool>

namespace quill {

namespace {
const QString kBusService = QStringLiteral("org.freedesktop.DBus");
const QString kBusPath = QStringLiteral("/org/freedesktop/DBus");
} // namespace

MprisRequest::MprisRequest(std::shared_ptr<Scheduler> scheduler, MusicPlayer::Completion completion,
                           QObject* parent)
    : QObject(parent), m_scheduler(std::move(scheduler)), m_completion(std::move(completion)),
      m_bus(QStringLiteral("quill-music-unset")) {}

MprisRequest::~MprisRequest() = default;

void MprisRequest::start(std::chrono::milliseconds deadline) {
    rearmDeadline(deadline);
}

void MprisRequest::rearmDeadline(std::chrono::milliseconds deadline) {
    const int generation = ++m_deadlineGeneration;
    m_timers.push_back(m_scheduler->after(deadline, [this, generation] {
        if (m_finished || generation != m_deadlineGeneration)
            return;
        fail(problemAtDeadline());
    }));
}

void MprisRequest::later(std::chrono::milliseconds delay, std::function<void()> fn) {
    m_timers.push_back(m_scheduler->after(delay, [this, fn = std::move(fn)] {
        if (!m_finished)
            fn();
    }));
}

std::unique_ptr<Scheduler::Handle> MprisRequest::cooldown(std::chrono::milliseconds delay) {
    return m_scheduler->after(delay, [] {});
}

void MprisRequest::begin(const QDBusConnection& bus) {
    if (m_finished)
        return;
    m_bus = bus;
    if (!m_bus.isConnected()) {
        qCInfo(lcMusic) << "no session bus:" << m_bus.lastError().message();
        fail(QStringLiteral("无法连接到 D-Bus 会话总线"));
        return;
    }
    m_connected = true;
    run();
}

void MprisRequest::callMethod(const QString& service, const QString& interface,
                              const QString& method, const QVariantList& arguments,
                              ReplyHandler onReply) {
    const QString path = service == kBusService ? kBusPath : QString::fromLatin1(mpris::objectPath);
    QDBusMessage message = QDBusMessage::createMethodCall(service, path, interface, method);
    message.setArguments(arguments);
    onBusReply(this, m_bus.asyncCall(message, callTimeoutMs),
               [this, onReply = std::move(onReply)](const QDBusMessage& reply) {
                   if (m_finished)
                       return;
                   if (reply.type() == QDBusMessage::ErrorMessage)
                       qCDebug(lcMusic)
                           << "bus call failed:" << reply.errorName() << reply.errorMessage();
                   onReply(reply);
               });
}

void MprisRequest::getAllProperties(const QString& service, const QString& interface,
                                    ReplyHandler onReply) {
    callMethod(service, QString::fromLatin1(mpris::propertiesInterface), QStringLiteral("GetAll"),
               {interface}, std::move(onReply));
}

void MprisRequest::writeProperty(const QString& service, const QString& interface,
                                 const QString& name, const QVariant& value, ReplyHandler onReply) {
    callMethod(service, QString::fromLatin1(mpris::propertiesInterface), QStringLiteral("Set"),
               {interface, name, QVariant::fromValue(QDBusVariant(value))}, std::move(onReply));
}

void MprisRequest::listPlayers(PlayersHandler done) {
    callMethod(kBusService, kBusService, QStringLiteral("ListNames"), {},
               [this, done = std::move(done)](const QDBusMessage& reply) {
                   if (reply.type() != QDBusMessage::ReplyMessage || reply.arguments().isEmpty()) {
                       done(std::nullopt);
                       return;
                   }
                   QStringList names;
                   for (const QString& name : reply.arguments().first().toStringList())
                       if (name.startsWith(QLatin1String(mpris::busNamePrefix)))
                           names << name;
                   names.sort();
                   if (names.isEmpty()) {
                       done(QList<mpris::PlayerInfo>{});
                       return;
                   }
                   // Ask every player about itself at once; answer when the last one has replied.
                   struct Pending {
                       QList<mpris::PlayerInfo> players;
                       qsizetype waiting = 0;
                   };
                   auto pending = std::make_shared<Pending>();
                   pending->waiting = names.size();
                   for (const QString& name : std::as_const(names))
                       pending->players.append({name, {}, {}});
                   for (qsizetype i = 0; i < names.size(); ++i) {
                       getAllProperties(
                           names.at(i), QString::fromLatin1(mpris::rootInterface),
                           [pending, i, done](const QDBusMessage& info) {
                               if (info.type() == QDBusMessage::ReplyMessage &&
                                   !info.arguments().isEmpty()) {
                                   const QVariantMap map =
                                       mpris::toVariantMap(info.arguments().first());
                                   auto& player = pending->players[i];
                                   player.identity =
                                       map.value(QStringLiteral("Identity")).toString();
                                   player.desktopEntry =
                                       map.value(QStringLiteral("DesktopEntry")).toString();
                               }
                               if (--pending->waiting == 0)
                                   done(pending->players);
                           });
                   }
               });
}

void MprisRequest::readPlayerState(const QString& service, StateHandler done) {
    getAllProperties(service, QString::fromLatin1(mpris::playerInterface),
                     [done = std::move(done)](const QDBusMessage& reply) {
                         if (reply.type() != QDBusMessage::ReplyMessage ||
                             reply.arguments().isEmpty()) {
                             done(std::nullopt);
                             return;
                         }
                         done(mpris::playerStateFromProperties(reply.arguments().first()));
                     });
}

void MprisRequest::succeed(const QString& text) {
    finish({true, text.isEmpty() ? QStringLiteral("已开始随机播放") : text});
}

void MprisRequest::fail(const QString& message) {
    finish({false, message});
}

void MprisRequest::finish(const MusicOutcome& outcome) {
    if (m_finished)
        return;
    m_finished = true;
    // Late replies and timers find m_finished set; the object goes once this call unwinds.
    deleteLater();
    if (m_completion)
        m_completion(outcome);
}

void MprisRequest::launchInBackground(std::shared_ptr<NetEaseLauncher> launcher,
                                      std::function<void(NetEaseLauncher::Result)> done) {
    // The answer is queued to a relay living on this thread, then checked against the request.
    std::shared_ptr<QObject> relay(new QObject, [](QObject* o) { o->deleteLater(); });
    QThreadPool::globalInstance()->start([relay, launcher = std::move(launcher),
                                          done = std::move(done),
                                          self = QPointer<MprisRequest>(this)]() mutable {
        const NetEaseLauncher::Result result = launcher->launchInBackground();
        QMetaObject::invokeMethod(
            relay.get(),
            [self, done, result] {
                if (self && !self->isFinished())
                    done(result);
            },
            Qt::QueuedConnection);
        relay.reset();
    });
}

} // namespace quill

#include "MusicPlayerProbe.h"

#include "audio/music/MprisProtocol.h"

#include <QDBusConnection>
#include <QDBusConnectionInterface>
#include <QDBusMessage>
#include <QDBusPendingCallWatcher>
#include <QDBusPendingReply>
#include <QDBusVariant>
#include <QFileInfo>

namespace quill {

namespace {

bool sessionBusExpected() {
    if (!qEnvironmentVariableIsEmpty("DBUS_SESSION_BUS_ADDRESS"))
        return true;
    // Without an address libdbus would try to autolaunch a bus; only use the standard one.
    const QString runtime = qEnvironmentVariable("XDG_RUNTIME_DIR");
    return !runtime.isEmpty() && QFileInfo::exists(runtime + QStringLiteral("/bus"));
}

/// Collects the players' identities, then picks the one the request would drive.
struct Search {
    MusicService service;
    MusicPlayerProbe::Done done;
    QList<mpris::PlayerInfo> players;
    int pending = 0;

    void finish() {
        mpris::sortByMusicPreference(players);
        QString name;
        for (const mpris::PlayerInfo& p : players) {
            const bool netEase = mpris::isNetEaseClient(p);
            if ((service == MusicService::netEase) == netEase) {
                name = p.identity.isEmpty() ? p.busName.mid(int(strlen(mpris::busNamePrefix)))
                                            : p.identity;
                break;
            }
        }
        done(name);
    }
};

class DBusMusicPlayerProbe final : public MusicPlayerProbe {
public:
    void find(MusicService service, Done done) override {
        if (!sessionBusExpected()) {
            done(QString());
            return;
        }
        QDBusConnection bus = QDBusConnection::sessionBus();
        if (!bus.isConnected()) {
            done(QString());
            return;
        }
        auto search = std::make_shared<Search>(Search{service, std::move(done), {}, 0});
        const QDBusMessage list = QDBusMessage::createMethodCall(
            QStringLiteral("org.freedesktop.DBus"), QStringLiteral("/org/freedesktop/DBus"),
            QStringLiteral("org.freedesktop.DBus"), QStringLiteral("ListNames"));
        auto* watcher = new QDBusPendingCallWatcher(bus.asyncCall(list, 2000));
        QObject::connect(watcher, &QDBusPendingCallWatcher::finished, watcher,
                         [bus, search](QDBusPendingCallWatcher* w) {
                             w->deleteLater();
                             const QDBusPendingReply<QStringList> reply = *w;
                             if (reply.isError()) {
                                 search->finish();
                                 return;
                             }
                             for (const QString& name : reply.value())
                                 if (name.startsWith(QLatin1String(mpris::busNamePrefix)))
                                     askIdentity(bus, name, search);
                             if (search->pending == 0)
                                 search->finish();
                         });
    }

private:
    static void askIdentity(QDBusConnection bus, const QString& busName,
                            const std::shared_ptr<Search>& search) {
        ++search->pending;
        QDBusMessage get = QDBusMessage::createMethodCall(busName, QLatin1String(mpris::objectPath),
                                                          QLatin1String(mpris::propertiesInterface),
                                                          QStringLiteral("GetAll"));
        get << QLatin1String(mpris::rootInterface);
        auto* watcher = new QDBusPendingCallWatcher(bus.asyncCall(get, 2000));
        QObject::connect(
            watcher, &QDBusPendingCallWatcher::finished, watcher,
            [busName, search](QDBusPendingCallWatcher* w) {
                w->deleteLater();
                const QDBusMessage reply = w->reply();
                mpris::PlayerInfo info{busName, {}, {}};
                if (reply.type() == QDBusMessage::ReplyMessage && !reply.arguments().isEmpty()) {
                    const QVariantMap props = mpris::toVariantMap(reply.arguments().first());
                    info.identity = props.value(QStringLiteral("Identity")).toString();
                    info.desktopEntry = props.value(QStringLiteral("DesktopEntry")).toString();
                }
                search->players.append(info);
                if (--search->pending == 0)
                    search->finish();
            });
    }
};

} // namespace

std::shared_ptr<MusicPlayerProbe> createMusicPlayerProbe() {
    return std::make_shared<DBusMusicPlayerProbe>();
}

} // namespace quill

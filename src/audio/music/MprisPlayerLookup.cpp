#include "audio/music/MprisPlayerLookup.h"

namespace quill {

MprisPlayerLookup::MprisPlayerLookup(MusicService service, std::shared_ptr<Scheduler> scheduler,
                                     MusicPlayer::Completion completion, QObject* parent)
    : MprisRequest(std::move(scheduler), std::move(completion), parent), m_service(service) {}

void MprisPlayerLookup::run() {
    listPlayers([this](std::optional<QList<mpris::PlayerInfo>> players) {
        const QList<mpris::PlayerInfo> drivable =
            players ? mpris::drivablePlayers(*players, m_service) : QList<mpris::PlayerInfo>{};
        if (drivable.isEmpty())
            fail(QString());
        else
            succeed(mpris::displayName(drivable.first()));
    });
}

} // namespace quill

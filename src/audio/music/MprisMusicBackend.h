#pragma once

#include "audio/music/NetEaseLauncher.h"
#include "store/MusicPlayer.h"
#include "store/Scheduler.h"

#include <QDBusConnection>
#include <QObject>
#include <functional>
#include <memory>

namespace quill {

class MprisRequest;

/// Music over MPRIS2 on the D-Bus session bus, for desktops without AppleScript.
class MprisMusicBackend final : public MusicPlayer {
public:
    /// Opens the bus. Runs on a worker thread: a first connection can take its time (or start
    /// a bus daemon), and the UI thread must not wait for it.
    using BusConnector = std::function<QDBusConnection()>;

    /// `launcher` starts the NetEase client, `musicLauncher` the desktop's music player.
    MprisMusicBackend(BusConnector connectBus, std::shared_ptr<Scheduler> scheduler,
                      std::shared_ptr<NetEaseLauncher> launcher,
                      std::shared_ptr<NetEaseLauncher> musicLauncher = nullptr);
    ~MprisMusicBackend() override;

    /// The user's session bus.
    static BusConnector sessionBus();

    void playRandom(MusicService service, MusicSource source, const QString& playlistName,
                    Completion completion) override;
    /// Names the player playRandom would drive for `service`; empty when there is none.
    void findPlayer(MusicService service, std::function<void(const QString& name)> done);

private:
    /// Connects to the bus off the UI thread, then lets the request go on.
    void begin(MprisRequest* request);

    BusConnector m_connectBus;
    std::shared_ptr<Scheduler> m_scheduler;
    std::shared_ptr<NetEaseLauncher> m_launcher;
    std::shared_ptr<NetEaseLauncher> m_musicLauncher;
    std::unique_ptr<QObject> m_requests; ///< parent of the requests under way
};

} // namespace quill

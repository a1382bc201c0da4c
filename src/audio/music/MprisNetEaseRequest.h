#pragma once

#include "audio/music/MprisRequest.h"
#include "audio/music/NetEaseLauncher.h"

namespace quill {

/// The NetEase Cloud Music client's current queue over MPRIS. A client that is not on the bus
/// is launched in the background and given 25 s; a running one 6 s. A client already playing
/// is reported and never touched; otherwise "play" is sent, again at most every 3 s, until it
/// plays or time runs out.
class MprisNetEaseRequest final : public MprisRequest {
    Q_OBJECT
public:
    static constexpr std::chrono::milliseconds runningDeadline{6000};
    static constexpr std::chrono::milliseconds launchedDeadline{25000};
    static constexpr std::chrono::milliseconds playRetryInterval{3000};

    MprisNetEaseRequest(std::shared_ptr<NetEaseLauncher> launcher,
                        std::shared_ptr<Scheduler> scheduler, MusicPlayer::Completion completion,
                        QObject* parent);

protected:
    void run() override;
    QString problemAtDeadline() const override;

private:
    static std::optional<QString> netEaseClient(const QList<mpris::PlayerInfo>& players);
    void launch();
    void launched(NetEaseLauncher::Result result);
    void waitForClient();
    void attempt();
    void sendPlay();

    std::shared_ptr<NetEaseLauncher> m_launcher;
    QString m_player;
    std::unique_ptr<Scheduler::Handle> m_playCooldown;
    bool m_playAccepted = false;
    QString m_lastProblem;
};

} // namespace quill

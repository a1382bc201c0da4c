#pragma once

#include "audio/music/MprisRequest.h"
#include "audio/music/NetEaseLauncher.h"
#include "model/SettingsEnums.h"

namespace quill {

/// The desktop's music player over MPRIS: shuffle on and play the library, or activate the
/// playlist with exactly the given name and play it; answers with "title — artist". When no
/// music player runs, the desktop's music player is started and waited for on the bus.
/// Browsers and video players are never driven.
class MprisPlayerRequest final : public MprisRequest {
    Q_OBJECT
public:
    static constexpr std::chrono::milliseconds deadline{10000};
    /// A player that had to be started gets as long as a cold NetEase client.
    static constexpr std::chrono::milliseconds launchedDeadline{25000};

    /// `launcher` starts the desktop's music player; none means only running players count.
    MprisPlayerRequest(MusicSource source, QString playlistName,
                       std::shared_ptr<Scheduler> scheduler, MusicPlayer::Completion completion,
                       QObject* parent, std::shared_ptr<NetEaseLauncher> launcher = nullptr);

protected:
    void run() override;
    QString problemAtDeadline() const override;

private:
    /// Takes the music players among `players`; false when there are none.
    bool chooseFrom(const QList<mpris::PlayerInfo>& players);
    void proceed();
    void launch();
    void launched(NetEaseLauncher::Result result);
    void waitForPlayer();
    void findPlaylist(qsizetype candidate, bool anySupportsPlaylists);
    void searchPlaylists(qsizetype candidate, const QString& ordering);
    void shuffleThen(std::function<void()> next);
    void activatePlaylist();
    void play();
    void checkPlaying();

    std::shared_ptr<NetEaseLauncher> m_launcher;
    MusicSource m_source;
    QString m_playlistName;
    QList<mpris::PlayerInfo> m_candidates;
    QString m_player;
    QDBusObjectPath m_playlist;
    bool m_playSent = false;
    QString m_lastProblem;
};

} // namespace quill

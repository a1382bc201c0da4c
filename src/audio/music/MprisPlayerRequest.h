#pragma once

#include "audio/music/MprisRequest.h"
#include "model/SettingsEnums.h"

namespace quill {

/// The desktop's music player over MPRIS: shuffle on and play the library, or activate the
/// playlist with exactly the given name and play it; answers with "title — artist".
class MprisPlayerRequest final : public MprisRequest {
    Q_OBJECT
public:
    static constexpr std::chrono::milliseconds deadline{10000};

    MprisPlayerRequest(MusicSource source, QString playlistName,
                       std::shared_ptr<Scheduler> scheduler, MusicPlayer::Completion completion,
                       QObject* parent);

protected:
    void run() override;
    QString problemAtDeadline() const override;

private:
    void findPlaylist(qsizetype candidate, bool anySupportsPlaylists);
    void searchPlaylists(qsizetype candidate, const QString& ordering);
    void shuffleThen(std::function<void()> next);
    void activatePlaylist();
    void play();
    void checkPlaying();

    MusicSource m_source;
    QString m_playlistName;
    QList<mpris::PlayerInfo> m_candidates;
    QString m_player;
    QDBusObjectPath m_playlist;
    bool m_playSent = false;
    QString m_lastProblem;
};

} // namespace quill

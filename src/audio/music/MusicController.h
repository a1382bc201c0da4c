#pragma once

#include "store/MusicPlayer.h"

#include <memory>

namespace quill {

/// The app's music player: hands each request to the platform's backend and holds it to the
/// promise the store relies on, one completion per request on the UI thread, with a message
/// that is never empty.
class MusicController final : public MusicPlayer {
public:
    explicit MusicController(std::unique_ptr<MusicPlayer> backend);

    void playRandom(MusicService service, MusicSource source, const QString& playlistName,
                    Completion completion) override;

    /// The text shown for an outcome: an empty success becomes "已开始随机播放", an empty
    /// failure "无法控制音乐 App".
    static MusicOutcome shown(const MusicOutcome& outcome);

private:
    std::unique_ptr<MusicPlayer> m_backend;
};

} // namespace quill

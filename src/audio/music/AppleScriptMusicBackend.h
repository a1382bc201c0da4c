#pragma once

#include "audio/music/NetEaseEnvironment.h"
#include "audio/music/ProcessLauncher.h"
#include "store/MusicPlayer.h"

#include <memory>

namespace quill {

/// Music through AppleScript: the Music app's library or a named playlist, or the NetEase
/// client's current queue driven through System Events. Each request runs one interpreter.
class AppleScriptMusicBackend final : public MusicPlayer {
public:
    static constexpr int netEaseLaunchedTimeoutSeconds = 25;
    static constexpr int netEaseRunningTimeoutSeconds = 6;

    AppleScriptMusicBackend(std::shared_ptr<ProcessLauncher> launcher,
                            std::shared_ptr<NetEaseEnvironment> netEase, QString interpreter);

    /// Fails at once, before returning, when the NetEase client cannot be prepared.
    void playRandom(MusicService service, MusicSource source, const QString& playlistName,
                    Completion completion) override;

private:
    std::shared_ptr<ProcessLauncher> m_launcher;
    std::shared_ptr<NetEaseEnvironment> m_netEase;
    QString m_interpreter;
};

} // namespace quill

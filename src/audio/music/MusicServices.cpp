#include "audio/music/MusicServices.h"

#include <QTimer>

namespace quill {

namespace {
// Placeholder until the platform backends are wired in.
class UnavailableMusicPlayer final : public MusicPlayer {
public:
    void playRandom(MusicService, MusicSource, const QString&, Completion completion) override {
        QTimer::singleShot(0, [completion] {
            completion({false, QStringLiteral("没有可用的音乐播放器。")});
        });
    }
};
} // namespace

std::shared_ptr<MusicPlayer> createMusicPlayer() {
    return std::make_shared<UnavailableMusicPlayer>();
}

} // namespace quill

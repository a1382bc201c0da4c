#include "audio/AudioServices.h"

namespace quill {

namespace {
// Placeholders until the audio engine is wired in.
class SilentSoundPlayer final : public SoundPlayer {
public:
    void play(const QString&) override {}
};
class SilentAmbientOutput final : public AmbientOutput {
public:
    void setLevels(const AmbientLevels&) override {}
    bool play() override { return true; }
    void stop() override {}
};
} // namespace

std::shared_ptr<SoundPlayer> createSoundPlayer() { return std::make_shared<SilentSoundPlayer>(); }
std::shared_ptr<AmbientOutput> createAmbientOutput() {
    return std::make_shared<SilentAmbientOutput>();
}

} // namespace quill

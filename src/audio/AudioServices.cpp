#include "audio/AudioServices.h"

#include "audio/AmbientPlayer.h"
#include "audio/NamedSoundPlayer.h"
#include "audio/PreciseTimerScheduler.h"
#include "audio/SdlAudioDevice.h"

namespace quill {

std::shared_ptr<SoundPlayer> createSoundPlayer() {
    NamedSoundPlayer::Environment env;
    env.device = std::make_shared<SdlAudioDevice>();
    env.scheduler = std::make_shared<PreciseTimerScheduler>();
    return std::make_shared<NamedSoundPlayer>(std::move(env));
}

std::shared_ptr<AmbientOutput> createAmbientOutput() {
    AmbientPlayer::Environment env;
    auto device = std::make_shared<SdlAudioDevice>(AmbientPlayer::kOutputBufferFrames);
    // The first play must not wait for the audio system (a sound server takes ~0.2 s).
    device->prepareInBackground();
    env.device = device;
    env.scheduler = std::make_shared<PreciseTimerScheduler>();
    return std::make_shared<AmbientPlayer>(std::move(env));
}

} // namespace quill

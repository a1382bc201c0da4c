#include "audio/AudioServices.h"

#include "audio/AmbientPlayer.h"
#include "audio/NamedSoundPlayer.h"
#include "audio/PreciseTimerScheduler.h"
#ifdef QUILL_HAVE_PULSE
#include "audio/PulseAudioDevice.h"
#include "audio/PulseLibrary.h"
#endif
#include "audio/SdlAudioDevice.h"
#include "audio/SdlLibrary.h"
#include "audio/SndfileLibrary.h"
#include "audio/ThreadedAudioDevice.h"

#include <QThreadPool>

namespace quill {

std::shared_ptr<SoundPlayer> createSoundPlayer() {
    NamedSoundPlayer::Environment env;
    env.device = std::make_shared<SdlAudioDevice>();
    env.scheduler = std::make_shared<PreciseTimerScheduler>();
    return std::make_shared<NamedSoundPlayer>(std::move(env));
}

std::shared_ptr<AmbientOutput> createAmbientOutput() {
    AmbientPlayer::Environment env;
    // Nothing of the audio system is loaded until the first play: most of the day nothing plays.
#ifdef QUILL_HAVE_PULSE
    env.device = std::make_shared<PulseAudioDevice>();
#else
    env.device = std::make_shared<ThreadedAudioDevice>(
        std::make_shared<SdlAudioDevice>(AmbientPlayer::kOutputBufferFrames));
#endif
    env.scheduler = std::make_shared<PreciseTimerScheduler>();
    // Loading SDL and libsndfile (with the codecs behind it) takes the first play 15-20 ms;
    // asked for while the pointer approaches the button, a pool thread does it instead.
    env.loadLibraries = [] {
        QThreadPool::globalInstance()->start([] {
#ifdef QUILL_HAVE_PULSE
            PulseLibrary::get();
#else
            SdlLibrary::get();
#endif
            SndfileLibrary::get();
        });
    };
    return std::make_shared<AmbientPlayer>(std::move(env));
}

} // namespace quill

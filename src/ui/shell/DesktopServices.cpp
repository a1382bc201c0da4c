#include "ui/shell/DesktopServices.h"

#include "audio/AudioServices.h"
#include "audio/music/MusicServices.h"
#include "store/SystemServices.h"

namespace quill {

Services makeDesktopServices() {
    Services services = makeSystemServices();
    services.sounds = createSoundPlayer();
    services.ambient = createAmbientOutput();
    services.music = createMusicPlayer();
    return services;
}

} // namespace quill

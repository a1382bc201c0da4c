#include "audio/SdlLibrary.h"

#include "audio/LazyLibrary.h"

namespace quill {

const SdlLibrary* SdlLibrary::get() {
    static const SdlLibrary* const loaded = [] {
        static LazyLibrary library("SDL2-2.0", 0);
        static SdlLibrary sdl;
        library.bind("SDL_SetHint", sdl.setHint);
        library.bind("SDL_InitSubSystem", sdl.initSubSystem);
        library.bind("SDL_QuitSubSystem", sdl.quitSubSystem);
        library.bind("SDL_GetError", sdl.getError);
        library.bind("SDL_GetDefaultAudioInfo", sdl.getDefaultAudioInfo);
        library.bind("SDL_free", sdl.free);
        library.bind("SDL_OpenAudioDevice", sdl.openAudioDevice);
        library.bind("SDL_PauseAudioDevice", sdl.pauseAudioDevice);
        library.bind("SDL_CloseAudioDevice", sdl.closeAudioDevice);
        library.bind("SDL_GetAudioDeviceStatus", sdl.getAudioDeviceStatus);
        library.bind("SDL_PumpEvents", sdl.pumpEvents);
        library.bind("SDL_PeepEvents", sdl.peepEvents);
        library.bind("SDL_FlushEvent", sdl.flushEvent);
        library.bind("SDL_FlushEvents", sdl.flushEvents);
        return library.ok() ? &sdl : nullptr;
    }();
    return loaded;
}

} // namespace quill

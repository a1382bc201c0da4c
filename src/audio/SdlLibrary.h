#pragma once

#include <SDL.h>

namespace quill {

/// SDL2, loaded the first time sound is wanted. The audio stack behind it (ALSA, PulseAudio,
/// the X and Wayland extensions SDL links) is ~30 libraries and ~3.7 MB resident, which an
/// app that sits at rest all day should not map at launch. Only the calls the app makes are
/// here; each has SDL's own signature.
class SdlLibrary {
public:
    /// The loaded library, or null when it cannot be loaded (then there is no audio output;
    /// the reason is logged once).
    static const SdlLibrary* get();

    decltype(&::SDL_SetHint) setHint = nullptr;
    decltype(&::SDL_InitSubSystem) initSubSystem = nullptr;
    decltype(&::SDL_QuitSubSystem) quitSubSystem = nullptr;
    decltype(&::SDL_GetError) getError = nullptr;
    decltype(&::SDL_GetDefaultAudioInfo) getDefaultAudioInfo = nullptr;
    decltype(&::SDL_free) free = nullptr;
    decltype(&::SDL_OpenAudioDevice) openAudioDevice = nullptr;
    decltype(&::SDL_PauseAudioDevice) pauseAudioDevice = nullptr;
    decltype(&::SDL_CloseAudioDevice) closeAudioDevice = nullptr;
    decltype(&::SDL_GetAudioDeviceStatus) getAudioDeviceStatus = nullptr;
    decltype(&::SDL_PumpEvents) pumpEvents = nullptr;
    decltype(&::SDL_PeepEvents) peepEvents = nullptr;
    decltype(&::SDL_FlushEvent) flushEvent = nullptr;
    decltype(&::SDL_FlushEvents) flushEvents = nullptr;

private:
    SdlLibrary() = default;
};

} // namespace quill

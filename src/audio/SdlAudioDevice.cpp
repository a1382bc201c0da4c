#include "audio/SdlAudioDevice.h"

#include "audio/AudioRenderer.h"
#include "audio/SdlLibrary.h"

#include <cstring>
#include <mutex>

namespace quill {

namespace {
// SDL's subsystem bookkeeping is not thread-safe, and the named sounds open their device
// from a worker thread.
std::mutex& sdlMutex() {
    static std::mutex m;
    return m;
}

QString sdlError(const SdlLibrary* sdl) {
    if (!sdl)
        return QStringLiteral("SDL2 is not installed");
    const QString e = QString::fromUtf8(sdl->getError());
    return e.isEmpty() ? QStringLiteral("unknown audio error") : e;
}
} // namespace

SdlAudioDevice::SdlAudioDevice(int bufferFrames) : m_bufferFrames(bufferFrames) {}

SdlAudioDevice::~SdlAudioDevice() {
    release();
}

void SdlAudioDevice::release() {
    stop();
    std::lock_guard lock(sdlMutex());
    if (m_initialised) {
        m_sdl->quitSubSystem(SDL_INIT_AUDIO | SDL_INIT_EVENTS);
        m_initialised = false;
    }
}

bool SdlAudioDevice::ensureInitialised(QString* error) {
    if (m_initialised)
        return true;
    m_sdl = SdlLibrary::get();
    if (!m_sdl) {
        if (error)
            *error = sdlError(nullptr);
        return false;
    }
    // Qt owns the process's signals; SDL must not install its own quit handlers.
    m_sdl->setHint(SDL_HINT_NO_SIGNAL_HANDLERS, "1");
    m_sdl->setHint(SDL_HINT_AUDIO_DEVICE_APP_NAME, "Quillmere");
    if (m_sdl->initSubSystem(SDL_INIT_AUDIO | SDL_INIT_EVENTS) != 0) {
        if (error)
            *error = sdlError(m_sdl);
        return false;
    }
    m_initialised = true;
    return true;
}

double SdlAudioDevice::askPreferredRate() {
    SDL_AudioSpec spec{};
    char* name = nullptr;
    if (m_sdl->getDefaultAudioInfo(&name, &spec, 0) != 0)
        return 0.0;
    m_sdl->free(name);
    return spec.freq > 0 ? double(spec.freq) : 0.0;
}

bool SdlAudioDevice::start(double sampleRate, AudioRenderer* renderer, QString* error) {
    stop();
    std::lock_guard lock(sdlMutex());
    if (!ensureInitialised(error))
        return false;
    SDL_AudioSpec want{};
    want.freq = int(sampleRate > 0 ? sampleRate : 48000.0);
    want.format = AUDIO_F32SYS;
    want.channels = 2;
    want.samples = Uint16(m_bufferFrames);
    want.callback = &SdlAudioDevice::callback;
    want.userdata = this;
    SDL_AudioSpec have{};
    m_renderer = renderer;
    // No changes allowed: SDL converts, so the graph keeps the rate it was built for.
    const SDL_AudioDeviceID device = m_sdl->openAudioDevice(nullptr, 0, &want, &have, 0);
    if (device == 0) {
        m_renderer = nullptr;
        if (error)
            *error = sdlError(m_sdl);
        return false;
    }
    m_device = device;
    m_rate = want.freq;
    m_preferredRate = askPreferredRate();
    m_polls = 0;
    m_sdl->flushEvents(SDL_AUDIODEVICEADDED, SDL_AUDIODEVICEREMOVED);
    m_sdl->pauseAudioDevice(m_device, 0);
    return true;
}

void SdlAudioDevice::stop() {
    if (m_device == 0)
        return;
    std::lock_guard lock(sdlMutex());
    // Closing joins SDL's audio thread, so the renderer is never called after this.
    m_sdl->closeAudioDevice(m_device);
    m_device = 0;
    m_renderer = nullptr;
}

AudioDevice::Event SdlAudioDevice::takeEvent() {
    if (m_device == 0)
        return Event::none;
    bool removed = false;
    {
        std::lock_guard lock(sdlMutex());
        m_sdl->pumpEvents();
        SDL_Event events[8];
        int n = 0;
        while ((n = m_sdl->peepEvents(events, 8, SDL_GETEVENT, SDL_AUDIODEVICEREMOVED,
                                      SDL_AUDIODEVICEREMOVED)) > 0)
            for (int i = 0; i < n; ++i)
                if (events[i].adevice.which == m_device && !events[i].adevice.iscapture)
                    removed = true;
        m_sdl->flushEvent(SDL_AUDIODEVICEADDED);
        if (m_sdl->getAudioDeviceStatus(m_device) == SDL_AUDIO_STOPPED)
            removed = true;
    }
    if (removed)
        return Event::removed;
    // The preferred format rarely changes; asking about once a second is plenty.
    if (++m_polls % 20 == 0) {
        double preferred = 0.0;
        {
            std::lock_guard lock(sdlMutex());
            preferred = m_preferredRate = askPreferredRate();
        }
        if (preferred > 0 && preferred != m_rate)
            return Event::formatChanged;
    }
    return Event::none;
}

void SdlAudioDevice::callback(void* self, std::uint8_t* stream, int length) {
    auto* device = static_cast<SdlAudioDevice*>(self);
    const int frames = length / int(2 * sizeof(float));
    if (device->m_renderer)
        device->m_renderer->render(reinterpret_cast<float*>(stream), frames);
    else
        std::memset(stream, 0, std::size_t(length));
}

} // namespace quill

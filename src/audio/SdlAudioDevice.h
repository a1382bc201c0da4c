#pragma once

#include "audio/AudioDevice.h"

#include <cstdint>

namespace quill {

/// The default output through SDL2's audio subsystem (only that subsystem). Opened as the
/// default device, so the sound server moves the stream between outputs by itself; a removed
/// device or a changed preferred rate is reported through takeEvent(). SDL is loaded and its
/// audio subsystem brought up on the first start or rate question; release() quits the
/// subsystem again, so no audio thread (ALSA's hot-plug poll, a sound server's event thread)
/// outlives the sound.
class SdlAudioDevice final : public AudioDevice {
public:
    /// Each pass of the audio thread renders bufferFrames: fewer, larger passes cost less
    /// (a sound server's round trip is paid per pass) but answer later.
    explicit SdlAudioDevice(int bufferFrames = 1024);
    ~SdlAudioDevice() override;
    SdlAudioDevice(const SdlAudioDevice&) = delete;
    SdlAudioDevice& operator=(const SdlAudioDevice&) = delete;

    double preferredSampleRate() override;
    bool start(double sampleRate, AudioRenderer* renderer, QString* error) override;
    void stop() override;
    void release() override;
    bool isRunning() const override { return m_device != 0; }
    Event takeEvent() override;

private:
    bool ensureInitialised(QString* error);
    static void callback(void* self, std::uint8_t* stream, int length);

    const class SdlLibrary* m_sdl = nullptr; // set once the library is loaded
    bool m_initialised = false;
    std::uint32_t m_device = 0;
    int m_bufferFrames;
    double m_rate = 0.0;
    AudioRenderer* m_renderer = nullptr;
    int m_polls = 0;
};

} // namespace quill

#pragma once

#include "audio/AudioDevice.h"

#include <cstdint>

namespace quill {

/// The default output through SDL2's audio subsystem (only that subsystem). Opened as the
/// default device, so the sound server moves the stream between outputs by itself; a removed
/// device or a changed preferred rate is reported through takeEvent(). SDL is loaded and its
/// audio subsystem brought up on the first start or rate question; release() quits the
/// subsystem again, so no audio thread (ALSA's hot-plug poll, a sound server's event thread)
/// outlives the sound. Opening waits for the sound system, so where a sound server may be
/// slow it is opened from a worker thread (the named sounds); start() reports no `started`,
/// as the output runs once it returns true.
class SdlAudioDevice final : public AudioDevice {
public:
    /// Each pass of the audio thread renders bufferFrames: fewer, larger passes cost less
    /// (a sound server's round trip is paid per pass) but answer later.
    explicit SdlAudioDevice(int bufferFrames = 1024);
    ~SdlAudioDevice() override;
    SdlAudioDevice(const SdlAudioDevice&) = delete;
    SdlAudioDevice& operator=(const SdlAudioDevice&) = delete;

    double preferredSampleRate() override { return m_preferredRate; }
    bool start(double sampleRate, AudioRenderer* renderer, QString* error) override;
    void stop() override;
    void release() override;
    State state() const override { return m_device != 0 ? State::running : State::stopped; }
    Event takeEvent() override;

private:
    bool ensureInitialised(QString* error);
    double askPreferredRate();
    static void callback(void* self, std::uint8_t* stream, int length);

    const class SdlLibrary* m_sdl = nullptr; // set once the library is loaded
    bool m_initialised = false;
    std::uint32_t m_device = 0;
    int m_bufferFrames;
    double m_rate = 0.0;
    double m_preferredRate = 0.0; // as learnt when the output was last opened
    AudioRenderer* m_renderer = nullptr;
    int m_polls = 0;
};

} // namespace quill

#pragma once

#include "audio/AudioDevice.h"

#include <cstdint>
#include <thread>

namespace quill {

/// The default output through SDL2's audio subsystem (only that subsystem). Opened as the
/// default device, so the sound server moves the stream between outputs by itself; a removed
/// device or a changed preferred rate is reported through takeEvent(). release() quits the
/// subsystem when its backend polls for devices while idle (ALSA's hot-plug thread); a sound
/// server's backend waits for events and stays, so the next start is quick.
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
    /// Brings the audio system up on a thread of its own, so the first start is quick; a
    /// backend that would poll while idle is let go again at once.
    void prepareInBackground();

private:
    bool ensureInitialised(QString* error);
    static void callback(void* self, std::uint8_t* stream, int length);

    bool m_initialised = false;
    bool m_keepWhenIdle = false; // the backend costs nothing while no device is open
    std::thread m_preparer;
    std::uint32_t m_device = 0;
    int m_bufferFrames;
    double m_rate = 0.0;
    AudioRenderer* m_renderer = nullptr;
    int m_polls = 0;
};

} // namespace quill

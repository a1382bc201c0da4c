#pragma once

#include "audio/AudioDevice.h"

#include <cstdint>

namespace quill {

/// The default output through SDL2's audio subsystem (only that subsystem). Opened as the
/// default device, so the sound server moves the stream between outputs by itself; a removed
/// device or a changed preferred rate is reported through takeEvent(). The subsystem is
/// started on first use and quit again by release(): while it runs, SDL watches for devices.
class SdlAudioDevice final : public AudioDevice {
public:
    SdlAudioDevice();
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

    bool m_initialised = false;
    std::uint32_t m_device = 0;
    double m_rate = 0.0;
    AudioRenderer* m_renderer = nullptr;
    int m_polls = 0;
};

} // namespace quill

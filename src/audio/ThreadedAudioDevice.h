#pragma once

#include "audio/AudioDevice.h"
#include "audio/AudioDeviceEvents.h"
#include "audio/AudioRenderer.h"
#include "audio/SerialWorker.h"

#include <atomic>
#include <cstdint>
#include <memory>
#include <mutex>

namespace quill {

/// Drives a device whose opening waits for the sound system (SDL's) from a worker thread, so
/// the caller never waits: start() returns at once and `started` or `failed` follows. A start
/// that is stopped before it finished is closed again by the worker whenever it finishes,
/// and never renders.
class ThreadedAudioDevice final : public AudioDevice, private AudioRenderer {
public:
    explicit ThreadedAudioDevice(std::shared_ptr<AudioDevice> inner);
    /// Waits for what the worker still has to do (at the app's end only).
    ~ThreadedAudioDevice() override;
    ThreadedAudioDevice(const ThreadedAudioDevice&) = delete;
    ThreadedAudioDevice& operator=(const ThreadedAudioDevice&) = delete;

    double preferredSampleRate() override { return m_preferredRate.load(); }
    bool start(double sampleRate, AudioRenderer* renderer, QString* error) override;
    void stop() override;
    void release() override;
    State state() const override { return m_state.load(); }
    Event takeEvent() override;
    QString error() const override { return m_events.error(); }
    void setEventListener(std::function<void()> listener) override {
        m_events.setListener(std::move(listener));
    }

private:
    void render(float* interleaved, int frames) override;

    std::shared_ptr<AudioDevice> m_inner; // touched only by the worker
    std::atomic<AudioRenderer*> m_renderer{nullptr};
    std::atomic<bool> m_inRender{false};
    std::atomic<State> m_state{State::stopped};
    std::atomic<double> m_preferredRate{0.0};
    std::atomic<bool> m_polling{false};

    std::mutex m_mutex;
    std::uint64_t m_epoch = 0; // one per start or stop; a finished start of another is void
    AudioDeviceEvents m_events;
    SerialWorker m_worker; // last: its jobs end before the members they use
};

} // namespace quill

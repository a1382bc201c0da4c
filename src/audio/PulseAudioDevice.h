#pragma once

#include "audio/AudioDevice.h"

#include <atomic>
#include <mutex>

struct pa_threaded_mainloop;
struct pa_context;
struct pa_stream;

namespace quill {

/// The default output through the sound server's own client library, on its threaded main
/// loop: connecting never blocks the caller, so a server that accepts and never answers only
/// leaves the device `starting`. Ambient sound needs no low latency, so the server is asked
/// to hold a large buffer and to ask for more in large pieces: both sides wake a few times a
/// second. The stream follows the default output, and a lost server, a lost stream or an
/// output at another rate is reported through takeEvent().
class PulseAudioDevice final : public AudioDevice {
public:
    /// bufferMs of sound are kept queued on the server; it asks for more once refillMs of
    /// them have played.
    explicit PulseAudioDevice(int bufferMs = 250, int refillMs = 100);
    ~PulseAudioDevice() override;
    PulseAudioDevice(const PulseAudioDevice&) = delete;
    PulseAudioDevice& operator=(const PulseAudioDevice&) = delete;

    double preferredSampleRate() override { return m_serverRate.load(); }
    bool start(double sampleRate, AudioRenderer* renderer, QString* error) override;
    void stop() override;
    void release() override;
    State state() const override { return m_state.load(); }
    Event takeEvent() override;
    QString error() const override;
    void setEventListener(std::function<void()> listener) override;

private:
    // Main-loop thread, with the loop's lock held.
    static void onContextState(pa_context* context, void* self);
    static void onStreamState(pa_stream* stream, void* self);
    static void onWrite(pa_stream* stream, std::size_t bytes, void* self);
    static void onMoved(pa_stream* stream, void* self);
    void createStream();
    void askOutputRate();
    void fail(const char* what);
    void post(Event event);
    void disconnectLocked();

    const int m_bufferMs, m_refillMs;
    pa_threaded_mainloop* m_loop = nullptr;
    pa_context* m_context = nullptr;
    pa_stream* m_stream = nullptr;
    AudioRenderer* m_renderer = nullptr;
    double m_rate = 48000.0;
    std::atomic<State> m_state{State::stopped};
    std::atomic<double> m_serverRate{0.0};

    mutable std::mutex m_eventsMutex; // never taken on the render path
    unsigned m_events = 0;            // a bit per pending Event
    QString m_error;
    std::function<void()> m_listener;
};

} // namespace quill

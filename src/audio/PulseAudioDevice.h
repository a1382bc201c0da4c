#pragma once

#include "audio/AudioDevice.h"
#include "audio/AudioDeviceEvents.h"

#include <atomic>
#include <cstdint>
#include <vector>

struct pa_threaded_mainloop;
struct pa_context;
struct pa_stream;

namespace quill {

/// The default output through the sound server's own client library, on its threaded main
/// loop: connecting never blocks the caller, so a server that accepts and never answers only
/// leaves the device `starting`. Ambient sound needs no low latency, so the server is asked
/// to hold a large buffer and to ask for more in large pieces: both sides wake a few times a
/// second. The master level is applied here: a change rewrites the queued sound from what is
/// being heard on, so a fade still starts within milliseconds. The stream follows the
/// default output, and a lost server, a lost stream or an output at another rate is reported
/// through takeEvent().
class PulseAudioDevice final : public AudioDevice {
public:
    /// bufferMs of sound are kept queued on the server; it asks for more once refillMs of
    /// them have played.
    explicit PulseAudioDevice(int bufferMs = 500, int refillMs = 150);
    ~PulseAudioDevice() override;
    PulseAudioDevice(const PulseAudioDevice&) = delete;
    PulseAudioDevice& operator=(const PulseAudioDevice&) = delete;

    double preferredSampleRate() override { return m_serverRate.load(); }
    bool start(double sampleRate, AudioRenderer* renderer, QString* error) override;
    void stop() override;
    void release() override;
    State state() const override { return m_state.load(); }
    Event takeEvent() override { return m_events.take(); }
    QString error() const override { return m_events.error(); }
    void setEventListener(std::function<void()> listener) override {
        m_events.setListener(std::move(listener));
    }
    bool hasOutputGain() const override { return true; }
    void setOutputGain(float gain) override;

private:
    // Main-loop thread, with the loop's lock held.
    static void onContextState(pa_context* context, void* self);
    static void onStreamState(pa_stream* stream, void* self);
    static void onWrite(pa_stream* stream, std::size_t bytes, void* self);
    static void onMoved(pa_stream* stream, void* self);
    static void onTiming(pa_stream* stream, int success, void* self);
    void rewriteQueued();
    void copyOut(std::int64_t frame, float* out, int frames, float from, float to);
    void createStream();
    void askOutputRate();
    void fail(const char* what);
    void disconnectLocked();

    const int m_bufferMs, m_refillMs;
    pa_threaded_mainloop* m_loop = nullptr;
    pa_context* m_context = nullptr;
    pa_stream* m_stream = nullptr;
    AudioRenderer* m_renderer = nullptr;
    double m_rate = 48000.0;
    std::atomic<State> m_state{State::stopped};
    std::atomic<double> m_serverRate{0.0};

    // What was rendered and not yet heard, before the gain: the loop thread's, made in start().
    std::vector<float> m_history;
    std::int64_t m_written = 0; // frames written since the stream began
    float m_gain = 0.0f;        // applied to all that is queued
    float m_wantedGain = 0.0f;
    bool m_timingAsked = false;

    AudioDeviceEvents m_events;
};

} // namespace quill

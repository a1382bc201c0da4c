#pragma once

#include "audio/AudioDevice.h"

#include <vector>

namespace quill {

/// An output with no hardware: whoever drives it calls render() to pull sound through the
/// graph. Tests and benchmarks use it; it can be told to refuse to start or to report that
/// the output went away or changed its rate.
class OfflineAudioDevice final : public AudioDevice {
public:
    double preferredSampleRate() override { return m_preferredRate; }
    bool start(double sampleRate, AudioRenderer* renderer, QString* error) override;
    void stop() override;
    void release() override {
        stop();
        ++m_releases;
    }
    State state() const override { return m_state; }
    QString error() const override { return m_lastError; }
    Event takeEvent() override;

    /// Renders frames of interleaved stereo, or silence while stopped.
    const std::vector<float>& render(int frames);
    /// Interleaved stereo of the last render() call.
    const std::vector<float>& lastBuffer() const { return m_buffer; }

    void setPreferredSampleRate(double rate) { m_preferredRate = rate; }
    /// The next starts fail with this description (empty: they succeed again).
    void setStartFailure(const QString& description) { m_failure = description; }
    /// Starts wait for finishStart() instead of running at once, as a sound server's do.
    void setDeferredStart(bool deferred) { m_deferred = deferred; }
    /// The waiting start runs, or fails with description, and reports it.
    void finishStart(const QString& failure = {});
    /// The output vanishes: the device stops calling the renderer and reports it once.
    void simulateRemoval();
    /// The output switches to rate and reports a format change once.
    void simulateFormatChange(double rate);

    double runningSampleRate() const { return m_runningRate; }
    int startCount() const { return m_starts; }
    int stopCount() const { return m_stops; }
    int releaseCount() const { return m_releases; }

private:
    double m_preferredRate = 48000.0;
    double m_runningRate = 0.0;
    AudioRenderer* m_renderer = nullptr;
    State m_state = State::stopped;
    bool m_lost = false;
    bool m_deferred = false;
    QString m_failure, m_lastError;
    std::vector<Event> m_pending;
    std::vector<float> m_buffer;
    int m_starts = 0, m_stops = 0, m_releases = 0;
};

} // namespace quill

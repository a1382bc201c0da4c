#pragma once

#include <QString>

#include <functional>

namespace quill {

class AudioRenderer;

/// A stereo float output. The ambient player and the named sounds talk to the hardware only
/// through this, so tests render offline without a device. All calls on the main thread;
/// none of them waits for a sound server, so a server that never answers cannot freeze it.
class AudioDevice {
public:
    enum class State { stopped, starting, running };
    enum class Event {
        none,
        started,       // a start finished: the renderer is being called
        failed,        // a start gave up; error() says why
        removed,       // the running output went away
        formatChanged, // the output now prefers another rate
    };

    virtual ~AudioDevice() = default;
    /// Sample rate the default output prefers, or 0 while unknown. Never asks a server: it
    /// is what the last connection learnt.
    virtual double preferredSampleRate() = 0;
    /// Begins opening the default output at sampleRate and returns at once; once open the
    /// renderer is called on the audio thread and `started` is reported. Returns false (and
    /// fills error) only when it cannot even begin.
    virtual bool start(double sampleRate, AudioRenderer* renderer, QString* error) = 0;
    /// Stops (or abandons a start); after it returns the renderer is never called again.
    virtual void stop() = 0;
    /// Stops the device and lets go of the audio system behind it, so nothing of it runs
    /// while no sound is wanted; the next start() brings it back.
    virtual void release() { stop(); }
    virtual State state() const = 0;
    bool isRunning() const { return state() == State::running; }
    /// Reports each event once, oldest first.
    virtual Event takeEvent() = 0;
    /// Whether the device applies the master level itself (setOutputGain), at the output
    /// rather than in the rendered sound: one that keeps much sound queued can then change
    /// the level of what is already queued, so a fade starts at once.
    virtual bool hasOutputGain() const { return false; }
    /// Linear gain of everything from now on, already queued sound included.
    virtual void setOutputGain(float) {}
    /// Why the last start failed.
    virtual QString error() const { return {}; }
    /// Called from any thread when an event waits for takeEvent(); it must only hand over
    /// to the main thread.
    virtual void setEventListener(std::function<void()> listener) {
        m_listener = std::move(listener);
    }

protected:
    void notifyListener() const {
        if (m_listener)
            m_listener();
    }

private:
    std::function<void()> m_listener;
};

} // namespace quill

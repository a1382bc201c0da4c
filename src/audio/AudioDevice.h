#pragma once

#include <QString>

namespace quill {

class AudioRenderer;

/// A stereo float output. The ambient player and the named sounds talk to the hardware only
/// through this, so tests render offline without a device. All calls on the main thread.
class AudioDevice {
public:
    enum class Event { none, removed, formatChanged };

    virtual ~AudioDevice() = default;
    /// Sample rate the default output prefers, or 0 when unknown.
    virtual double preferredSampleRate() = 0;
    /// Opens the default output at sampleRate and starts calling renderer on the audio thread.
    /// On failure returns false and fills error.
    virtual bool start(double sampleRate, AudioRenderer* renderer, QString* error) = 0;
    /// Stops the device; after it returns the renderer is never called again.
    virtual void stop() = 0;
    /// Stops the device and lets go of the audio system behind it, so nothing of it runs
    /// while no sound is wanted; the next start() brings it back.
    virtual void release() { stop(); }
    virtual bool isRunning() const = 0;
    /// Reports (once) that the running output went away or changed its format.
    virtual Event takeEvent() = 0;
};

} // namespace quill

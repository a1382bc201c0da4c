#pragma once

namespace quill {

/// Whatever fills an output device's buffer. Called on the device's real-time thread:
/// implementations never allocate, lock or touch files.
class AudioRenderer {
public:
    virtual ~AudioRenderer() = default;
    /// Writes frames interleaved stereo float samples.
    virtual void render(float* interleaved, int frames) = 0;
};

} // namespace quill

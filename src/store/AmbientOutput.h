#pragma once

#include "model/AmbientLevels.h"

#include <functional>

namespace quill {

/// What the store needs of the ambient player.
class AmbientOutput {
public:
    virtual ~AmbientOutput() = default;
    /// Target levels; while playing, newly audible sources start and all fade to the new levels.
    virtual void setLevels(const AmbientLevels& levels) = 0;
    /// Starts the engine and the selected sources with a fade-in; false when it cannot even
    /// begin. The output may still be opening when this returns true; if it then fails, or is
    /// lost for good later, the stop handler is called.
    virtual bool play() = 0;
    /// Fades out and stops playback.
    virtual void stop() = 0;
    /// A play may follow soon (the pointer is on its button): load what the first play needs
    /// without blocking the caller. Starts nothing.
    virtual void prepare() {}
    /// Called on the main thread when playback ended without stop(): the output could not be
    /// opened or was lost and did not come back. The next play() tries again.
    void setStopHandler(std::function<void()> handler) { m_stopHandler = std::move(handler); }

protected:
    void reportStopped() const {
        if (m_stopHandler)
            m_stopHandler();
    }

private:
    std::function<void()> m_stopHandler;
};

} // namespace quill

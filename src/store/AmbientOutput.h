#pragma once

#include "model/AmbientLevels.h"

namespace quill {

/// What the store needs of the ambient player.
class AmbientOutput {
public:
    virtual ~AmbientOutput() = default;
    /// Target levels; while playing, newly audible sources start and all fade to the new levels.
    virtual void setLevels(const AmbientLevels& levels) = 0;
    /// Starts the engine and the selected sources with a fade-in; false when it cannot start.
    virtual bool play() = 0;
    /// Fades out and stops playback.
    virtual void stop() = 0;
    /// A play may follow soon (the pointer is on its button): load what the first play needs
    /// without blocking the caller. Starts nothing.
    virtual void prepare() {}
};

} // namespace quill

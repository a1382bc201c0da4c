#pragma once

#include <QString>

namespace quill {

/// Plays a short named sound; an unknown name plays a beep. Returns at once.
class SoundPlayer {
public:
    virtual ~SoundPlayer() = default;
    virtual void play(const QString& name) = 0;
};

} // namespace quill

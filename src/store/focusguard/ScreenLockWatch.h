#pragma once

#include <functional>

namespace quill {

/// Reports each time the user's screen locks.
class ScreenLockWatch {
public:
    using Locked = std::function<void()>;
    virtual ~ScreenLockWatch() = default;
    /// Starts watching; `locked` runs on the main thread at every lock, never during the call.
    virtual void watch(Locked locked) = 0;
};

} // namespace quill

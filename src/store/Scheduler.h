#pragma once

#include <chrono>
#include <functional>
#include <memory>

namespace quill {

/// Repeating timers and delayed calls on the main thread. Destroying a handle cancels it.
class Scheduler {
public:
    using Callback = std::function<void()>;

    class Handle {
    public:
        virtual ~Handle() = default;
        /// False once a delayed call has run (a repeating timer stays active).
        virtual bool isActive() const = 0;
    };

    virtual ~Scheduler() = default;
    /// Calls `fn` every `period`, each call queued separately on the main thread.
    virtual std::unique_ptr<Handle> every(std::chrono::milliseconds period, Callback fn) = 0;
    /// Calls `fn` once, `delay` from now.
    virtual std::unique_ptr<Handle> after(std::chrono::milliseconds delay, Callback fn) = 0;
    /// Calls `fn` once, when the wall clock has moved on by `delay`: unlike after(), also as
    /// soon as the computer wakes from a sleep that passed that moment. It may come early,
    /// when the wall clock is set; the caller then plans again from the new time.
    virtual std::unique_ptr<Handle> afterWallTime(std::chrono::milliseconds delay, Callback fn) {
        return after(delay, std::move(fn));
    }
};

} // namespace quill

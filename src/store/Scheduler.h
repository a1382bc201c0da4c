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
};

} // namespace quill

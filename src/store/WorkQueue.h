#pragma once

#include <functional>

namespace quill {

/// Work kept off the UI thread (serialising and writing the data file), run one job at a
/// time in the order handed over.
class WorkQueue {
public:
    virtual ~WorkQueue() = default;
    /// Runs `work` after every job handed over before it, away from the UI thread; then
    /// runs `done` on the UI thread.
    virtual void post(std::function<void()> work, std::function<void()> done) = 0;
    /// Blocks until every job handed over so far has run; their `done` may still be queued.
    virtual void waitForIdle() = 0;
};

} // namespace quill

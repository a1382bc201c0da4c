#pragma once

#include "store/Scheduler.h"

namespace quill {

/// Scheduler on precise Qt timers of the calling thread's event loop: the ambient ramp runs
/// at 60 steps a second and must keep doing so while the user drags a slider.
class PreciseTimerScheduler final : public Scheduler {
public:
    std::unique_ptr<Handle> every(std::chrono::milliseconds period, Callback fn) override;
    std::unique_ptr<Handle> after(std::chrono::milliseconds delay, Callback fn) override;
};

} // namespace quill

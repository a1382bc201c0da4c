#pragma once

#include "store/Scheduler.h"

#include <chrono>
#include <memory>

namespace quill {

/// A delayed call on the wall clock. On Linux a timerfd on CLOCK_REALTIME: the kernel fires
/// it right after a resume that passed its moment and when the wall clock is set, where a
/// QTimer (monotonic, stopped while asleep) would come up to its whole delay late.
/// Elsewhere a plain precise QTimer.
std::unique_ptr<Scheduler::Handle> makeWallClockTimer(std::chrono::milliseconds delay,
                                                      Scheduler::Callback fn);

} // namespace quill

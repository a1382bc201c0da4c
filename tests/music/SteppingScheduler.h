#pragma once

#include "support/VirtualScheduler.h"

#include <chrono>
#include <memory>
#include <vector>

namespace quill::test {

/// Virtual time that knows which delayed calls are polls (calls of one given delay). A test
/// moves the clock one poll at a time, and only once the code under test is idle waiting for
/// that poll, so real bus round trips never race virtual deadlines.
class SteppingScheduler final : public Scheduler {
public:
    SteppingScheduler(std::shared_ptr<VirtualScheduler> inner, std::chrono::milliseconds pollDelay)
        : m_inner(std::move(inner)), m_pollDelay(pollDelay) {}

    std::unique_ptr<Handle> every(std::chrono::milliseconds period, Callback fn) override {
        return m_inner->every(period, std::move(fn));
    }

    std::unique_ptr<Handle> after(std::chrono::milliseconds delay, Callback fn) override {
        if (delay != m_pollDelay)
            return m_inner->after(delay, std::move(fn));
        auto state = std::make_shared<PollState>();
        m_polls.push_back(state);
        auto inner = m_inner->after(delay, [state, fn = std::move(fn)] {
            state->done = true;
            fn();
        });
        return std::make_unique<PollHandle>(std::move(inner), state);
    }

    /// Polls that are waiting for the clock.
    int pendingPolls() const {
        int n = 0;
        for (const auto& p : m_polls)
            if (!p->done)
                ++n;
        return n;
    }

    void advance(qint64 ms) { m_inner->advance(ms); }
    qint64 pollDelayMs() const { return m_pollDelay.count(); }

private:
    struct PollState {
        bool done = false;
    };
    class PollHandle final : public Handle {
    public:
        PollHandle(std::unique_ptr<Handle> inner, std::shared_ptr<PollState> state)
            : m_inner(std::move(inner)), m_state(std::move(state)) {}
        ~PollHandle() override { m_state->done = true; }
        bool isActive() const override { return m_inner->isActive(); }

    private:
        std::unique_ptr<Handle> m_inner;
        std::shared_ptr<PollState> m_state;
    };

    std::shared_ptr<VirtualScheduler> m_inner;
    std::chrono::milliseconds m_pollDelay;
    std::vector<std::shared_ptr<PollState>> m_polls;
};

} // namespace quill::test

#include "support/VirtualScheduler.h"

#include <algorithm>
#include <optional>
#include <vector>

namespace quill::test {

struct VirtualScheduler::Entry {
    Callback fn;
    qint64 periodMs = 0; // 0 for a one-shot call
    bool cancelled = false;
    bool fired = false;
    std::optional<qint64> wallOffset; // wall minus monotonic when a wall-time call was planned
};

class VirtualScheduler::EntryHandle final : public Scheduler::Handle {
public:
    explicit EntryHandle(std::shared_ptr<Entry> e) : m_entry(std::move(e)) {}
    ~EntryHandle() override { m_entry->cancelled = true; }
    bool isActive() const override { return !m_entry->cancelled && !m_entry->fired; }

private:
    std::shared_ptr<Entry> m_entry;
};

VirtualScheduler::VirtualScheduler(std::shared_ptr<ManualClock> clock)
    : m_clock(std::move(clock)) {}
VirtualScheduler::~VirtualScheduler() = default;

void VirtualScheduler::schedule(const std::shared_ptr<Entry>& entry, qint64 at) {
    m_queue.emplace(at, entry);
}

std::unique_ptr<Scheduler::Handle> VirtualScheduler::every(std::chrono::milliseconds period,
                                                           Callback fn) {
    auto e = std::make_shared<Entry>();
    e->fn = std::move(fn);
    e->periodMs = period.count();
    schedule(e, m_clock->monotonicMs() + e->periodMs);
    return std::make_unique<EntryHandle>(e);
}

std::unique_ptr<Scheduler::Handle> VirtualScheduler::after(std::chrono::milliseconds delay,
                                                           Callback fn) {
    auto e = std::make_shared<Entry>();
    e->fn = std::move(fn);
    schedule(e, m_clock->monotonicMs() + delay.count());
    return std::make_unique<EntryHandle>(e);
}

std::unique_ptr<Scheduler::Handle> VirtualScheduler::afterWallTime(std::chrono::milliseconds delay,
                                                                   Callback fn) {
    auto e = std::make_shared<Entry>();
    e->fn = std::move(fn);
    e->wallOffset = wallOffset();
    schedule(e, m_clock->monotonicMs() + delay.count());
    return std::make_unique<EntryHandle>(e);
}

qint64 VirtualScheduler::wallOffset() const {
    return m_clock->now().toMSecsSinceEpoch() - m_clock->monotonicMs();
}

void VirtualScheduler::fireWallCallsOfAMovedClock() {
    const qint64 offset = wallOffset();
    std::vector<std::shared_ptr<Entry>> moved;
    for (auto it = m_queue.begin(); it != m_queue.end();) {
        if (it->second->wallOffset && *it->second->wallOffset != offset) {
            it->second->wallOffset = offset;
            moved.push_back(it->second);
            it = m_queue.erase(it);
        } else {
            ++it;
        }
    }
    for (const auto& e : moved)
        schedule(e, m_clock->monotonicMs());
}

void VirtualScheduler::advance(qint64 ms) {
    fireWallCallsOfAMovedClock();
    const qint64 end = m_clock->monotonicMs() + ms;
    while (!m_queue.empty() && m_queue.begin()->first <= end) {
        auto it = m_queue.begin();
        // Whatever fell due while the clock was moved by hand fires now, as a late timer would.
        const qint64 at = std::max(it->first, m_clock->monotonicMs());
        auto entry = it->second;
        m_queue.erase(it);
        if (entry->cancelled)
            continue;
        m_clock->elapse(at - m_clock->monotonicMs());
        if (entry->periodMs > 0)
            schedule(entry, at + entry->periodMs);
        else
            entry->fired = true;
        entry->fn();
    }
    m_clock->elapse(end - m_clock->monotonicMs());
}

void VirtualScheduler::runDue() {
    advance(0);
}

int VirtualScheduler::pendingDelayedCalls() const {
    int n = 0;
    for (const auto& [at, e] : m_queue)
        if (!e->cancelled && e->periodMs == 0)
            ++n;
    return n;
}

} // namespace quill::test

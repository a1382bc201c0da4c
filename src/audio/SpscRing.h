#pragma once

#include <array>
#include <atomic>
#include <cstddef>

namespace quill {

/// A fixed-capacity single-producer single-consumer queue. Neither side allocates or locks,
/// so one end may live on the real-time audio thread.
template <typename T, std::size_t Capacity> class SpscRing {
    static_assert((Capacity & (Capacity - 1)) == 0, "capacity must be a power of two");

public:
    bool push(const T& value) {
        const std::size_t w = m_write.load(std::memory_order_relaxed);
        if (w - m_read.load(std::memory_order_acquire) == Capacity)
            return false;
        m_items[w & (Capacity - 1)] = value;
        m_write.store(w + 1, std::memory_order_release);
        return true;
    }
    bool pop(T& out) {
        const std::size_t r = m_read.load(std::memory_order_relaxed);
        if (r == m_write.load(std::memory_order_acquire))
            return false;
        out = m_items[r & (Capacity - 1)];
        m_read.store(r + 1, std::memory_order_release);
        return true;
    }
    bool empty() const {
        return m_read.load(std::memory_order_acquire) == m_write.load(std::memory_order_acquire);
    }

private:
    std::array<T, Capacity> m_items{};
    alignas(64) std::atomic<std::size_t> m_write{0};
    alignas(64) std::atomic<std::size_t> m_read{0};
};

} // namespace quill

#include "audio/CueMixer.h"

#include <algorithm>

namespace quill {

CueMixer::CueMixer(std::vector<std::vector<float>> clips) {
    for (auto& clip : clips) {
        auto slot = std::make_unique<Slot>();
        slot->clip = std::move(clip);
        m_slots.push_back(std::move(slot));
    }
}

CueMixer::CueMixer(int slots) {
    for (int i = 0; i < slots; ++i)
        m_slots.push_back(std::make_unique<Slot>());
}

void CueMixer::setClip(int slot, std::vector<float> clip) {
    if (slot >= 0 && slot < int(m_slots.size())) {
        m_slots[std::size_t(slot)]->clip = std::move(clip);
        m_slots[std::size_t(slot)]->position = 0;
        m_slots[std::size_t(slot)]->active = false;
    }
}

void CueMixer::trigger(int slot) {
    if (slot >= 0 && slot < int(m_slots.size()))
        m_slots[std::size_t(slot)]->triggers.fetch_add(1, std::memory_order_release);
}

void CueMixer::discardPending() {
    for (auto& s : m_slots)
        s->heard = s->triggers.load(std::memory_order_acquire);
}

void CueMixer::render(float* out, int frames) {
    std::fill(out, out + 2 * std::max(frames, 0), 0.0f);
    for (auto& s : m_slots) {
        const std::uint32_t triggers = s->triggers.load(std::memory_order_acquire);
        if (triggers != s->heard) {
            s->heard = triggers;
            s->position = 0;
            s->active = true;
        }
        if (!s->active)
            continue;
        const std::size_t n =
            std::min<std::size_t>(std::size_t(frames), s->clip.size() - s->position);
        const float* src = s->clip.data() + s->position;
        for (std::size_t i = 0; i < n; ++i) {
            out[2 * i] += src[i];
            out[2 * i + 1] += src[i];
        }
        s->position += n;
        if (s->position >= s->clip.size())
            s->active = false;
    }
}

} // namespace quill

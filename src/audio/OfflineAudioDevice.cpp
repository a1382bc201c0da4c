#include "audio/OfflineAudioDevice.h"

#include "audio/AudioRenderer.h"

#include <algorithm>

namespace quill {

bool OfflineAudioDevice::start(double sampleRate, AudioRenderer* renderer, QString* error) {
    if (!m_failure.isEmpty() && !m_deferred) {
        m_lastError = m_failure;
        if (error)
            *error = m_failure;
        return false;
    }
    m_renderer = renderer;
    m_runningRate = sampleRate;
    m_lost = false;
    m_state = m_deferred ? State::starting : State::running;
    ++m_starts;
    return true;
}

void OfflineAudioDevice::finishStart(const QString& failure) {
    if (m_state != State::starting)
        return;
    if (failure.isEmpty()) {
        m_state = State::running;
        m_pending.push_back(Event::started);
    } else {
        m_lastError = failure;
        m_state = State::stopped;
        m_renderer = nullptr;
        m_pending.push_back(Event::failed);
    }
    notifyListener();
}

void OfflineAudioDevice::stop() {
    if (m_renderer)
        ++m_stops;
    m_renderer = nullptr;
    m_state = State::stopped;
    m_lost = false;
}

AudioDevice::Event OfflineAudioDevice::takeEvent() {
    if (m_pending.empty())
        return Event::none;
    const Event e = m_pending.front();
    m_pending.erase(m_pending.begin());
    return e;
}

const std::vector<float>& OfflineAudioDevice::render(int frames) {
    m_buffer.assign(std::size_t(std::max(frames, 0)) * 2, 0.0f);
    if (m_renderer && m_state == State::running && !m_lost && frames > 0)
        m_renderer->render(m_buffer.data(), frames);
    return m_buffer;
}

void OfflineAudioDevice::simulateRemoval() {
    if (!m_renderer)
        return;
    m_lost = true;
    m_pending.push_back(Event::removed);
    notifyListener();
}

void OfflineAudioDevice::simulateFormatChange(double rate) {
    m_preferredRate = rate;
    if (m_renderer) {
        m_pending.push_back(Event::formatChanged);
        notifyListener();
    }
}

} // namespace quill

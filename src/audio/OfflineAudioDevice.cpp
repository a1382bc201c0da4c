#include "audio/OfflineAudioDevice.h"

#include "audio/AudioRenderer.h"

#include <algorithm>

namespace quill {

bool OfflineAudioDevice::start(double sampleRate, AudioRenderer* renderer, QString* error) {
    if (!m_failure.isEmpty()) {
        if (error)
            *error = m_failure;
        return false;
    }
    m_renderer = renderer;
    m_runningRate = sampleRate;
    m_lost = false;
    ++m_starts;
    return true;
}

void OfflineAudioDevice::stop() {
    if (m_renderer)
        ++m_stops;
    m_renderer = nullptr;
    m_lost = false;
}

AudioDevice::Event OfflineAudioDevice::takeEvent() {
    const Event e = m_pending;
    m_pending = Event::none;
    return e;
}

const std::vector<float>& OfflineAudioDevice::render(int frames) {
    m_buffer.assign(std::size_t(std::max(frames, 0)) * 2, 0.0f);
    if (m_renderer && !m_lost && frames > 0)
        m_renderer->render(m_buffer.data(), frames);
    return m_buffer;
}

void OfflineAudioDevice::simulateRemoval() {
    if (!m_renderer)
        return;
    m_lost = true;
    m_pending = Event::removed;
}

void OfflineAudioDevice::simulateFormatChange(double rate) {
    m_preferredRate = rate;
    if (m_renderer)
        m_pending = Event::formatChanged;
}

} // namespace quill

#pragma once

#include "audio/AudioDevice.h"

#include <mutex>

namespace quill {

/// What a device has to tell the main thread: events posted from any thread and taken one
/// at a time (failures first), with the reason of the last failure. The listener is called
/// under the lock, so once it has been replaced no call of the old one is under way.
class AudioDeviceEvents {
public:
    using Event = AudioDevice::Event;

    void setListener(std::function<void()> listener) {
        std::lock_guard lock(m_mutex);
        m_listener = std::move(listener);
    }
    void post(Event event, const QString& error = {}) {
        std::lock_guard lock(m_mutex);
        if (event == Event::failed || event == Event::removed)
            m_error = error;
        m_bits |= bitOf(event);
        if (m_listener)
            m_listener();
    }
    Event take() {
        std::lock_guard lock(m_mutex);
        for (Event e : {Event::failed, Event::removed, Event::started, Event::formatChanged})
            if (m_bits & bitOf(e)) {
                m_bits &= ~bitOf(e);
                return e;
            }
        return Event::none;
    }
    /// Forgets what was not taken (and, with the error, a failure before).
    void clear(bool error = false) {
        std::lock_guard lock(m_mutex);
        m_bits = 0;
        if (error)
            m_error.clear();
    }
    QString error() const {
        std::lock_guard lock(m_mutex);
        return m_error;
    }

private:
    static unsigned bitOf(Event e) { return 1u << unsigned(e); }

    mutable std::mutex m_mutex;
    unsigned m_bits = 0;
    QString m_error;
    std::function<void()> m_listener;
};

} // namespace quill

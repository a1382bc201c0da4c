#include "audio/ThreadedAudioDevice.h"

#include <cstring>
#include <thread>

namespace quill {

ThreadedAudioDevice::ThreadedAudioDevice(std::shared_ptr<AudioDevice> inner)
    : m_inner(std::move(inner)) {}

ThreadedAudioDevice::~ThreadedAudioDevice() {
    m_events.setListener({});
    release();
}

bool ThreadedAudioDevice::start(double sampleRate, AudioRenderer* renderer, QString*) {
    stop();
    std::uint64_t epoch = 0;
    {
        std::lock_guard lock(m_mutex);
        epoch = ++m_epoch;
        m_events.clear(true);
        m_state = State::starting;
    }
    m_worker.post([this, epoch, sampleRate, renderer] {
        QString error;
        const bool ok = m_inner->start(sampleRate, this, &error);
        m_preferredRate = m_inner->preferredSampleRate();
        std::unique_lock lock(m_mutex);
        if (epoch != m_epoch) { // stopped meanwhile
            lock.unlock();
            if (ok)
                m_inner->stop();
            return;
        }
        if (ok) {
            m_renderer = renderer;
            m_state = State::running;
            m_events.post(Event::started);
        } else {
            m_state = State::stopped;
            m_events.post(Event::failed, error);
        }
    });
    return true;
}

void ThreadedAudioDevice::stop() {
    {
        std::lock_guard lock(m_mutex);
        if (m_state == State::stopped)
            return;
        ++m_epoch;
        m_state = State::stopped;
        m_events.clear();
    }
    // From here the audio thread renders silence; wait out a pass under way (never the
    // sound system: closing the output is the worker's).
    m_renderer = nullptr;
    while (m_inRender.load())
        std::this_thread::yield();
    m_worker.post([this] { m_inner->stop(); });
}

void ThreadedAudioDevice::release() {
    stop();
    m_worker.post([this] { m_inner->release(); });
}

void ThreadedAudioDevice::render(float* interleaved, int frames) {
    m_inRender = true;
    if (AudioRenderer* renderer = m_renderer.load())
        renderer->render(interleaved, frames);
    else
        std::memset(interleaved, 0, std::size_t(frames) * 2 * sizeof(float));
    m_inRender = false;
}

AudioDevice::Event ThreadedAudioDevice::takeEvent() {
    // The output's own news is asked for on the worker, where waiting does no harm.
    if (m_state == State::running && !m_polling.exchange(true))
        m_worker.post([this] {
            const Event e = m_inner->takeEvent();
            m_polling = false;
            if (e != Event::none && m_state == State::running)
                m_events.post(e, m_inner->error());
        });
    return m_events.take();
}

} // namespace quill

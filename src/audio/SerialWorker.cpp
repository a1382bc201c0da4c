#include "audio/SerialWorker.h"

namespace quill {

SerialWorker::SerialWorker() : m_thread([this] { run(); }) {}

SerialWorker::~SerialWorker() {
    {
        std::lock_guard lock(m_mutex);
        m_quit = true;
    }
    m_wakeup.notify_all();
    m_thread.join();
}

void SerialWorker::post(std::function<void()> job) {
    {
        std::lock_guard lock(m_mutex);
        m_jobs.push_back(std::move(job));
    }
    m_wakeup.notify_all();
}

void SerialWorker::run() {
    std::unique_lock lock(m_mutex);
    for (;;) {
        m_wakeup.wait(lock, [this] { return m_quit || !m_jobs.empty(); });
        if (m_jobs.empty())
            return;
        auto job = std::move(m_jobs.front());
        m_jobs.pop_front();
        lock.unlock();
        job();
        lock.lock();
    }
}

} // namespace quill

#include "audio/SerialWorker.h"

namespace quill {

SerialWorker::SerialWorker() = default;

SerialWorker::~SerialWorker() {
    std::thread last;
    {
        std::lock_guard lock(m_mutex);
        last = std::move(m_thread);
    }
    if (last.joinable())
        last.join();
}

void SerialWorker::post(std::function<void()> job) {
    std::lock_guard lock(m_mutex);
    m_jobs.push_back(std::move(job));
    if (m_running)
        return;
    // The previous thread has left run() already (it cleared m_running under this lock).
    if (m_thread.joinable())
        m_thread.join();
    m_running = true;
    m_thread = std::thread([this] { run(); });
}

void SerialWorker::run() {
    std::unique_lock lock(m_mutex);
    while (!m_jobs.empty()) {
        auto job = std::move(m_jobs.front());
        m_jobs.pop_front();
        lock.unlock();
        job();
        lock.lock();
    }
    m_running = false;
}

} // namespace quill

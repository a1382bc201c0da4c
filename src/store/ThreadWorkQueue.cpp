#include "store/ThreadWorkQueue.h"

#include <QMetaObject>

namespace quill {

ThreadWorkQueue::ThreadWorkQueue() : m_home(std::make_unique<QObject>()) {
    m_thread = std::thread([this] { run(); });
}

ThreadWorkQueue::~ThreadWorkQueue() {
    {
        std::lock_guard lock(m_mutex);
        m_stopping = true;
    }
    m_wake.notify_all();
    m_thread.join();
}

void ThreadWorkQueue::post(std::function<void()> work, std::function<void()> done) {
    {
        std::lock_guard lock(m_mutex);
        m_jobs.push_back({std::move(work), std::move(done)});
    }
    m_wake.notify_one();
}

void ThreadWorkQueue::waitForIdle() {
    std::unique_lock lock(m_mutex);
    m_idle.wait(lock, [this] { return m_jobs.empty() && !m_busy; });
}

void ThreadWorkQueue::run() {
    std::unique_lock lock(m_mutex);
    for (;;) {
        m_wake.wait(lock, [this] { return m_stopping || !m_jobs.empty(); });
        if (m_jobs.empty())
            return; // stopping, and everything handed over has been written
        Job job = std::move(m_jobs.front());
        m_jobs.pop_front();
        m_busy = true;
        lock.unlock();
        job.work();
        if (job.done) {
            // The queue's home object is gone only after this thread has been joined.
            QMetaObject::invokeMethod(m_home.get(), std::move(job.done), Qt::QueuedConnection);
        }
        lock.lock();
        m_busy = false;
        if (m_jobs.empty())
            m_idle.notify_all();
    }
}

} // namespace quill

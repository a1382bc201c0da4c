#pragma once

#include <condition_variable>
#include <deque>
#include <functional>
#include <mutex>
#include <thread>

namespace quill {

/// Runs jobs one after another on its own thread, so slow device calls never hold up the UI.
class SerialWorker {
public:
    SerialWorker();
    /// Runs the jobs still queued, then ends the thread.
    ~SerialWorker();
    SerialWorker(const SerialWorker&) = delete;
    SerialWorker& operator=(const SerialWorker&) = delete;

    void post(std::function<void()> job);

private:
    void run();
    std::mutex m_mutex;
    std::condition_variable m_wakeup;
    std::deque<std::function<void()>> m_jobs;
    bool m_quit = false;
    std::thread m_thread;
};

} // namespace quill

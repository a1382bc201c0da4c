#pragma once

#include <deque>
#include <functional>
#include <mutex>
#include <thread>

namespace quill {

/// Runs jobs one after another on its own thread, so slow device calls never hold up the UI.
/// The thread exists only while there are jobs.
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
    std::deque<std::function<void()>> m_jobs;
    bool m_running = false;
    std::thread m_thread;
};

} // namespace quill

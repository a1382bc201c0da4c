#pragma once

#include "store/WorkQueue.h"

#include <QObject>
#include <QPointer>
#include <condition_variable>
#include <deque>
#include <memory>
#include <mutex>
#include <thread>

namespace quill {

/// One worker thread; `done` is queued to the thread that created the queue. Destroying the
/// queue finishes every job handed over first.
class ThreadWorkQueue final : public WorkQueue {
public:
    ThreadWorkQueue();
    ~ThreadWorkQueue() override;
    void post(std::function<void()> work, std::function<void()> done) override;
    void waitForIdle() override;

private:
    struct Job {
        std::function<void()> work, done;
    };
    void run();

    std::unique_ptr<QObject> m_home; ///< lives on the creating thread; `done` runs there
    std::mutex m_mutex;
    std::condition_variable m_wake, m_idle;
    std::deque<Job> m_jobs;
    bool m_busy = false;
    bool m_stopping = false;
    std::thread m_thread;
};

} // namespace quill

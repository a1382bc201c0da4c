#pragma once

#include "audio/LoopVoice.h"

#include <QString>
#include <atomic>
#include <chrono>
#include <condition_variable>
#include <memory>
#include <mutex>
#include <thread>
#include <vector>

namespace quill {

/// Decodes the queued segments of every looping voice into its chunk ring, off both the UI
/// thread and the audio thread. Consecutive segments of one generation form one continuous
/// stream (resampled to the output rate when the file's rate differs), so a loop has no gap.
/// A threaded streamer works on its own thread; a manual one only when service() is called,
/// which lets tests decode deterministically. The thread exists from the first wake() until
/// park(); while the output is stopped it sleeps until woken instead of polling the rings.
class SegmentStreamer {
public:
    enum class Mode { threaded, manual };
    explicit SegmentStreamer(Mode mode = Mode::threaded);
    ~SegmentStreamer();
    SegmentStreamer(const SegmentStreamer&) = delete;
    SegmentStreamer& operator=(const SegmentStreamer&) = delete;

    /// Registers a voice that plays the file at path; voices stay until the streamer ends.
    void addVoice(LoopVoice* voice, const QString& path);
    /// Output sample rate the chunks are made for.
    void setOutputRate(double rate) { m_outputRate.store(rate, std::memory_order_relaxed); }
    /// Wakes the worker after new segments were queued, starting it if it is parked.
    void wake();
    /// While the output runs the worker tops the rings up on its own every kRefillPeriod;
    /// otherwise nothing drains them and it sleeps until woken.
    void setStreaming(bool streaming);
    /// Ends the worker thread until the next wake(); the voices stay registered.
    void park();
    bool hasThread() const { return m_thread.joinable(); }
    /// The rings hold about two seconds of sound, so this never lets them run dry; decoding
    /// half a second of each voice at a time keeps the decoder's tables in the cache.
    static constexpr std::chrono::milliseconds kRefillPeriod{500};
    /// Fills every voice's ring as far as it goes. Called by the worker, or by tests.
    void service();
    /// Stops the worker thread; service() may still be called by hand afterwards.
    void shutdown();

private:
    struct Stream;
    bool fill(Stream& stream);
    void run();
    void stopThread();

    Mode m_mode;
    std::atomic<double> m_outputRate{48000.0};
    std::mutex m_mutex;
    std::condition_variable m_wakeup;
    bool m_woken = false;
    bool m_quit = false;   // the thread is to end
    bool m_closed = false; // shut down for good: no thread starts again
    bool m_streaming = false;
    std::vector<std::shared_ptr<Stream>> m_streams; // guarded by m_mutex
    std::mutex m_serviceMutex;                      // one service() at a time
    std::thread m_thread;
};

} // namespace quill

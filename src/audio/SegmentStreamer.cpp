#include "audio/SegmentStreamer.h"

#include "audio/Resampler.h"

#include "audio/SndfileLibrary.h"
#include <pthread.h>

#include <algorithm>

namespace quill {

namespace {
constexpr sf_count_t kBlockFrames = 4096;
}

struct SegmentStreamer::Stream {
    LoopVoice* voice = nullptr;
    QByteArray path;

    std::int64_t generation = -1;
    bool inSegment = false;
    LoopVoice::Segment segment;
    std::int64_t remaining = 0;              // source frames of the segment still to read
    const SndfileLibrary* sndfile = nullptr; // set with the first file opened
    SNDFILE* file = nullptr;
    int channels = 0;
    double fileRate = 0.0;

    std::vector<float> block; // decoded source frames, file's channel layout
    sf_count_t blockFrames = 0, blockPos = 0;

    Resampler resampler; // continued across segments

    ~Stream() { closeFile(); }
    void closeFile() {
        if (file)
            sndfile->close(file);
        file = nullptr;
        blockFrames = blockPos = 0;
    }
    void endSegment() {
        inSegment = false;
        closeFile();
    }
    void resetStream() {
        endSegment();
        resampler.reset();
    }
    bool openSegment() {
        sndfile = SndfileLibrary::get();
        if (!sndfile)
            return false;
        SF_INFO info{};
        file = sndfile->open(path.constData(), SFM_READ, &info);
        if (!file)
            return false;
        if (info.channels < 1 || info.samplerate <= 0 ||
            sndfile->seek(file, segment.startFrame, SEEK_SET) < 0) {
            closeFile();
            return false;
        }
        channels = info.channels;
        fileRate = info.samplerate;
        block.resize(std::size_t(kBlockFrames) * std::size_t(channels));
        remaining = segment.frameCount;
        return true;
    }
    /// Next source frame of the current segment; false when it is used up.
    bool pull(float& l, float& r) {
        if (blockPos == blockFrames) {
            if (remaining <= 0 || !file)
                return false;
            const sf_count_t want = std::min<sf_count_t>(kBlockFrames, remaining);
            blockFrames = sndfile->readfFloat(file, block.data(), want);
            blockPos = 0;
            if (blockFrames <= 0) {
                blockFrames = 0;
                remaining = 0;
                return false;
            }
            remaining -= blockFrames;
        }
        const float* f = block.data() + blockPos * channels;
        l = f[0];
        r = channels > 1 ? f[1] : f[0];
        ++blockPos;
        return true;
    }
};

SegmentStreamer::SegmentStreamer(Mode mode) : m_mode(mode) {}

SegmentStreamer::~SegmentStreamer() {
    shutdown();
}

void SegmentStreamer::shutdown() {
    {
        std::lock_guard lock(m_mutex);
        m_closed = true;
    }
    stopThread();
}

void SegmentStreamer::park() {
    stopThread();
}

void SegmentStreamer::stopThread() {
    if (!m_thread.joinable())
        return;
    {
        std::lock_guard lock(m_mutex);
        m_quit = true;
    }
    m_wakeup.notify_all();
    m_thread.join();
    std::lock_guard lock(m_mutex);
    m_quit = false;
}

void SegmentStreamer::addVoice(LoopVoice* voice, const QString& path) {
    auto stream = std::make_shared<Stream>();
    stream->voice = voice;
    stream->path = path.toLocal8Bit();
    std::lock_guard lock(m_mutex);
    m_streams.push_back(std::move(stream));
}

void SegmentStreamer::wake() {
    {
        std::lock_guard lock(m_mutex);
        m_woken = true;
        if (m_mode == Mode::manual || m_closed || m_thread.joinable()) {
            m_wakeup.notify_all();
            return;
        }
    }
    m_thread = std::thread([this] { run(); });
}

void SegmentStreamer::setStreaming(bool streaming) {
    {
        std::lock_guard lock(m_mutex);
        m_streaming = streaming;
    }
    if (streaming)
        wake();
}

void SegmentStreamer::run() {
#ifdef __linux__
    pthread_setname_np(pthread_self(), "quill-decoder"); // for per-thread CPU figures
#endif
    std::unique_lock lock(m_mutex);
    while (!m_quit) {
        m_woken = false;
        lock.unlock();
        service();
        lock.lock();
        if (m_streaming)
            m_wakeup.wait_for(lock, kRefillPeriod, [this] { return m_woken || m_quit; });
        else
            m_wakeup.wait(lock, [this] { return m_woken || m_quit || m_streaming; });
    }
}

void SegmentStreamer::service() {
    std::lock_guard serviceLock(m_serviceMutex);
    std::vector<std::shared_ptr<Stream>> streams;
    {
        std::lock_guard lock(m_mutex);
        streams = m_streams;
    }
    for (auto& s : streams)
        while (fill(*s)) {
        }
}

// Produces at most one chunk; false when there is nothing to do or no room.
bool SegmentStreamer::fill(Stream& s) {
    const std::int64_t generation = s.voice->generation();
    if (generation != s.generation) {
        if (s.inSegment) {
            // Tell the audio side the interrupted segment is gone, like a flushed player.
            LoopVoice::Chunk* marker = s.voice->beginChunk();
            if (!marker)
                return false;
            marker->generation = s.segment.generation;
            marker->frames = 0;
            marker->endsSegment = true;
            s.voice->commitChunk();
        }
        s.resetStream();
        s.generation = generation;
    }

    LoopVoice::Chunk* chunk = s.voice->beginChunk();
    if (!chunk)
        return false;

    while (!s.inSegment) {
        if (!s.voice->takeSegment(s.segment))
            return false;
        if (s.segment.generation != generation) {
            chunk->generation = s.segment.generation;
            chunk->frames = 0;
            chunk->endsSegment = true;
            s.voice->commitChunk();
            return true;
        }
        // A file that cannot be reopened drops this segment and so ends the loop quietly.
        if (s.openSegment())
            s.inSegment = true;
    }

    const double outputRate = m_outputRate.load(std::memory_order_relaxed);
    s.resampler.setRates(s.fileRate, outputRate > 0 ? outputRate : s.fileRate);

    chunk->generation = generation;
    chunk->endsSegment = false;
    int frames = 0;
    while (frames < LoopVoice::kChunkFrames) {
        // Same rate: whole runs of the decoded block are copied.
        if (s.resampler.passesThrough() && s.resampler.needsInput() && s.blockPos < s.blockFrames) {
            const int m = int(
                std::min<sf_count_t>(s.blockFrames - s.blockPos, LoopVoice::kChunkFrames - frames));
            float* out = chunk->samples + 2 * frames;
            const float* src = s.block.data() + s.blockPos * s.channels;
            const int right = s.channels > 1 ? 1 : 0;
            for (int k = 0; k < m; ++k) {
                out[2 * k] = src[k * s.channels];
                out[2 * k + 1] = src[k * s.channels + right];
            }
            s.blockPos += m;
            frames += m;
            continue;
        }
        bool exhausted = false;
        while (s.resampler.needsInput()) {
            float l, r;
            if (!s.pull(l, r)) {
                exhausted = true;
                break;
            }
            s.resampler.push(l, r);
        }
        if (exhausted) {
            chunk->endsSegment = true;
            s.endSegment();
            break;
        }
        s.resampler.next(chunk->samples[2 * frames], chunk->samples[2 * frames + 1]);
        ++frames;
    }
    chunk->frames = frames;
    s.voice->commitChunk();
    return true;
}

} // namespace quill

#include "audio/PulseAudioDevice.h"

#include "audio/AudioRenderer.h"
#include "audio/PulseLibrary.h"

#include <pulse/pulseaudio.h>

#include <algorithm>
#include <cstring>

namespace quill {

namespace {
// Only called once the library is loaded (start() checks).
const PulseLibrary& pa() {
    return *PulseLibrary::get();
}

// The loop's lock is held only for short bookkeeping and one render pass, never across a
// wait for the server.
class LoopLock {
public:
    explicit LoopLock(pa_threaded_mainloop* loop) : m_loop(loop) {
        pa().threadedMainloopLock(m_loop);
    }
    ~LoopLock() { pa().threadedMainloopUnlock(m_loop); }
    LoopLock(const LoopLock&) = delete;
    LoopLock& operator=(const LoopLock&) = delete;

private:
    pa_threaded_mainloop* m_loop;
};

// A rewrite starts this far after what is heard, to cover the trip to the server.
constexpr double kRewriteMarginSeconds = 0.008;
// A level change glides over this many frames instead of jumping.
constexpr int kGlideFrames = 256;
} // namespace

PulseAudioDevice::PulseAudioDevice(int bufferMs, int refillMs)
    : m_bufferMs(bufferMs), m_refillMs(refillMs) {}

PulseAudioDevice::~PulseAudioDevice() {
    m_events.setListener({});
    release();
}

bool PulseAudioDevice::start(double sampleRate, AudioRenderer* renderer, QString* error) {
    stop();
    if (!PulseLibrary::get()) {
        if (error)
            *error = QStringLiteral("the sound server's client library is not installed");
        return false;
    }
    if (!m_loop) {
        m_loop = pa().threadedMainloopNew();
        if (!m_loop || pa().threadedMainloopStart(m_loop) < 0) {
            if (m_loop)
                pa().threadedMainloopFree(m_loop);
            m_loop = nullptr;
            if (error)
                *error = QStringLiteral("the sound server's client could not start");
            return false;
        }
    }
    LoopLock lock(m_loop);
    m_events.clear(true);
    m_renderer = renderer;
    m_rate = sampleRate > 0 ? sampleRate : 48000.0;
    m_state = State::starting;
    // Room for the queue, the output's own buffer and then some: made here, never on the
    // loop thread.
    m_history.assign(std::size_t(2 * m_rate * (2.0 * m_bufferMs / 1000.0 + 1.0)), 0.0f);
    m_written = 0;
    m_gain = m_wantedGain;
    m_timingAsked = false;
    pa_proplist* props = pa().proplistNew();
    pa().proplistSets(props, PA_PROP_APPLICATION_NAME, "Quillmere");
    pa().proplistSets(props, PA_PROP_APPLICATION_ID, "quillmere");
    pa().proplistSets(props, PA_PROP_APPLICATION_ICON_NAME, "quillmere");
    m_context =
        pa().contextNewWithProplist(pa().threadedMainloopGetApi(m_loop), "Quillmere", props);
    pa().proplistFree(props);
    if (!m_context) {
        m_state = State::stopped;
        m_renderer = nullptr;
        if (error)
            *error = QStringLiteral("the sound server's client could not start");
        return false;
    }
    pa().contextSetStateCallback(m_context, &PulseAudioDevice::onContextState, this);
    // The connection itself is asynchronous; its outcome arrives in onContextState.
    if (pa().contextConnect(m_context, nullptr, PA_CONTEXT_NOAUTOSPAWN, nullptr) < 0)
        fail(pa().strerror(pa().contextErrno(m_context)));
    return true;
}

void PulseAudioDevice::onContextState(pa_context* context, void* self) {
    auto* d = static_cast<PulseAudioDevice*>(self);
    if (context != d->m_context)
        return;
    switch (pa().contextGetState(context)) {
    case PA_CONTEXT_READY:
        d->createStream();
        break;
    case PA_CONTEXT_FAILED:
    case PA_CONTEXT_TERMINATED:
        d->fail(pa().strerror(pa().contextErrno(context)));
        break;
    default:
        break;
    }
}

void PulseAudioDevice::createStream() {
    pa_sample_spec spec{};
    spec.format = PA_SAMPLE_FLOAT32NE;
    spec.rate = std::uint32_t(m_rate);
    spec.channels = 2;
    pa_proplist* props = pa().proplistNew();
    pa().proplistSets(props, PA_PROP_MEDIA_ROLE, "music");
    m_stream = pa().streamNewWithProplist(m_context, "Ambient sound", &spec, nullptr, props);
    pa().proplistFree(props);
    if (!m_stream) {
        fail(pa().strerror(pa().contextErrno(m_context)));
        return;
    }
    pa().streamSetStateCallback(m_stream, &PulseAudioDevice::onStreamState, this);
    pa().streamSetWriteCallback(m_stream, &PulseAudioDevice::onWrite, this);
    pa().streamSetMovedCallback(m_stream, &PulseAudioDevice::onMoved, this);
    pa_buffer_attr attr{};
    attr.maxlength = std::uint32_t(-1);
    attr.tlength = std::uint32_t(pa().usecToBytes(pa_usec_t(m_bufferMs) * 1000, &spec));
    attr.prebuf = std::uint32_t(-1);
    attr.minreq = std::uint32_t(pa().usecToBytes(pa_usec_t(m_refillMs) * 1000, &spec));
    attr.fragsize = std::uint32_t(-1);
    // No latency adjustment: the buffer stays on the server as asked, and the output keeps
    // its own (long) period instead of shrinking it to match.
    const auto flags = pa_stream_flags_t(PA_STREAM_NOT_MONOTONIC);
    if (pa().streamConnectPlayback(m_stream, nullptr, &attr, flags, nullptr, nullptr) < 0)
        fail(pa().strerror(pa().contextErrno(m_context)));
}

void PulseAudioDevice::onStreamState(pa_stream* stream, void* self) {
    auto* d = static_cast<PulseAudioDevice*>(self);
    if (stream != d->m_stream)
        return;
    switch (pa().streamGetState(stream)) {
    case PA_STREAM_READY:
        d->m_state = State::running;
        d->m_events.post(Event::started);
        d->askOutputRate();
        break;
    case PA_STREAM_FAILED:
    case PA_STREAM_TERMINATED:
        d->fail(pa().strerror(pa().contextErrno(d->m_context)));
        break;
    default:
        break;
    }
}

void PulseAudioDevice::onMoved(pa_stream* stream, void* self) {
    auto* d = static_cast<PulseAudioDevice*>(self);
    if (stream == d->m_stream)
        d->askOutputRate();
}

void PulseAudioDevice::askOutputRate() {
    const auto sink = pa().streamGetDeviceIndex(m_stream);
    if (sink == PA_INVALID_INDEX)
        return;
    pa_operation* op = pa().contextGetSinkInfoByIndex(
        m_context, sink,
        [](pa_context*, const pa_sink_info* info, int eol, void* self) {
            auto* d = static_cast<PulseAudioDevice*>(self);
            if (eol || !info)
                return;
            const double rate = info->sample_spec.rate;
            d->m_serverRate = rate;
            // Converting on the server costs it more than we save: rebuild at its rate.
            if (rate > 0 && rate != d->m_rate && d->m_state == State::running)
                d->m_events.post(Event::formatChanged);
        },
        this);
    if (op)
        pa().operationUnref(op);
}

void PulseAudioDevice::onWrite(pa_stream* stream, std::size_t bytes, void* self) {
    auto* d = static_cast<PulseAudioDevice*>(self);
    while (bytes > 0) {
        void* data = nullptr;
        std::size_t size = bytes;
        if (pa().streamBeginWrite(stream, &data, &size) < 0 || !data || size == 0)
            return;
        const int frames = int(size / (2 * sizeof(float)));
        size = std::size_t(frames) * 2 * sizeof(float);
        if (frames == 0) {
            pa().streamCancelWrite(stream);
            return;
        }
        auto* out = static_cast<float*>(data);
        if (d->m_renderer)
            d->m_renderer->render(out, frames);
        else
            std::memset(data, 0, size);
        // Kept before the gain, so a later change of level can write it again.
        const auto length = std::int64_t(d->m_history.size() / 2);
        for (int i = 0; i < frames; ++i) {
            const std::size_t at = std::size_t((d->m_written + i) % length) * 2;
            d->m_history[at] = out[2 * i];
            d->m_history[at + 1] = out[2 * i + 1];
        }
        d->copyOut(d->m_written, out, frames, d->m_gain, d->m_gain);
        d->m_written += frames;
        pa().streamWrite(stream, data, size, nullptr, 0, PA_SEEK_RELATIVE);
        bytes = bytes > size ? bytes - size : 0;
    }
}

void PulseAudioDevice::copyOut(std::int64_t frame, float* out, int frames, float from, float to) {
    const auto length = std::int64_t(m_history.size() / 2);
    for (int i = 0; i < frames; ++i) {
        const float gain = i < kGlideFrames ? from + (to - from) * float(i) / kGlideFrames : to;
        const std::size_t at = std::size_t((frame + i) % length) * 2;
        out[2 * i] = m_history[at] * gain;
        out[2 * i + 1] = m_history[at + 1] * gain;
    }
}

void PulseAudioDevice::setOutputGain(float gain) {
    if (!m_loop) {
        m_wantedGain = m_gain = gain;
        return;
    }
    LoopLock lock(m_loop);
    m_wantedGain = gain;
    if (!m_stream || m_state != State::running) {
        m_gain = gain;
        return;
    }
    // Where playback is comes with the server's next timing report; the rewrite follows it.
    if (m_timingAsked || gain == m_gain)
        return;
    if (pa_operation* op =
            pa().streamUpdateTimingInfo(m_stream, &PulseAudioDevice::onTiming, this)) {
        m_timingAsked = true;
        pa().operationUnref(op);
    }
}

void PulseAudioDevice::onTiming(pa_stream* stream, int success, void* self) {
    auto* d = static_cast<PulseAudioDevice*>(self);
    if (stream != d->m_stream)
        return;
    d->m_timingAsked = false;
    if (success)
        d->rewriteQueued();
    else
        d->m_gain = d->m_wantedGain; // from the next piece on
}

void PulseAudioDevice::rewriteQueued() {
    const pa_timing_info* timing = pa().streamGetTimingInfo(m_stream);
    const float from = m_gain, to = m_wantedGain;
    m_gain = to;
    if (!timing || timing->write_index_corrupt || timing->read_index_corrupt)
        return;
    // The frame being heard: what the server took, less what its output still holds, plus
    // the time since the report.
    const double frameBytes = 2 * sizeof(float);
    const double heard = double(timing->read_index) / frameBytes -
                         double(timing->sink_usec) * m_rate / 1e6 +
                         double(pa().timevalAge(&timing->timestamp)) * m_rate / 1e6;
    const auto written = std::int64_t(double(timing->write_index) / frameBytes);
    const auto length = std::int64_t(m_history.size() / 2);
    std::int64_t first = std::int64_t(heard + kRewriteMarginSeconds * m_rate);
    first = std::max({first, written - length + 1, std::int64_t(0)});
    if (written != m_written || first >= written)
        return; // our count and the server's disagree: only new sound takes the new level
    std::int64_t frame = first;
    bool firstPiece = true;
    while (frame < written) {
        void* data = nullptr;
        std::size_t size = std::size_t(written - frame) * 2 * sizeof(float);
        if (pa().streamBeginWrite(m_stream, &data, &size) < 0 || !data)
            return;
        const int frames = int(size / (2 * sizeof(float)));
        if (frames == 0) {
            pa().streamCancelWrite(m_stream);
            return;
        }
        copyOut(frame, static_cast<float*>(data), frames, firstPiece ? from : to, to);
        // Written behind what the server already took, this makes it take the new sound.
        pa().streamWrite(m_stream, data, std::size_t(frames) * 2 * sizeof(float), nullptr,
                         std::int64_t(frame) * std::int64_t(frameBytes), PA_SEEK_ABSOLUTE);
        frame += frames;
        firstPiece = false;
    }
}

void PulseAudioDevice::fail(const char* what) {
    const State was = m_state.load();
    if (was == State::stopped)
        return;
    // Nothing renders from here on; the main thread tears the connection down in stop().
    m_renderer = nullptr;
    m_state = State::stopped;
    m_events.post(was == State::running ? Event::removed : Event::failed,
                  QString::fromUtf8(what ? what : "unknown error"));
}

void PulseAudioDevice::disconnectLocked() {
    if (m_stream) {
        pa().streamSetStateCallback(m_stream, nullptr, nullptr);
        pa().streamSetWriteCallback(m_stream, nullptr, nullptr);
        pa().streamSetMovedCallback(m_stream, nullptr, nullptr);
        pa().streamDisconnect(m_stream);
        pa().streamUnref(m_stream);
        m_stream = nullptr;
    }
    if (m_context) {
        pa().contextSetStateCallback(m_context, nullptr, nullptr);
        // Closes the socket; nothing is waited for, even from a server that never answers.
        pa().contextDisconnect(m_context);
        pa().contextUnref(m_context);
        m_context = nullptr;
    }
    m_renderer = nullptr;
    m_state = State::stopped;
}

void PulseAudioDevice::stop() {
    if (!m_loop)
        return;
    LoopLock lock(m_loop);
    disconnectLocked();
}

void PulseAudioDevice::release() {
    if (!m_loop)
        return;
    stop();
    // Joins the loop's thread, which only waits in poll(), so this returns at once.
    pa().threadedMainloopStop(m_loop);
    pa().threadedMainloopFree(m_loop);
    m_loop = nullptr;
}

} // namespace quill

#include "audio/PulseAudioDevice.h"

#include "audio/AudioRenderer.h"

#include <pulse/pulseaudio.h>

#include <cstring>

namespace quill {

namespace {
// The loop's lock is held only for short bookkeeping and one render pass, never across a
// wait for the server.
class LoopLock {
public:
    explicit LoopLock(pa_threaded_mainloop* loop) : m_loop(loop) {
        pa_threaded_mainloop_lock(m_loop);
    }
    ~LoopLock() { pa_threaded_mainloop_unlock(m_loop); }
    LoopLock(const LoopLock&) = delete;
    LoopLock& operator=(const LoopLock&) = delete;

private:
    pa_threaded_mainloop* m_loop;
};

unsigned bitOf(AudioDevice::Event e) {
    return 1u << unsigned(e);
}
} // namespace

PulseAudioDevice::PulseAudioDevice(int bufferMs, int refillMs)
    : m_bufferMs(bufferMs), m_refillMs(refillMs) {}

PulseAudioDevice::~PulseAudioDevice() {
    setEventListener({});
    release();
}

void PulseAudioDevice::setEventListener(std::function<void()> listener) {
    std::lock_guard lock(m_eventsMutex);
    m_listener = std::move(listener);
}

bool PulseAudioDevice::start(double sampleRate, AudioRenderer* renderer, QString* error) {
    stop();
    if (!m_loop) {
        m_loop = pa_threaded_mainloop_new();
        if (!m_loop || pa_threaded_mainloop_start(m_loop) < 0) {
            if (m_loop)
                pa_threaded_mainloop_free(m_loop);
            m_loop = nullptr;
            if (error)
                *error = QStringLiteral("the sound server's client could not start");
            return false;
        }
    }
    LoopLock lock(m_loop);
    {
        std::lock_guard events(m_eventsMutex);
        m_events = 0;
        m_error.clear();
    }
    m_renderer = renderer;
    m_rate = sampleRate > 0 ? sampleRate : 48000.0;
    m_state = State::starting;
    pa_proplist* props = pa_proplist_new();
    pa_proplist_sets(props, PA_PROP_APPLICATION_NAME, "Quillmere");
    pa_proplist_sets(props, PA_PROP_APPLICATION_ID, "quillmere");
    pa_proplist_sets(props, PA_PROP_APPLICATION_ICON_NAME, "quillmere");
    m_context =
        pa_context_new_with_proplist(pa_threaded_mainloop_get_api(m_loop), "Quillmere", props);
    pa_proplist_free(props);
    if (!m_context) {
        m_state = State::stopped;
        m_renderer = nullptr;
        if (error)
            *error = QStringLiteral("the sound server's client could not start");
        return false;
    }
    pa_context_set_state_callback(m_context, &PulseAudioDevice::onContextState, this);
    // The connection itself is asynchronous; its outcome arrives in onContextState.
    if (pa_context_connect(m_context, nullptr, PA_CONTEXT_NOAUTOSPAWN, nullptr) < 0)
        fail(pa_strerror(pa_context_errno(m_context)));
    return true;
}

void PulseAudioDevice::onContextState(pa_context* context, void* self) {
    auto* d = static_cast<PulseAudioDevice*>(self);
    if (context != d->m_context)
        return;
    switch (pa_context_get_state(context)) {
    case PA_CONTEXT_READY:
        d->createStream();
        break;
    case PA_CONTEXT_FAILED:
    case PA_CONTEXT_TERMINATED:
        d->fail(pa_strerror(pa_context_errno(context)));
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
    pa_proplist* props = pa_proplist_new();
    pa_proplist_sets(props, PA_PROP_MEDIA_ROLE, "music");
    m_stream = pa_stream_new_with_proplist(m_context, "Ambient sound", &spec, nullptr, props);
    pa_proplist_free(props);
    if (!m_stream) {
        fail(pa_strerror(pa_context_errno(m_context)));
        return;
    }
    pa_stream_set_state_callback(m_stream, &PulseAudioDevice::onStreamState, this);
    pa_stream_set_write_callback(m_stream, &PulseAudioDevice::onWrite, this);
    pa_stream_set_moved_callback(m_stream, &PulseAudioDevice::onMoved, this);
    pa_buffer_attr attr{};
    attr.maxlength = std::uint32_t(-1);
    attr.tlength = std::uint32_t(pa_usec_to_bytes(pa_usec_t(m_bufferMs) * 1000, &spec));
    attr.prebuf = std::uint32_t(-1);
    attr.minreq = std::uint32_t(pa_usec_to_bytes(pa_usec_t(m_refillMs) * 1000, &spec));
    attr.fragsize = std::uint32_t(-1);
    // No latency adjustment: the buffer stays on the server as asked, and the output keeps
    // its own (long) period instead of shrinking it to match.
    const auto flags = pa_stream_flags_t(PA_STREAM_NOT_MONOTONIC | PA_STREAM_AUTO_TIMING_UPDATE);
    if (pa_stream_connect_playback(m_stream, nullptr, &attr, flags, nullptr, nullptr) < 0)
        fail(pa_strerror(pa_context_errno(m_context)));
}

void PulseAudioDevice::onStreamState(pa_stream* stream, void* self) {
    auto* d = static_cast<PulseAudioDevice*>(self);
    if (stream != d->m_stream)
        return;
    switch (pa_stream_get_state(stream)) {
    case PA_STREAM_READY:
        d->m_state = State::running;
        d->post(Event::started);
        d->askOutputRate();
        break;
    case PA_STREAM_FAILED:
    case PA_STREAM_TERMINATED:
        d->fail(pa_strerror(pa_context_errno(d->m_context)));
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
    const auto sink = pa_stream_get_device_index(m_stream);
    if (sink == PA_INVALID_INDEX)
        return;
    pa_operation* op = pa_context_get_sink_info_by_index(
        m_context, sink,
        [](pa_context*, const pa_sink_info* info, int eol, void* self) {
            auto* d = static_cast<PulseAudioDevice*>(self);
            if (eol || !info)
                return;
            const double rate = info->sample_spec.rate;
            d->m_serverRate = rate;
            // Converting on the server costs it more than we save: rebuild at its rate.
            if (rate > 0 && rate != d->m_rate && d->m_state == State::running)
                d->post(Event::formatChanged);
        },
        this);
    if (op)
        pa_operation_unref(op);
}

void PulseAudioDevice::onWrite(pa_stream* stream, std::size_t bytes, void* self) {
    auto* d = static_cast<PulseAudioDevice*>(self);
    while (bytes > 0) {
        void* data = nullptr;
        std::size_t size = bytes;
        if (pa_stream_begin_write(stream, &data, &size) < 0 || !data || size == 0)
            return;
        const int frames = int(size / (2 * sizeof(float)));
        size = std::size_t(frames) * 2 * sizeof(float);
        if (frames == 0) {
            pa_stream_cancel_write(stream);
            return;
        }
        if (d->m_renderer)
            d->m_renderer->render(static_cast<float*>(data), frames);
        else
            std::memset(data, 0, size);
        pa_stream_write(stream, data, size, nullptr, 0, PA_SEEK_RELATIVE);
        bytes = bytes > size ? bytes - size : 0;
    }
}

void PulseAudioDevice::fail(const char* what) {
    const State was = m_state.load();
    if (was == State::stopped)
        return;
    {
        std::lock_guard lock(m_eventsMutex);
        m_error = QString::fromUtf8(what ? what : "unknown error");
    }
    // Nothing renders from here on; the main thread tears the connection down in stop().
    m_renderer = nullptr;
    m_state = State::stopped;
    post(was == State::running ? Event::removed : Event::failed);
}

void PulseAudioDevice::post(Event event) {
    // Called under the mutex, so once setEventListener({}) returns no call is under way.
    std::lock_guard lock(m_eventsMutex);
    m_events |= bitOf(event);
    if (m_listener)
        m_listener();
}

AudioDevice::Event PulseAudioDevice::takeEvent() {
    std::lock_guard lock(m_eventsMutex);
    for (Event e : {Event::failed, Event::removed, Event::started, Event::formatChanged})
        if (m_events & bitOf(e)) {
            m_events &= ~bitOf(e);
            return e;
        }
    return Event::none;
}

QString PulseAudioDevice::error() const {
    std::lock_guard lock(m_eventsMutex);
    return m_error;
}

void PulseAudioDevice::disconnectLocked() {
    if (m_stream) {
        pa_stream_set_state_callback(m_stream, nullptr, nullptr);
        pa_stream_set_write_callback(m_stream, nullptr, nullptr);
        pa_stream_set_moved_callback(m_stream, nullptr, nullptr);
        pa_stream_disconnect(m_stream);
        pa_stream_unref(m_stream);
        m_stream = nullptr;
    }
    if (m_context) {
        pa_context_set_state_callback(m_context, nullptr, nullptr);
        // Closes the socket; nothing is waited for, even from a server that never answers.
        pa_context_disconnect(m_context);
        pa_context_unref(m_context);
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
    pa_threaded_mainloop_stop(m_loop);
    pa_threaded_mainloop_free(m_loop);
    m_loop = nullptr;
}

} // namespace quill

#pragma once

#include <pulse/pulseaudio.h>

namespace quill {

/// The sound server's client library, loaded the first time ambient sound is wanted: it
/// brings libsndfile and its codecs along, which an app at rest all day should not map at
/// launch. Only the calls the ambient output makes are here, each with its own signature.
class PulseLibrary {
public:
    /// The loaded library, or null when it cannot be loaded (the reason is logged once).
    static const PulseLibrary* get();

    decltype(&::pa_context_connect) contextConnect = nullptr;
    decltype(&::pa_context_disconnect) contextDisconnect = nullptr;
    decltype(&::pa_context_errno) contextErrno = nullptr;
    decltype(&::pa_context_get_sink_info_by_index) contextGetSinkInfoByIndex = nullptr;
    decltype(&::pa_context_get_state) contextGetState = nullptr;
    decltype(&::pa_context_new_with_proplist) contextNewWithProplist = nullptr;
    decltype(&::pa_context_set_state_callback) contextSetStateCallback = nullptr;
    decltype(&::pa_context_unref) contextUnref = nullptr;
    decltype(&::pa_operation_unref) operationUnref = nullptr;
    decltype(&::pa_proplist_free) proplistFree = nullptr;
    decltype(&::pa_proplist_new) proplistNew = nullptr;
    decltype(&::pa_proplist_sets) proplistSets = nullptr;
    decltype(&::pa_stream_begin_write) streamBeginWrite = nullptr;
    decltype(&::pa_stream_cancel_write) streamCancelWrite = nullptr;
    decltype(&::pa_stream_connect_playback) streamConnectPlayback = nullptr;
    decltype(&::pa_stream_disconnect) streamDisconnect = nullptr;
    decltype(&::pa_stream_get_device_index) streamGetDeviceIndex = nullptr;
    decltype(&::pa_stream_get_state) streamGetState = nullptr;
    decltype(&::pa_stream_get_timing_info) streamGetTimingInfo = nullptr;
    decltype(&::pa_stream_new_with_proplist) streamNewWithProplist = nullptr;
    decltype(&::pa_stream_set_moved_callback) streamSetMovedCallback = nullptr;
    decltype(&::pa_stream_set_state_callback) streamSetStateCallback = nullptr;
    decltype(&::pa_stream_set_write_callback) streamSetWriteCallback = nullptr;
    decltype(&::pa_stream_unref) streamUnref = nullptr;
    decltype(&::pa_stream_update_timing_info) streamUpdateTimingInfo = nullptr;
    decltype(&::pa_stream_write) streamWrite = nullptr;
    decltype(&::pa_strerror) strerror = nullptr;
    decltype(&::pa_threaded_mainloop_free) threadedMainloopFree = nullptr;
    decltype(&::pa_threaded_mainloop_get_api) threadedMainloopGetApi = nullptr;
    decltype(&::pa_threaded_mainloop_lock) threadedMainloopLock = nullptr;
    decltype(&::pa_threaded_mainloop_new) threadedMainloopNew = nullptr;
    decltype(&::pa_threaded_mainloop_start) threadedMainloopStart = nullptr;
    decltype(&::pa_threaded_mainloop_stop) threadedMainloopStop = nullptr;
    decltype(&::pa_threaded_mainloop_unlock) threadedMainloopUnlock = nullptr;
    decltype(&::pa_timeval_age) timevalAge = nullptr;
    decltype(&::pa_usec_to_bytes) usecToBytes = nullptr;

private:
    PulseLibrary() = default;
};

} // namespace quill

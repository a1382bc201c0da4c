#include "audio/PulseLibrary.h"

#include "audio/LazyLibrary.h"

namespace quill {

const PulseLibrary* PulseLibrary::get() {
    static const PulseLibrary* const loaded = [] {
        static LazyLibrary library("pulse", 0);
        static PulseLibrary pa;
        library.bind("pa_context_connect", pa.contextConnect);
        library.bind("pa_context_disconnect", pa.contextDisconnect);
        library.bind("pa_context_errno", pa.contextErrno);
        library.bind("pa_context_get_sink_info_by_index", pa.contextGetSinkInfoByIndex);
        library.bind("pa_context_get_state", pa.contextGetState);
        library.bind("pa_context_new_with_proplist", pa.contextNewWithProplist);
        library.bind("pa_context_set_state_callback", pa.contextSetStateCallback);
        library.bind("pa_context_unref", pa.contextUnref);
        library.bind("pa_operation_unref", pa.operationUnref);
        library.bind("pa_proplist_free", pa.proplistFree);
        library.bind("pa_proplist_new", pa.proplistNew);
        library.bind("pa_proplist_sets", pa.proplistSets);
        library.bind("pa_stream_begin_write", pa.streamBeginWrite);
        library.bind("pa_stream_cancel_write", pa.streamCancelWrite);
        library.bind("pa_stream_connect_playback", pa.streamConnectPlayback);
        library.bind("pa_stream_disconnect", pa.streamDisconnect);
        library.bind("pa_stream_get_device_index", pa.streamGetDeviceIndex);
        library.bind("pa_stream_get_state", pa.streamGetState);
        library.bind("pa_stream_get_timing_info", pa.streamGetTimingInfo);
        library.bind("pa_stream_new_with_proplist", pa.streamNewWithProplist);
        library.bind("pa_stream_set_moved_callback", pa.streamSetMovedCallback);
        library.bind("pa_stream_set_state_callback", pa.streamSetStateCallback);
        library.bind("pa_stream_set_write_callback", pa.streamSetWriteCallback);
        library.bind("pa_stream_unref", pa.streamUnref);
        library.bind("pa_stream_update_timing_info", pa.streamUpdateTimingInfo);
        library.bind("pa_stream_write", pa.streamWrite);
        library.bind("pa_strerror", pa.strerror);
        library.bind("pa_threaded_mainloop_free", pa.threadedMainloopFree);
        library.bind("pa_threaded_mainloop_get_api", pa.threadedMainloopGetApi);
        library.bind("pa_threaded_mainloop_lock", pa.threadedMainloopLock);
        library.bind("pa_threaded_mainloop_new", pa.threadedMainloopNew);
        library.bind("pa_threaded_mainloop_start", pa.threadedMainloopStart);
        library.bind("pa_threaded_mainloop_stop", pa.threadedMainloopStop);
        library.bind("pa_threaded_mainloop_unlock", pa.threadedMainloopUnlock);
        library.bind("pa_timeval_age", pa.timevalAge);
        library.bind("pa_usec_to_bytes", pa.usecToBytes);
        return library.ok() ? &pa : nullptr;
    }();
    return loaded;
}

} // namespace quill

#pragma once

#include <sndfile.h>

namespace quill {

/// libsndfile and its codecs (Vorbis, FLAC, Opus, MPEG), loaded the first time a recording
/// is opened rather than at launch. Only the calls the app makes are here, with the
/// library's own signatures.
class SndfileLibrary {
public:
    /// The loaded library, or null when it cannot be loaded (then no recording opens; the
    /// reason is logged once).
    static const SndfileLibrary* get();

    decltype(&::sf_open) open = nullptr;
    decltype(&::sf_close) close = nullptr;
    decltype(&::sf_seek) seek = nullptr;
    decltype(&::sf_readf_float) readfFloat = nullptr;

private:
    SndfileLibrary() = default;
};

} // namespace quill

#include "audio/SndfileLibrary.h"

#include "audio/LazyLibrary.h"

namespace quill {

const SndfileLibrary* SndfileLibrary::get() {
    static const SndfileLibrary* const loaded = [] {
        static LazyLibrary library("sndfile", 1);
        static SndfileLibrary sndfile;
        library.bind("sf_open", sndfile.open);
        library.bind("sf_close", sndfile.close);
        library.bind("sf_seek", sndfile.seek);
        library.bind("sf_readf_float", sndfile.readfFloat);
        return library.ok() ? &sndfile : nullptr;
    }();
    return loaded;
}

} // namespace quill

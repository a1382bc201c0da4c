#include "audio/LoopingTrack.h"

#include "audio/SndfileLibrary.h"

#include <algorithm>
#include <limits>

namespace quill {

std::unique_ptr<LoopingTrack> LoopingTrack::open(const QString& path) {
    // Only the header is read here; decoding happens on the streamer's thread.
    const SndfileLibrary* sndfile = SndfileLibrary::get();
    if (!sndfile)
        return nullptr;
    SF_INFO info{};
    SNDFILE* file = sndfile->open(path.toLocal8Bit().constData(), SFM_READ, &info);
    if (!file)
        return nullptr;
    const bool usable = info.frames >= 1 && info.channels >= 1 && info.samplerate > 0;
    sndfile->close(file);
    if (!usable)
        return nullptr;
    return std::unique_ptr<LoopingTrack>(new LoopingTrack(path, info.frames, info.samplerate));
}

LoopingTrack::LoopingTrack(QString path, std::int64_t length, int rate)
    : m_path(std::move(path)), m_length(length), m_rate(rate),
      m_voice(std::make_unique<LoopVoice>()) {}

int LoopingTrack::passesAhead() const {
    const std::int64_t passes = (m_rate + m_length - 1) / m_length;
    return int(std::clamp<std::int64_t>(passes, 1, 8));
}

void LoopingTrack::start() {
    ++m_generation;
    m_playing = true;
    m_voice->setGeneration(m_generation);
}

void LoopingTrack::stop() {
    ++m_generation;
    m_playing = false;
    m_voice->setGeneration(m_generation);
}

void LoopingTrack::schedule(std::int64_t startFrame, std::int64_t generation) {
    // A segment counts its frames in 32 bits; longer recordings are clamped.
    const std::int64_t frames =
        std::min<std::int64_t>(m_length - startFrame, std::numeric_limits<std::uint32_t>::max());
    if (frames <= 0)
        return;
    m_voice->queueSegment({startFrame, frames, generation});
}

} // namespace quill

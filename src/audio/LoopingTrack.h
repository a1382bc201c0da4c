#pragma once

#include "audio/LoopVoice.h"

#include <QString>
#include <cstdint>
#include <memory>

namespace quill {

/// One recording of the ambient player, on the main thread: its file, its length, its
/// generation and the voice that plays it. Segments are queued here and decoded elsewhere.
class LoopingTrack {
public:
    /// Null when the file cannot be opened or holds no frames.
    static std::unique_ptr<LoopingTrack> open(const QString& path);

    const QString& path() const { return m_path; }
    std::int64_t length() const { return m_length; }
    /// Whole passes to keep queued beyond the one playing: enough to last a second, so a
    /// short recording does not run dry between two visits of the main thread.
    int passesAhead() const;
    std::int64_t generation() const { return m_generation; }
    bool isPlaying() const { return m_playing; }
    LoopVoice& voice() { return *m_voice; }
    const LoopVoice& voice() const { return *m_voice; }

    /// Starts a new generation: every earlier segment and its completion is void.
    void start();
    /// Ends the current generation and silences the voice at once.
    void stop();
    /// Queues the frames from startFrame to the end of the file, after what is queued.
    void schedule(std::int64_t startFrame, std::int64_t generation);

private:
    LoopingTrack(QString path, std::int64_t length, int rate);

    QString m_path;
    std::int64_t m_length = 1;
    int m_rate = 48000;
    std::int64_t m_generation = 0;
    bool m_playing = false;
    std::unique_ptr<LoopVoice> m_voice;
};

} // namespace quill

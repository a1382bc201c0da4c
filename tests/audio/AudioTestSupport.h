#pragma once

#include "model/AmbientLevels.h"

#include <QString>
#include <QStringList>
#include <functional>
#include <initializer_list>
#include <utility>
#include <vector>

namespace quill::test {

/// Writes a float WAV whose left channel encodes the frame position (0.1 at frame 0 rising
/// to 0.9 at the end) and whose right channel is a constant 0.5, so the position of any
/// rendered frame can be read back from the ratio of its channels whatever the gain.
bool writePositionFile(const QString& path, int frames, int rate = 48000);
/// The file frame a rendered (left, right) pair came from, for a file of length frames.
double positionOf(float left, float right, int frames);
/// A float WAV of the given interleaved stereo frames.
bool writeFrames(const QString& path, const std::vector<float>& interleaved, int rate = 48000);
/// A float WAV holding a constant value in both channels.
bool writeConstantFile(const QString& path, int frames, float value, int rate = 48000);
/// A valid WAV header with no frames.
bool writeZeroFrameFile(const QString& path);
bool writeBytes(const QString& path, const QByteArray& bytes);

/// Levels with the given master and the given sounds; every other sound at 0.
AmbientLevels levels(float master, std::initializer_list<std::pair<AmbientSound, float>> sounds);

/// Runs the event loop until done() holds, or capMs pass (a safety net, not a measure).
bool spinUntil(const std::function<bool()>& done, int capMs = 10000);

/// Collects warnings of the audio logging category while alive.
class AudioLogCapture {
public:
    AudioLogCapture();
    ~AudioLogCapture();
    QStringList lines() const;
    int count(const QString& line) const { return int(lines().count(line)); }
    void clear();
};

} // namespace quill::test

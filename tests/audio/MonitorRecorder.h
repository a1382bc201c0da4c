#pragma once

#include "PulseTestServer.h"

#include <QByteArray>
#include <QProcess>
#include <functional>

namespace quill::test {

/// parec recording a sink's monitor as 48 kHz stereo float.
class MonitorRecorder {
public:
    MonitorRecorder(const PulseTestServer& server, const QString& sink);
    ~MonitorRecorder();
    bool start();
    /// Runs the event loop until at least frames more frames arrived (or the cap passes).
    bool waitForFrames(qint64 frames, int capMs = 10000);
    /// Runs the event loop until done() holds (or the cap passes).
    bool waitUntil(const std::function<bool()>& done, int capMs = 10000);
    qint64 frames() const { return m_data.size() / qint64(2 * sizeof(float)); }
    /// Interleaved samples recorded so far.
    const float* samples() const { return reinterpret_cast<const float*>(m_data.constData()); }

private:
    QProcess m_process;
    QByteArray m_data;
};

} // namespace quill::test

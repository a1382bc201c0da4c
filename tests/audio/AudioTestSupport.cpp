#include "AudioTestSupport.h"

#include <QEventLoop>
#include <QFile>
#include <QMutex>
#include <QTimer>
#include <sndfile.h>

namespace quill::test {

namespace {
QMutex g_mutex;
QStringList g_lines;
QtMessageHandler g_previous = nullptr;

void handler(QtMsgType type, const QMessageLogContext& context, const QString& message) {
    if (context.category && QByteArray(context.category) == "quill.audio") {
        QMutexLocker lock(&g_mutex);
        g_lines << message;
        return;
    }
    if (g_previous)
        g_previous(type, context, message);
}

} // namespace

bool writeFrames(const QString& path, const std::vector<float>& interleaved, int rate) {
    SF_INFO info{};
    info.samplerate = rate;
    info.channels = 2;
    info.format = SF_FORMAT_WAV | SF_FORMAT_FLOAT;
    SNDFILE* f = sf_open(path.toLocal8Bit().constData(), SFM_WRITE, &info);
    if (!f)
        return false;
    const sf_count_t frames = sf_count_t(interleaved.size() / 2);
    const bool ok = frames == 0 || sf_writef_float(f, interleaved.data(), frames) == frames;
    sf_close(f);
    return ok;
}

bool writePositionFile(const QString& path, int frames, int rate) {
    std::vector<float> v(std::size_t(frames) * 2);
    for (int i = 0; i < frames; ++i) {
        v[2 * std::size_t(i)] = 0.1f + 0.8f * float(i) / float(frames);
        v[2 * std::size_t(i) + 1] = 0.5f;
    }
    return writeFrames(path, v, rate);
}

double positionOf(float left, float right, int frames) {
    const double x = double(left) / double(right) * 0.5;
    return (x - 0.1) / 0.8 * frames;
}

bool writeConstantFile(const QString& path, int frames, float value, int rate) {
    return writeFrames(path, std::vector<float>(std::size_t(frames) * 2, value), rate);
}

bool writeZeroFrameFile(const QString& path) {
    return writeFrames(path, {}, 48000);
}

bool writeBytes(const QString& path, const QByteArray& bytes) {
    QFile f(path);
    return f.open(QIODevice::WriteOnly) && f.write(bytes) == bytes.size();
}

AmbientLevels levels(float master, std::initializer_list<std::pair<AmbientSound, float>> sounds) {
    AmbientLevels l;
    l.master = master;
    l.sounds.fill(0.0f);
    for (const auto& [sound, level] : sounds)
        l.sounds[indexOf(sound)] = level;
    return l;
}

AudioLogCapture::AudioLogCapture() {
    clear();
    g_previous = qInstallMessageHandler(handler);
}

AudioLogCapture::~AudioLogCapture() {
    qInstallMessageHandler(g_previous);
}

QStringList AudioLogCapture::lines() const {
    QMutexLocker lock(&g_mutex);
    return g_lines;
}

void AudioLogCapture::clear() {
    QMutexLocker lock(&g_mutex);
    g_lines.clear();
}

bool spinUntil(const std::function<bool()>& done, int capMs) {
    // Real servers answer in real time; the cap only guards against a hung one.
    QEventLoop loop;
    QTimer cap;
    cap.setSingleShot(true);
    QObject::connect(&cap, &QTimer::timeout, &loop, &QEventLoop::quit);
    QTimer poll;
    QObject::connect(&poll, &QTimer::timeout, &loop, [&] {
        if (done())
            loop.quit();
    });
    cap.start(capMs);
    poll.start(10);
    if (!done())
        loop.exec();
    return done();
}

} // namespace quill::test

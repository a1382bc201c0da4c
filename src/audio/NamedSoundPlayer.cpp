#include "audio/NamedSoundPlayer.h"

#include "audio/AudioDevice.h"
#include "audio/AudioLog.h"
#include "audio/CueMixer.h"
#include "audio/NamedSoundSynth.h"
#include "audio/SerialWorker.h"

namespace quill {

NamedSoundPlayer::NamedSoundPlayer(Environment environment)
    : m_env(std::move(environment)),
      m_mixer(std::make_unique<CueMixer>(int(NamedSoundSynth::names().size()) + 1)) {
    if (!m_env.runInBackground) {
        auto worker = std::make_shared<SerialWorker>();
        m_worker = worker;
        m_env.runInBackground = [w = worker.get()](std::function<void()> job) {
            w->post(std::move(job));
        };
    }
}

namespace {
// The clips (4 MB of samples) exist only while the output is open: synthesised in the
// background just before it opens (a few tens of milliseconds), dropped when it closes.
void setClips(CueMixer* mixer, bool* present, bool wanted) {
    if (*present == wanted)
        return;
    const QStringList& names = NamedSoundSynth::names();
    for (int i = 0; i < int(names.size()); ++i)
        mixer->setClip(i, wanted ? NamedSoundSynth::render(names[i]) : std::vector<float>{});
    mixer->setClip(int(names.size()),
                   wanted ? NamedSoundSynth::renderBeep() : std::vector<float>{});
    *present = wanted;
}
} // namespace

NamedSoundPlayer::~NamedSoundPlayer() {
    m_idleTimer.reset();
    auto device = m_env.device;
    m_env.runInBackground([device] {
        if (device)
            device->release();
    });
    m_worker.reset(); // joins after the stop, before the mixer goes away
}

int NamedSoundPlayer::slotFor(const QString& name) {
    const qsizetype i = NamedSoundSynth::names().indexOf(name);
    return i < 0 ? int(NamedSoundSynth::names().size()) : int(i);
}

void NamedSoundPlayer::play(const QString& name) {
    m_mixer->trigger(slotFor(name));
    openIfNeeded();
    if (m_env.scheduler) {
        // Keep the output open a while: cues often come in runs, and reopening costs time.
        // After that the audio system goes too, so nothing of it runs between rounds.
        auto device = m_env.device;
        auto run = m_env.runInBackground;
        CueMixer* mixer = m_mixer.get();
        auto clips = m_clipsPresent;
        m_idleTimer = m_env.scheduler->after(kIdleClose, [device, run, mixer, clips] {
            run([device, mixer, clips] {
                if (device)
                    device->release();
                setClips(mixer, clips.get(), false);
            });
        });
    }
}

void NamedSoundPlayer::openIfNeeded() {
    auto device = m_env.device;
    CueMixer* mixer = m_mixer.get();
    m_env.runInBackground([device, mixer, clips = m_clipsPresent] {
        if (!device)
            return;
        // A cue output that vanished since the last cue is opened afresh.
        if (device->isRunning() && device->takeEvent() == AudioDevice::Event::none)
            return;
        device->stop();
        setClips(mixer, clips.get(), true);
        QString error;
        if (!device->start(NamedSoundSynth::kSampleRate, mixer, &error)) {
            mixer->discardPending();
            qCWarning(lcAudio).noquote() << "Quillmere sound output failed: " + error;
        }
    });
}

} // namespace quill

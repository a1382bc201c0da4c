#include "audio/AmbientPlayer.h"

#include "audio/AudioDevice.h"
#include "audio/AudioLog.h"
#include "audio/BrownNoiseGenerator.h"
#include "audio/LoopingTrack.h"
#include "audio/SegmentStreamer.h"

#include <QObject>
#include <QRandomGenerator>
#include <algorithm>
#include <cmath>

namespace quill {

namespace {
constexpr std::size_t kRecordingCount = kAmbientSoundCount - 1; // all but the brown noise

bool isRecording(AmbientSound sound) {
    return sound != AmbientSound::brownNoise;
}
} // namespace

AmbientPlayer::AmbientPlayer(Environment environment) : m_env(std::move(environment)) {
    if (!m_env.streamer)
        m_env.streamer = std::make_shared<SegmentStreamer>(SegmentStreamer::Mode::threaded);
    if (!m_env.unitRandom)
        m_env.unitRandom = [] { return QRandomGenerator::system()->generateDouble(); };
    if (!m_env.noiseSeed)
        m_env.noiseSeed = [] { return BrownNoiseGenerator::systemSeed(); };
    m_noiseLevel.store(0.0f, std::memory_order_relaxed);
    // The output's rate is read when it is started: asking now would bring up the audio
    // system (and its device polling) in an app that may never play.
    m_mixer.setLoopRate(m_env.loopRate);
    m_mixer.setSampleRate(m_sampleRate);
    m_env.streamer->setOutputRate(m_env.loopRate);
    applyMaster();
    if (m_env.device) {
        m_mainThread = std::make_unique<QObject>();
        QObject* context = m_mainThread.get();
        m_env.device->setEventListener([this, context] {
            QMetaObject::invokeMethod(
                context, [this] { serviceAudio(); }, Qt::QueuedConnection);
        });
    }
}

AmbientPlayer::~AmbientPlayer() {
    m_rampTimer.reset();
    m_serviceTimer.reset();
    m_releaseTimer.reset();
    m_startDeadline.reset();
    m_reopenTimer.reset();
    if (m_env.device) {
        m_env.device->setEventListener({});
        m_env.device->release();
    }
    // The decoder must let go of the voices before the tracks are freed.
    m_env.streamer->shutdown();
}

bool AmbientPlayer::isEngineRunning() const {
    return m_env.device && m_env.device->isRunning();
}

bool AmbientPlayer::isTrackPlaying(AmbientSound sound) const {
    const auto& t = m_tracks[indexOf(sound)];
    return t && t->isPlaying();
}

std::int64_t AmbientPlayer::trackGeneration(AmbientSound sound) const {
    const auto& t = m_tracks[indexOf(sound)];
    return t ? t->generation() : -1;
}

void AmbientPlayer::connectOutput() {
    const double preferred = m_env.device ? m_env.device->preferredSampleRate() : 0.0;
    const double rate = preferred > 0 ? preferred : 48000.0;
    if (m_noise && rate != m_sampleRate) {
        // The generator's filters are tuned to the old rate; the next start makes a new one.
        m_mixer.detachNoise();
        m_noise.reset();
    }
    m_sampleRate = rate;
    m_mixer.setSampleRate(m_sampleRate);
}

void AmbientPlayer::applyMaster() {
    if (m_env.device && m_env.device->hasOutputGain()) {
        // The device changes the level of what it has queued, so a fade is heard at once.
        m_mixer.setMasterVolume(1.0f);
        m_env.device->setOutputGain(m_masterVolume);
    } else {
        m_mixer.setMasterVolume(m_masterVolume);
    }
}

void AmbientPlayer::attachNoise() {
    m_noise = std::make_unique<BrownNoiseGenerator>(float(m_sampleRate), &m_noiseLevel,
                                                    m_env.noiseSeed());
    m_mixer.attachNoise(m_noise.get());
}

LoopingTrack* AmbientPlayer::makeTrack(AmbientSound sound) {
    const QString raw = rawValue(sound);
    const QString path = m_env.resources.locate(raw);
    std::unique_ptr<LoopingTrack> track = path.isEmpty() ? nullptr : LoopingTrack::open(path);
    if (!track) {
        qCWarning(lcAudio).noquote() << "Quillmere ambient recording missing: " + raw;
        return nullptr;
    }
    LoopingTrack* t = track.get();
    m_env.streamer->addVoice(&t->voice(), path);
    m_mixer.attachVoice(int(indexOf(sound)), &t->voice());
    m_tracks[indexOf(sound)] = std::move(track);
    return t;
}

void AmbientPlayer::startSelectedSources() {
    // While the output is still opening the sources queue up, so they sound as it opens.
    if (!m_env.device || m_env.device->state() == AudioDevice::State::stopped)
        return;
    bool queued = false;
    for (AmbientSound sound : kAllAmbientSounds) {
        if (!(target(sound) > 0.0f))
            continue;
        if (!isRecording(sound)) {
            if (!m_noise)
                attachNoise();
            continue;
        }
        LoopingTrack* track = m_tracks[indexOf(sound)].get();
        if (!track)
            track = makeTrack(sound);
        if (!track || track->isPlaying())
            continue;
        m_volumes[indexOf(sound)] = 0.0f;
        track->voice().setVolume(0.0f);
        track->start();
        const auto start =
            static_cast<std::int64_t>(m_env.unitRandom() * 0.95 * double(track->length()));
        track->schedule(start, track->generation());
        for (int k = 0; k < track->passesAhead(); ++k)
            track->schedule(0, track->generation());
        queued = true;
    }
    if (queued)
        m_env.streamer->wake();
}

void AmbientPlayer::startRamp() {
    if (m_rampTimer || !m_env.scheduler)
        return;
    scheduleRampStep();
}

void AmbientPlayer::scheduleRampStep() {
    const auto delay = kRampPeriods[m_rampPhase];
    m_rampPhase = (m_rampPhase + 1) % 3;
    m_rampTimer = m_env.scheduler->after(delay, [this] {
        stepVolumes();
        if (m_rampTimer) // still moving
            scheduleRampStep();
    });
}

void AmbientPlayer::stepVolumes() {
    const float masterTarget = m_isPlaying ? m_masterSetting : 0.0f;
    const float coefficient = m_masterVolume < masterTarget ? kMasterRising : kMasterFalling;
    m_masterVolume += (masterTarget - m_masterVolume) * coefficient;
    applyMaster();
    bool done = std::fabs(masterTarget - m_masterVolume) < 0.0005f;

    for (std::size_t i = 0; i < kRecordingCount; ++i) {
        LoopingTrack* track = m_tracks[i].get();
        if (!track || !track->isPlaying())
            continue;
        const float goal = m_targets[i];
        float current = m_volumes[i];
        current += (goal - current) * kTrackCoefficient;
        m_volumes[i] = current;
        track->voice().setVolume(current);
        if (goal == 0.0f && current < 0.001f)
            track->stop();
        else
            done = done && std::fabs(goal - current) < 0.0005f;
    }

    if (!m_isPlaying && m_masterVolume < 0.001f) {
        m_masterVolume = 0.0f;
        applyMaster();
        for (auto& track : m_tracks)
            if (track)
                track->stop();
        stopEngine();
        m_rampTimer.reset();
    } else if (done) {
        m_rampTimer.reset();
    }
}

void AmbientPlayer::stopEngine() {
    if (m_env.device)
        m_env.device->stop();
    outputStopped();
}

void AmbientPlayer::outputRunning() {
    m_startDeadline.reset();
    m_reopenAttempts = 0;
    startSelectedSources();
    startRamp();
}

void AmbientPlayer::outputStopped() {
    m_serviceTimer.reset();
    m_startDeadline.reset();
    m_reopenTimer.reset();
    m_reopenAttempts = 0;
    m_env.streamer->setStreaming(false);
    if (!m_env.scheduler) {
        release();
        return;
    }
    m_releaseTimer = m_env.scheduler->after(kReleaseDelay, [this] { release(); });
}

void AmbientPlayer::release() {
    if (m_env.device)
        m_env.device->release();
    m_env.streamer->park();
}

namespace {
// Levels are linear gains 0…1; anything else (NaN included) would poison the mix.
float gainOf(float level) {
    return level > 0.0f ? std::min(level, 1.0f) : 0.0f;
}
} // namespace

void AmbientPlayer::setLevels(const AmbientLevels& raw) {
    AmbientLevels levels = raw;
    levels.master = gainOf(levels.master);
    for (float& level : levels.sounds)
        level = gainOf(level);
    m_targets = levels.sounds;
    m_masterSetting = levels.master;
    m_noiseLevel.store(levels.level(AmbientSound::brownNoise), std::memory_order_relaxed);
    if (m_isPlaying) {
        startSelectedSources();
        startRamp();
    }
}

bool AmbientPlayer::play() {
    m_isPlaying = true;
    m_releaseTimer.reset();
    if (m_env.device && m_env.device->state() == AudioDevice::State::stopped && !m_reopenTimer) {
        QString error;
        if (!openOutput(&error)) {
            qCWarning(lcAudio).noquote() << "Quillmere ambient engine failed: " + error;
            m_isPlaying = false;
            outputStopped();
            return false;
        }
    } else if (!m_env.device) {
        qCWarning(lcAudio).noquote() << "Quillmere ambient engine failed: no audio output";
        m_isPlaying = false;
        outputStopped();
        return false;
    }
    if (!m_serviceTimer && m_env.scheduler)
        m_serviceTimer = m_env.scheduler->every(kServicePeriod, [this] { serviceAudio(); });
    startSelectedSources();
    startRamp();
    return true;
}

bool AmbientPlayer::openOutput(QString* error) {
    connectOutput();
    if (!m_env.device->start(m_sampleRate, &m_mixer, error))
        return false;
    m_env.streamer->setStreaming(true);
    if (m_env.device->state() == AudioDevice::State::starting && m_env.scheduler)
        m_startDeadline = m_env.scheduler->after(kStartTimeout, [this] {
            m_startDeadline.reset();
            if (m_env.device->state() != AudioDevice::State::starting)
                return;
            m_env.device->stop();
            outputFailed(QStringLiteral("the sound server did not answer"));
        });
    return true;
}

void AmbientPlayer::outputFailed(const QString& error) {
    m_startDeadline.reset();
    m_env.device->stop();
    for (auto& track : m_tracks)
        if (track)
            track->stop();
    if (m_reopenAttempts > 0 && m_reopenAttempts < kReopenAttempts && m_isPlaying) {
        reopenLater();
        return;
    }
    giveUp((m_reopenAttempts > 0 ? QStringLiteral("Quillmere ambient engine restart failed: ")
                                 : QStringLiteral("Quillmere ambient engine failed: ")) +
           error);
}

void AmbientPlayer::giveUp(const QString& logLine) {
    qCWarning(lcAudio).noquote() << logLine;
    const bool wasWanted = m_isPlaying;
    m_reopenAttempts = 0;
    m_reopenTimer.reset();
    m_isPlaying = false;
    m_rampTimer.reset();
    m_masterVolume = 0.0f;
    applyMaster();
    outputStopped();
    // The card must not say it plays while nothing does.
    if (wasWanted)
        reportStopped();
}

void AmbientPlayer::reopenLater() {
    m_env.streamer->setStreaming(false);
    if (!m_env.scheduler)
        return;
    m_reopenTimer = m_env.scheduler->after(kReopenDelay, [this] {
        m_reopenTimer.reset();
        if (!m_isPlaying)
            return;
        ++m_reopenAttempts;
        reopen();
    });
}

void AmbientPlayer::reopen() {
    QString error;
    if (!openOutput(&error)) {
        outputFailed(error);
        return;
    }
    if (m_env.device->isRunning())
        outputRunning();
}

void AmbientPlayer::stop() {
    m_isPlaying = false;
    startRamp();
}

void AmbientPlayer::prepare() {
    if (m_librariesAsked || !m_env.loadLibraries)
        return;
    m_librariesAsked = true;
    m_env.loadLibraries();
}

void AmbientPlayer::serviceAudio() {
    for (AmbientSound sound : kAllAmbientSounds) {
        LoopingTrack* track = m_tracks[indexOf(sound)].get();
        if (!track)
            continue;
        std::int64_t generation = 0;
        while (track->voice().takeConsumed(generation))
            onSegmentConsumed(sound, generation);
    }
    if (!m_env.device)
        return;
    for (auto event = m_env.device->takeEvent(); event != AudioDevice::Event::none;
         event = m_env.device->takeEvent()) {
        switch (event) {
        case AudioDevice::Event::started:
            outputRunning();
            break;
        case AudioDevice::Event::failed:
            outputFailed(m_env.device->error());
            break;
        default:
            recoverFromConfigurationChange();
            return; // what the old output still had to say is moot
        }
    }
}

void AmbientPlayer::onSegmentConsumed(AmbientSound sound, std::int64_t generation) {
    LoopingTrack* track = m_tracks[indexOf(sound)].get();
    // Completions of flushed or superseded segments must not restart a loop.
    if (!track || generation != track->generation())
        return;
    track->schedule(0, generation);
    m_env.streamer->wake();
}

void AmbientPlayer::recoverFromConfigurationChange() {
    // The old output is gone or changed; nothing may render while the graph is rebuilt.
    m_env.device->stop();
    for (auto& track : m_tracks)
        if (track)
            track->stop();
    if (m_noise) {
        m_mixer.detachNoise();
        m_noise.reset();
    }
    if (!m_isPlaying) {
        connectOutput();
        outputStopped();
        return;
    }
    m_reopenAttempts = std::max(m_reopenAttempts, 1);
    reopen();
}

} // namespace quill

#pragma once

#include "audio/AmbientMixer.h"
#include "audio/AmbientResources.h"
#include "model/AmbientSound.h"
#include "store/AmbientOutput.h"
#include "store/Scheduler.h"

#include <array>
#include <atomic>
#include <cstdint>
#include <functional>
#include <memory>

class QObject;

namespace quill {

class AudioDevice;
class BrownNoiseGenerator;
class LoopingTrack;
class SegmentStreamer;

/// Plays the ambient mix: up to seven looping recordings and the brown noise, each at its own
/// level under one master level. Every change of level fades at 60 steps a second; the output
/// is stopped only after the master level has faded out; a lost or changed output is rebuilt.
/// The output is asked about only on the first play, and a while after it stopped the audio
/// system and the decoder thread are let go, so an app that is not playing costs nothing.
/// Everything here runs on the main thread; the audio thread only renders the mixer.
class AmbientPlayer final : public AmbientOutput {
public:
    /// The outside world of the player, injectable so tests run offline in virtual time.
    struct Environment {
        std::shared_ptr<AudioDevice> device;
        std::shared_ptr<Scheduler> scheduler;
        /// Decodes the recordings; a threaded one is made when absent.
        std::shared_ptr<SegmentStreamer> streamer;
        AmbientResources resources;
        /// The rate the recordings are mixed at: each file is converted to it on its own only
        /// when it was made at another rate, and their sum once to the output's rate.
        double loopRate = AmbientResources::kRecordingRate;
        /// Uniform in [0, 1); the system generator when absent.
        std::function<double()> unitRandom;
        /// Seed of each new brown-noise generator; the system generator when absent.
        std::function<std::uint32_t()> noiseSeed;
        /// Loads the audio libraries off the calling thread; asked once, by `prepare()`.
        std::function<void()> loadLibraries;
    };

    /// The ramp's steps come 17, 17 and 16 ms apart: exactly 60 a second on average, which the
    /// fade coefficients are made for.
    static constexpr std::chrono::milliseconds kRampPeriods[3] = {std::chrono::milliseconds(17),
                                                                  std::chrono::milliseconds(17),
                                                                  std::chrono::milliseconds(16)};
    /// Loops queue their next pass seconds ahead and a lost device only needs noticing, so
    /// the main thread looks after the output five times a second.
    static constexpr std::chrono::milliseconds kServicePeriod{200};
    /// Ambient sound only fades, over tenths of a second, so the output can take it in passes
    /// of 85 ms at 48 kHz: a quarter of the audio thread's wake-ups of 1024-frame passes, and
    /// under half its CPU with a sound server.
    static constexpr int kOutputBufferFrames = 4096;
    /// How long the audio system and the decoder thread stay after the output stopped, so
    /// a quick pause and resume does not pay for bringing them back.
    static constexpr std::chrono::milliseconds kReleaseDelay{10000};
    /// A sound server answers a local client in milliseconds; one that has not opened the
    /// output after this never will, and the play is given up.
    static constexpr std::chrono::milliseconds kStartTimeout{5000};
    /// A lost output (a sound server restarting) is opened again this often, this many
    /// times, before playback counts as ended.
    static constexpr std::chrono::milliseconds kReopenDelay{1000};
    static constexpr int kReopenAttempts = 15;
    static constexpr float kMasterRising = 0.020617843f;     // tau 0.8 s at 60 steps/s
    static constexpr float kMasterFalling = 0.036359549f;    // tau 0.45 s
    static constexpr float kTrackCoefficient = 0.054040551f; // tau 0.3 s

    explicit AmbientPlayer(Environment environment);
    ~AmbientPlayer() override;
    AmbientPlayer(const AmbientPlayer&) = delete;
    AmbientPlayer& operator=(const AmbientPlayer&) = delete;

    void setLevels(const AmbientLevels& levels) override;
    bool play() override;
    void stop() override;
    void prepare() override;

    /// Handles consumed segments and output changes; runs on a timer while the output runs.
    void serviceAudio();

    // Inspection, for tests and diagnostics.
    bool isPlaying() const { return m_isPlaying; }
    bool isEngineRunning() const;
    bool isRamping() const { return m_rampTimer != nullptr; }
    double sampleRate() const { return m_sampleRate; }
    float masterVolume() const { return m_masterVolume; }
    float volume(AmbientSound sound) const { return m_volumes[indexOf(sound)]; }
    bool isTrackPlaying(AmbientSound sound) const;
    std::int64_t trackGeneration(AmbientSound sound) const;
    const BrownNoiseGenerator* noiseGenerator() const { return m_noise.get(); }
    float noiseLevel() const { return m_noiseLevel.load(std::memory_order_relaxed); }

private:
    void connectOutput();
    bool openOutput(QString* error);
    void outputFailed(const QString& error);
    void giveUp(const QString& logLine);
    void reopenLater();
    void reopen();
    void applyMaster();
    void attachNoise();
    LoopingTrack* makeTrack(AmbientSound sound);
    void startSelectedSources();
    void startRamp();
    void scheduleRampStep();
    void stepVolumes();
    void stopEngine();
    void outputRunning();
    void outputStopped();
    void release();
    void recoverFromConfigurationChange();
    void onSegmentConsumed(AmbientSound sound, std::int64_t generation);
    float target(AmbientSound sound) const { return m_targets[indexOf(sound)]; }

    Environment m_env;
    AmbientMixer m_mixer;
    std::array<std::unique_ptr<LoopingTrack>, kAmbientSoundCount> m_tracks;
    std::unique_ptr<BrownNoiseGenerator> m_noise;
    std::atomic<float> m_noiseLevel{0.0f};
    std::array<float, kAmbientSoundCount> m_targets{};
    std::array<float, kAmbientSoundCount> m_volumes{};
    float m_masterSetting = 0.0f;
    float m_masterVolume = 0.0f;
    double m_sampleRate = 48000.0;
    bool m_isPlaying = false;
    bool m_librariesAsked = false;
    std::unique_ptr<Scheduler::Handle> m_rampTimer;
    int m_rampPhase = 0;
    std::unique_ptr<Scheduler::Handle> m_serviceTimer;
    std::unique_ptr<Scheduler::Handle> m_releaseTimer;
    std::unique_ptr<Scheduler::Handle> m_startDeadline;
    std::unique_ptr<Scheduler::Handle> m_reopenTimer;
    int m_reopenAttempts = 0;              // > 0 while a lost output is being opened again
    std::unique_ptr<QObject> m_mainThread; // where the device's events are handed over
};

} // namespace quill

// Speed, memory and CPU of the sound subsystem.
//   bench_audio --benchmark_counters_tabular=true
// x_realtime: seconds of sound rendered per second of one core.

#include "../ProcessUsage.h"
#include "LoopAnalysis.h"
#include "Loudness.h"
#include "audio/AmbientPlayer.h"
#include "audio/BrownNoiseGenerator.h"
#include "audio/NamedSoundSynth.h"
#include "audio/OfflineAudioDevice.h"
#include "audio/Resampler.h"
#include "audio/SdlAudioDevice.h"
#include "audio/SegmentStreamer.h"

#include <benchmark/benchmark.h>

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <string>
#include <thread>
#include <vector>

using namespace quill;

namespace {

/// Timers that only run when the benchmark ticks them, so fades settle instantly.
class ManualScheduler final : public Scheduler {
public:
    struct Entry {
        Callback fn;
        bool alive = true;
    };
    class EntryHandle final : public Handle {
    public:
        explicit EntryHandle(std::shared_ptr<Entry> e) : m_e(std::move(e)) {}
        ~EntryHandle() override { m_e->alive = false; }
        bool isActive() const override { return m_e->alive; }

    private:
        std::shared_ptr<Entry> m_e;
    };
    std::unique_ptr<Handle> every(std::chrono::milliseconds, Callback fn) override {
        auto e = std::make_shared<Entry>();
        e->fn = std::move(fn);
        m_entries.push_back(e);
        return std::make_unique<EntryHandle>(e);
    }
    std::unique_ptr<Handle> after(std::chrono::milliseconds d, Callback fn) override {
        return every(d, std::move(fn));
    }
    void tick(int times) {
        for (int k = 0; k < times; ++k) {
            auto entries = m_entries;
            for (auto& e : entries)
                if (e->alive)
                    e->fn();
        }
    }

private:
    std::vector<std::shared_ptr<Entry>> m_entries;
};

AmbientLevels allEight() {
    AmbientLevels l;
    l.master = 0.49f;
    l.sounds.fill(0.49f);
    return l;
}

void BM_BrownNoise(benchmark::State& state) {
    std::atomic<float> level{0.49f};
    BrownNoiseGenerator g(48000.0f, &level, 12345u);
    const int frames = int(state.range(0));
    std::vector<float> l(static_cast<std::size_t>(frames)), r(static_cast<std::size_t>(frames));
    for (auto _ : state) {
        g.render(l.data(), r.data(), frames);
        benchmark::DoNotOptimize(l.data());
        benchmark::DoNotOptimize(r.data());
    }
    state.counters["x_realtime"] = benchmark::Counter(double(state.iterations()) * frames / 48000.0,
                                                      benchmark::Counter::kIsRate);
}
BENCHMARK(BM_BrownNoise)->Arg(512)->Arg(1024);

/// The player over an offline device, with timers and decoding driven by the benchmark.
struct OfflineMix {
    std::shared_ptr<OfflineAudioDevice> device = std::make_shared<OfflineAudioDevice>();
    std::shared_ptr<ManualScheduler> scheduler = std::make_shared<ManualScheduler>();
    std::shared_ptr<SegmentStreamer> streamer =
        std::make_shared<SegmentStreamer>(SegmentStreamer::Mode::manual);
    AmbientPlayer player;

    /// At the output's rate: 48 kHz plays the loops as they are, 44.1 kHz resamples them.
    explicit OfflineMix(double rate = 48000.0) : player(environment(rate)) {}

    /// Starts `levels` and ticks until every fade has settled.
    bool start(const AmbientLevels& levels) {
        player.setLevels(levels);
        if (!player.play())
            return false;
        scheduler->tick(400);
        return true;
    }

private:
    AmbientPlayer::Environment environment(double rate) {
        device->setPreferredSampleRate(rate);
        AmbientPlayer::Environment env;
        env.device = device;
        env.scheduler = scheduler;
        env.streamer = streamer;
        env.resources = AmbientResources(QStringLiteral(QUILL_AMBIENT_DIR));
        return env;
    }
};

/// The whole mix with all eight sources, decoding included, on one thread.
void BM_FullMix(benchmark::State& state) {
    OfflineMix mix(double(state.range(1)));
    if (!mix.start(allEight())) {
        state.SkipWithError("player did not start");
        return;
    }
    auto& device = mix.device;
    auto& scheduler = mix.scheduler;
    auto& streamer = mix.streamer; // every fade settled
    const int frames = int(state.range(0));
    for (int k = 0; k < 50; ++k) { // fill the rings once
        streamer->service();
        device->render(frames);
    }
    for (auto _ : state) {
        streamer->service();
        benchmark::DoNotOptimize(device->render(frames).data());
        scheduler->tick(1); // serviceAudio queues the next passes
    }
    state.counters["x_realtime"] = benchmark::Counter(
        double(state.iterations()) * frames / double(state.range(1)), benchmark::Counter::kIsRate);
}
BENCHMARK(BM_FullMix)->Args({1024, 48000})->Args({1024, 44100});

/// The resampler alone, 48 kHz loops to a 44.1 kHz output, one stereo stream.
void BM_Resample48To44(benchmark::State& state) {
    Resampler r;
    r.setRates(48000.0, 44100.0);
    float phase = 0, l = 0, rr = 0;
    for (auto _ : state) {
        for (int k = 0; k < 1024; ++k) {
            while (r.needsInput()) {
                phase += 0.1f;
                r.push(phase, -phase);
            }
            r.next(l, rr);
        }
        benchmark::DoNotOptimize(l);
    }
    state.counters["x_realtime"] = benchmark::Counter(double(state.iterations()) * 1024 / 44100.0,
                                                      benchmark::Counter::kIsRate);
}
BENCHMARK(BM_Resample48To44);

/// Only the audio thread's share of the full mix: the render callback over eight sources,
/// with the decoder's work kept out of the timing.
void BM_MixRender(benchmark::State& state) {
    OfflineMix mix;
    if (!mix.start(allEight())) {
        state.SkipWithError("player did not start");
        return;
    }
    auto& device = mix.device;
    auto& scheduler = mix.scheduler;
    auto& streamer = mix.streamer;
    const int frames = int(state.range(0));
    for (auto _ : state) {
        streamer->service();
        scheduler->tick(1);
        const auto t0 = std::chrono::steady_clock::now();
        benchmark::DoNotOptimize(device->render(frames).data());
        state.SetIterationTime(
            std::chrono::duration<double>(std::chrono::steady_clock::now() - t0).count());
    }
    state.counters["x_realtime"] = benchmark::Counter(double(state.iterations()) * frames / 48000.0,
                                                      benchmark::Counter::kIsRate);
}
BENCHMARK(BM_MixRender)->Arg(1024)->UseManualTime();

/// Each source alone through the player at the default settings (both sliders at 0.7, so a
/// gain of 0.49 each), at a 48 kHz output: its integrated loudness over 180 s, and for the
/// recordings the statistic that tells whether it sounds like its name, from the file.
void BM_SourceAtDefaults(benchmark::State& state) {
    const auto sound = kAllAmbientSounds[std::size_t(state.range(0))];
    state.SetLabel(rawValue(sound).toStdString());
    for (auto _ : state) {
        OfflineMix mix;
        AmbientLevels levels;
        levels.master = 0.49f;
        levels.sounds[indexOf(sound)] = 0.49f;
        if (!mix.start(levels)) {
            state.SkipWithError("player did not start");
            return;
        }
        for (int k = 0; k < 100; ++k) { // past the fades
            mix.streamer->service();
            mix.device->render(960);
            mix.scheduler->tick(1);
        }
        std::vector<float> left, right;
        for (int k = 0; k < 9000; ++k) { // 180 s: once round the loop, wherever it starts
            mix.streamer->service();
            const auto& out = mix.device->render(960);
            for (std::size_t i = 0; i + 1 < out.size(); i += 2) {
                left.push_back(out[i]);
                right.push_back(out[i + 1]);
            }
            mix.scheduler->tick(1);
        }
        state.counters["LUFS"] = ambientgen::integratedLoudness(left, right, 48000.0);
    }
    const QString path =
        AmbientResources(QStringLiteral(QUILL_AMBIENT_DIR)).locate(rawValue(sound));
    if (path.isEmpty())
        return;
    const loops::Recording r = loops::load(path);
    state.counters["recurrence"] =
        loops::strongestRecurrence(loops::envelope(r.left, r.rate, 0.1), 0.1, 5.0);
    if (sound == AmbientSound::rain) {
        const auto drops = loops::band(r.left, 1000, 12000, r.rate);
        state.counters["kurtosis_1_12k"] = loops::excessKurtosis(drops);
        state.counters["drops_per_s"] = loops::impulsesPerSecond(drops, r.rate);
    } else if (sound == AmbientSound::waves) {
        const auto env = loops::envelope(loops::band(r.left, 200, 8000, r.rate), r.rate, 0.02);
        const auto rises = loops::swellRiseTimes(env, 0.02);
        if (!rises.empty())
            state.counters["fastest_rise_s"] = *std::min_element(rises.begin(), rises.end());
    } else if (sound == AmbientSound::birds) {
        state.counters["strongest_tone_dB"] = loops::strongestToneDb(r.left, r.rate, 1000, 8000);
    } else if (sound == AmbientSound::wind) {
        state.counters["strongest_tone_dB"] = loops::strongestToneDb(r.left, r.rate, 400, 2500);
    }
}
BENCHMARK(BM_SourceAtDefaults)->DenseRange(0, int(kAmbientSoundCount) - 1)->Iterations(1);

/// Resident memory the seven loaded, playing recordings add to the process.
void BM_RecordingsMemory(benchmark::State& state) {
    for (auto _ : state) {
        const double before = bench::residentMb();
        OfflineMix mix;
        AmbientLevels levels = allEight();
        levels.sounds[indexOf(AmbientSound::brownNoise)] = 0.0f;
        mix.start(levels);
        for (int k = 0; k < 200; ++k) { // four seconds of sound: every ring full, decoders warm
            mix.streamer->service();
            mix.device->render(1024);
            mix.scheduler->tick(1);
        }
        state.counters["added_MB"] = bench::residentMb() - before;
    }
}
BENCHMARK(BM_RecordingsMemory)->Iterations(1);

/// CPU of the whole process while all eight sources play in real time through SDL (its
/// dummy driver when no sound server is set, PulseAudio when PULSE_SERVER names one), with
/// the decoder on its own thread; measured over 20 s after 3 s for the rings to fill, and
/// split by thread.
void BM_RunningMixCpu(benchmark::State& state) {
    for (auto _ : state) {
        auto scheduler = std::make_shared<ManualScheduler>();
        AmbientPlayer::Environment env;
        env.device = std::make_shared<SdlAudioDevice>(AmbientPlayer::kOutputBufferFrames);
        env.scheduler = scheduler;
        env.resources = AmbientResources(QStringLiteral(QUILL_AMBIENT_DIR));
        AmbientPlayer player(std::move(env));
        player.setLevels(allEight());
        if (!player.play()) {
            state.SkipWithError("no audio output");
            return;
        }
        scheduler->tick(400);
        auto run = [&](int seconds) { // serviced like the app's timer does
            const auto period = AmbientPlayer::kServicePeriod;
            for (int k = 0; k < seconds * 1000 / int(period.count()); ++k) {
                std::this_thread::sleep_for(period);
                scheduler->tick(1);
            }
        };
        run(3);
        const double cpu0 = bench::cpuSeconds();
        const auto threads0 = bench::threadCpuSeconds();
        const auto wall0 = std::chrono::steady_clock::now();
        run(20);
        const double wall =
            std::chrono::duration<double>(std::chrono::steady_clock::now() - wall0).count();
        state.counters["cpu_percent_of_core"] = 100.0 * (bench::cpuSeconds() - cpu0) / wall;
        for (const auto& [name, seconds] : bench::threadCpuSeconds()) {
            const auto before = threads0.find(name);
            const double used = seconds - (before == threads0.end() ? 0.0 : before->second);
            if (used > 0)
                state.counters["cpu_percent_" + name] = 100.0 * used / wall;
        }
        state.counters["output_rate"] = player.sampleRate();
        state.SetIterationTime(wall);
    }
}
BENCHMARK(BM_RunningMixCpu)->Iterations(1)->UseManualTime()->Unit(benchmark::kSecond);

/// Synthesising every cue sound once, as the named-sound player does before opening its output.
void BM_NamedSoundSynthesis(benchmark::State& state) {
    for (auto _ : state) {
        for (const QString& name : NamedSoundSynth::names())
            benchmark::DoNotOptimize(NamedSoundSynth::render(name).data());
        benchmark::DoNotOptimize(NamedSoundSynth::renderBeep().data());
    }
}
BENCHMARK(BM_NamedSoundSynthesis)->Unit(benchmark::kMillisecond);

} // namespace

BENCHMARK_MAIN();

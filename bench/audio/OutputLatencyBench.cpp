// How soon the ambient output sounds and how soon a change is heard, on the sound server named
// by PULSE_SERVER (bench/ui/measure.sh's private null sink), measured at the sink's monitor.
//   bench_audio_latency [changes]
// first_sound_ms: from the start of opening the output until its first sample is heard.
// master_ms: from a change of the output's gain (the master level, which every fade of the
// whole mix moves) until it is heard; what a fade's first step waits for, besides the ramp's
// own period (at most 17 ms).
// sound_ms: from a change in the rendered sound (one sound's own level) until it is heard.

#include "audio/AudioRenderer.h"
#include "audio/PulseAudioDevice.h"

#include <algorithm>
#include <atomic>
#include <chrono>
#include <cmath>
#include <cstdio>
#include <thread>
#include <vector>

using namespace quill;
using Clock = std::chrono::steady_clock;

namespace {

class LevelRenderer final : public AudioRenderer {
public:
    void render(float* out, int frames) override {
        std::fill(out, out + 2 * frames, level.load(std::memory_order_relaxed));
    }
    std::atomic<float> level{0.0f};
};

/// parec on the default sink's monitor; notes when the sound first crosses a threshold.
class Monitor {
public:
    Monitor() {
        m_pipe = popen("parec -d @DEFAULT_MONITOR@ --format=float32le --channels=2 --rate=48000 "
                       "--raw --latency-msec=5",
                       "r");
        if (m_pipe)
            m_thread = std::thread([this] { read(); });
    }
    ~Monitor() {
        m_stop = true;
        if (m_pipe)
            pclose(m_pipe);
        if (m_thread.joinable())
            m_thread.join();
    }
    bool ok() const { return m_pipe != nullptr; }
    /// Waits until the monitor's level is loud (or quiet); returns when that was heard.
    Clock::time_point waitFor(bool loud) {
        m_wantLoud = loud;
        m_heard = Clock::time_point{};
        m_armed = true;
        const auto cap = Clock::now() + std::chrono::seconds(10);
        while (m_armed && Clock::now() < cap)
            std::this_thread::sleep_for(std::chrono::milliseconds(1));
        return m_heard;
    }

private:
    void read() {
        std::vector<float> buffer(2 * 240); // 5 ms
        while (!m_stop) {
            const std::size_t n = fread(buffer.data(), sizeof(float), buffer.size(), m_pipe);
            if (n == 0)
                break;
            const auto now = Clock::now();
            if (!m_armed)
                continue;
            for (std::size_t i = 0; i < n; i += 2) {
                const bool loud = std::fabs(buffer[i]) > 0.25f;
                if (loud == m_wantLoud.load()) {
                    const double behind = double(n - i) / 2 / 48000.0;
                    m_heard = now - std::chrono::microseconds(std::int64_t(behind * 1e6));
                    m_armed = false;
                    break;
                }
            }
        }
    }
    FILE* m_pipe = nullptr;
    std::thread m_thread;
    std::atomic<bool> m_stop{false}, m_armed{false}, m_wantLoud{false};
    Clock::time_point m_heard;
};

double ms(Clock::duration d) {
    return std::chrono::duration<double, std::milli>(d).count();
}

} // namespace

int main(int argc, char** argv) {
    const int changes = argc > 1 ? std::atoi(argv[1]) : 10;
    Monitor monitor;
    if (!monitor.ok())
        return 1;
    monitor.waitFor(false); // the monitor runs
    PulseAudioDevice device;
    LevelRenderer renderer;
    renderer.level = 0.5f;
    device.setOutputGain(1.0f);
    const auto t0 = Clock::now();
    QString error;
    if (!device.start(48000.0, &renderer, &error)) {
        std::printf("start failed: %s\n", qPrintable(error));
        return 1;
    }
    const auto heard = monitor.waitFor(true);
    std::printf("first_sound_ms=%.1f\n", heard == Clock::time_point{} ? -1.0 : ms(heard - t0));
    auto changes_of = [&](const char* name, auto&& change) {
        std::vector<double> delays;
        bool loud = true;
        for (int i = 0; i < changes; ++i) {
            std::this_thread::sleep_for(std::chrono::milliseconds(700 + 37 * i));
            loud = !loud;
            const auto command = Clock::now();
            change(loud);
            const auto at = monitor.waitFor(loud);
            if (at != Clock::time_point{})
                delays.push_back(ms(at - command));
        }
        if (!loud) {
            change(true);
            monitor.waitFor(true);
        }
        std::sort(delays.begin(), delays.end());
        if (!delays.empty())
            std::printf("%s_median=%.1f %s_max=%.1f (%zu changes)\n", name,
                        delays[delays.size() / 2], name, delays.back(), delays.size());
    };
    device.setOutputGain(1.0f);
    changes_of("master_ms", [&](bool loud) { device.setOutputGain(loud ? 1.0f : 0.0f); });
    changes_of("sound_ms", [&](bool loud) { renderer.level = loud ? 0.5f : 0.0f; });
    device.release();
}

// Renders Quillmere's ambient recordings: seamless stereo loops of three minutes, made at
// 48 kHz and stored at the player's mixing rate as Ogg Vorbis. Each loop is shaped by a look-ahead
// limiter and then set to the loudness the brown noise has at the same level, so every sound in the
// mix is equally loud. Usage: quillmere-ambient-gen <output folder> [raw value ...]   (all seven
// when none given)

#include "Limiter.h"
#include "Loudness.h"
#include "RateConverter.h"
#include "Recipes.h"

#include "audio/AmbientResources.h"
#include "audio/BrownNoiseGenerator.h"

#include <malloc.h>
#include <sndfile.h>

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <filesystem>
#include <string>
#include <vector>

namespace {
constexpr int kRate = 48000;
constexpr std::size_t kFrames = std::size_t(180) * kRate;
constexpr double kCeiling = 0.84;    // -1.5 dBFS before encoding
constexpr double kMaxDecoded = 0.94; // what the decoded file may reach after the codec's overshoot
// Vorbis at -q2.5, about 95 kbit/s on these sounds at 32 kHz: clean noise textures, and
// decoding a tenth cheaper than at -q3.5.
constexpr double kQuality = 0.25;

/// The brown noise's integrated loudness at a level of 1, which every loop is matched to:
/// the player applies the same linear level to both.
double brownNoiseLoudness() {
    const std::atomic<float> level{1.0f};
    quill::BrownNoiseGenerator noise(float(kRate), &level, 0x0b0a0b0au);
    constexpr int kBlock = 4800;
    std::vector<float> l(kBlock), r(kBlock);
    ambientgen::LoudnessMeter meter;
    for (int block = 0; block < 65 * kRate / kBlock; ++block) {
        noise.render(l.data(), r.data(), kBlock);
        if (block < 5 * kRate / kBlock)
            continue; // past the fade-in
        for (int i = 0; i < kBlock; ++i)
            meter.add(l[std::size_t(i)], r[std::size_t(i)]);
    }
    return meter.integrated();
}

double peakOf(const ambientgen::LoopCanvas& c) {
    double peak = 0;
    for (std::size_t i = 0; i < c.frames; ++i)
        peak = std::max({peak, std::fabs(double(c.left[i])), std::fabs(double(c.right[i]))});
    return peak;
}

/// Limits the loop's transients so that, once brought to the target loudness, its peaks stay
/// under the ceiling; then applies that gain. Limiting lowers the loudness a little, so the
/// two are settled together in a few rounds.
void master(ambientgen::LoopCanvas& c, double target, double ceiling) {
    const ambientgen::LoopCanvas raw = c;
    auto loudness = [](const ambientgen::LoopCanvas& l) {
        return ambientgen::integratedLoudness(l.left, l.right, l.rate);
    };
    double gain = std::pow(10.0, (target - loudness(c)) / 20);
    for (int round = 0; round < 4; ++round) {
        c = raw;
        ambientgen::limitLoop(c, ceiling / gain);
        gain = std::pow(10.0, (target - loudness(c)) / 20);
        if (peakOf(c) * gain <= ceiling * 1.01)
            break;
    }
    // The last round's gain is a hair above the one it limited for; never let that clip.
    gain = std::min(gain, ceiling * 1.01 / peakOf(c));
    for (std::size_t i = 0; i < c.frames; ++i) {
        c.left[i] = float(c.left[i] * gain);
        c.right[i] = float(c.right[i] * gain);
    }
}

bool writeOgg(const std::filesystem::path& temporary, const ambientgen::LoopCanvas& c) {
    SF_INFO info{};
    info.samplerate = c.rate;
    info.channels = 2;
    info.format = SF_FORMAT_OGG | SF_FORMAT_VORBIS;
    SNDFILE* file = sf_open(temporary.c_str(), SFM_WRITE, &info);
    if (!file) {
        std::fprintf(stderr, "cannot write %s: %s\n", temporary.c_str(), sf_strerror(nullptr));
        return false;
    }
    double quality = kQuality;
    sf_command(file, SFC_SET_VBR_ENCODING_QUALITY, &quality, sizeof quality);
    std::vector<float> interleaved(c.frames * 2);
    for (std::size_t i = 0; i < c.frames; ++i) {
        interleaved[2 * i] = c.left[i];
        interleaved[2 * i + 1] = c.right[i];
    }
    // In modest blocks: the Vorbis encoder takes each write as one analysis buffer.
    sf_count_t written = 0;
    for (std::size_t at = 0; at < c.frames; at += 4096) {
        const auto count = sf_count_t(std::min<std::size_t>(4096, c.frames - at));
        written += sf_writef_float(file, interleaved.data() + 2 * at, count);
    }
    sf_close(file);
    if (written != sf_count_t(c.frames)) {
        std::fprintf(stderr, "short write to %s\n", temporary.c_str());
        return false;
    }
    return true;
}

/// The highest sample of the file as a player decodes it; -1 when it cannot be read.
double decodedPeak(const std::filesystem::path& path) {
    SF_INFO info{};
    SNDFILE* file = sf_open(path.c_str(), SFM_READ, &info);
    if (!file)
        return -1;
    std::vector<float> block(std::size_t(4096) * std::size_t(info.channels));
    double peak = 0;
    sf_count_t n;
    while ((n = sf_readf_float(file, block.data(), 4096)) > 0)
        for (sf_count_t i = 0; i < n * info.channels; ++i)
            peak = std::max(peak, std::fabs(double(block[std::size_t(i)])));
    sf_close(file);
    return peak;
}

/// Masters and encodes the loop. Vorbis overshoots on sharp transients, by up to 2 dB at
/// these rates, so the file is decoded again and mastered under a lower ceiling while its
/// peaks would come too close to full scale.
bool writeLoop(const std::filesystem::path& path, const ambientgen::LoopCanvas& raw,
               double target) {
    // Written beside the target and renamed, so an interrupted build leaves no half file.
    const auto temporary = std::filesystem::path(path.string() + ".part");
    double ceiling = kCeiling;
    for (int attempt = 0; attempt < 4; ++attempt) {
        ambientgen::LoopCanvas c = raw;
        master(c, target, ceiling);
        if (!writeOgg(temporary, c))
            return false;
        const double peak = decodedPeak(temporary);
        if (peak < 0)
            return false;
        if (peak <= kMaxDecoded)
            break;
        ceiling *= 0.98 * kMaxDecoded / peak;
    }
    std::error_code ec;
    std::filesystem::rename(temporary, path, ec);
    return !ec;
}
} // namespace

int main(int argc, char** argv) {
    if (argc < 2) {
        std::fprintf(stderr, "usage: %s <output folder> [raw value ...]\n", argv[0]);
        return 2;
    }
    const auto began = std::chrono::steady_clock::now();
    // The recipes make and drop many buffers of a whole loop each; keeping freed memory in
    // the heap instead of handing it back to the system saves most of the page faults.
    mallopt(M_MMAP_THRESHOLD, 1 << 30);
    mallopt(M_TRIM_THRESHOLD, 1 << 30);
    const std::filesystem::path out = argv[1];
    std::error_code ec;
    std::filesystem::create_directories(out, ec);
    std::vector<std::string> names(argv + 2, argv + argc);
    if (names.empty())
        names.assign(std::begin(ambientgen::kRecordings), std::end(ambientgen::kRecordings));
    const double target = brownNoiseLoudness();
    for (const auto& name : names) {
        ambientgen::LoopCanvas canvas(kRate, kFrames);
        if (!ambientgen::render(name, canvas)) {
            std::fprintf(stderr, "unknown recording: %s\n", name.c_str());
            return 2;
        }
        ambientgen::LoopCanvas stored =
            ambientgen::atRate(canvas, quill::AmbientResources::kRecordingRate);
        canvas = ambientgen::LoopCanvas(1, 0); // its memory back before mastering
        if (!writeLoop(out / (name + ".ogg"), stored, target))
            return 1;
    }
    const double seconds =
        std::chrono::duration<double>(std::chrono::steady_clock::now() - began).count();
    std::printf("rendered %zu at %.1f LUFS in %.1f s\n", names.size(), target, seconds);
    return 0;
}

// Renders Quillmere's ambient recordings: seamless stereo loops, 60 s at 48 kHz, as
// 16-bit WAV: seven of them are read continuously while they play, and PCM costs almost
// nothing to read, where FLAC decoding was most of the mixer's work.
// Usage: quillmere-ambient-gen <output folder> [raw value ...]   (all seven when none given)

#include "Recipes.h"

#include <sndfile.h>

#include <cstdio>
#include <filesystem>
#include <string>
#include <vector>

namespace {
constexpr int kRate = 48000;
constexpr double kSeconds = 60.0;

bool writeWav(const std::filesystem::path& path, const ambientgen::LoopCanvas& c) {
    SF_INFO info{};
    info.samplerate = c.rate;
    info.channels = 2;
    info.format = SF_FORMAT_WAV | SF_FORMAT_PCM_16;
    // Written beside the target and renamed, so an interrupted build leaves no half file.
    const auto temporary = std::filesystem::path(path.string() + ".part");
    SNDFILE* file = sf_open(temporary.c_str(), SFM_WRITE, &info);
    if (!file) {
        std::fprintf(stderr, "cannot write %s: %s\n", temporary.c_str(), sf_strerror(nullptr));
        return false;
    }
    // A stray peak above full scale must clip, not wrap around to the opposite sign.
    sf_command(file, SFC_SET_CLIPPING, nullptr, SF_TRUE);
    std::vector<float> interleaved(c.frames * 2);
    for (std::size_t i = 0; i < c.frames; ++i) {
        interleaved[2 * i] = c.left[i];
        interleaved[2 * i + 1] = c.right[i];
    }
    const sf_count_t written = sf_writef_float(file, interleaved.data(), sf_count_t(c.frames));
    sf_close(file);
    if (written != sf_count_t(c.frames)) {
        std::fprintf(stderr, "short write to %s\n", temporary.c_str());
        return false;
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
    const std::filesystem::path out = argv[1];
    std::error_code ec;
    std::filesystem::create_directories(out, ec);
    std::vector<std::string> names(argv + 2, argv + argc);
    if (names.empty())
        names.assign(std::begin(ambientgen::kRecordings), std::end(ambientgen::kRecordings));
    for (const auto& name : names) {
        ambientgen::LoopCanvas canvas(kRate, kSeconds);
        if (!ambientgen::render(name, canvas)) {
            std::fprintf(stderr, "unknown recording: %s\n", name.c_str());
            return 2;
        }
        if (!writeWav(out / (name + ".wav"), canvas))
            return 1;
    }
    return 0;
}

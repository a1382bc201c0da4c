// Renders Quillmere's ambient recordings: seamless stereo loops, 60 s at 48 kHz, as FLAC.
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

bool writeFlac(const std::filesystem::path& path, const ambientgen::LoopCanvas& c) {
    SF_INFO info{};
    info.samplerate = c.rate;
    info.channels = 2;
    info.format = SF_FORMAT_FLAC | SF_FORMAT_PCM_16;
    // Written beside the target and renamed, so an interrupted build leaves no half file.
    const auto temporary = std::filesystem::path(path.string() + ".part");
    SNDFILE* file = sf_open(temporary.c_str(), SFM_WRITE, &info);
    if (!file) {
        std::fprintf(stderr, "cannot write %s: %s\n", temporary.c_str(), sf_strerror(nullptr));
        return false;
    }
    // A lighter FLAC level decodes about half again as fast for a few percent more bytes;
    // the player decodes seven of these continuously.
    double level = 0.3;
    sf_command(file, SFC_SET_COMPRESSION_LEVEL, &level, sizeof level);
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
        if (!writeFlac(out / (name + ".flac"), canvas))
            return 1;
    }
    return 0;
}

// How fast files are identified: ReadMediaItem over 5,000 small MP3 files
// (each with its own name and title) from the page cache, next to a bare
// TagLib loop (FileRef, audio properties, tag) over the same files in the
// same run. Two smaller sets show the cost of the files without a Xing
// header: one at a constant bit rate (a few headers sampled) and one whose
// bit rate changes (every frame counted). Prints its figures and ends.
//
//   reader_bench [FILES]      FILES defaults to 5000; needs ffmpeg on the PATH

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <functional>
#include <string>
#include <vector>

#include "mp3_copies.h"
#include "platform/media_reader.h"

namespace {

namespace fs = std::filesystem;
using Clock = std::chrono::steady_clock;

bool Run(const std::string& command) {
    if (std::system(command.c_str()) == 0) return true;
    std::fprintf(stderr, "failed: %s\n", command.c_str());
    return false;
}

struct Method {
    std::function<double(const std::string&)> read;
    double best = 0;  // files per second
};

// Rounds over the files, each method in turn so that both meet the same
// state of the machine; each keeps its best round. sink keeps the work from
// being optimised away and is checked by the caller.
void Measure(const std::vector<std::string>& paths, std::vector<Method*> methods, double& sink) {
    for (int round = 0; round < 3; ++round) {
        for (Method* method : methods) {
            const auto start = Clock::now();
            for (const auto& path : paths) sink += method->read(path);
            const double seconds = std::chrono::duration<double>(Clock::now() - start).count();
            method->best = std::max(method->best, static_cast<double>(paths.size()) / seconds);
        }
    }
}

double ThroughReader(const std::string& path) {
    auto item = velmora::ReadMediaItem(path);
    return item->duration() + static_cast<double>(item->getItemInfo("Title").size());
}

}  // namespace

int main(int argc, char** argv) {
    const int count = argc > 1 ? std::max(1, std::atoi(argv[1])) : 5000;
    std::string pattern = (fs::temp_directory_path() / "velmora-reader-bench-XXXXXX").string();
    if (mkdtemp(pattern.data()) == nullptr) return 1;
    const fs::path dir = pattern;
    const std::string d = dir.string();
    const std::string ff = "ffmpeg -v error -y -f lavfi -i sine=frequency=440:duration=";
    const bool made =
        Run(ff + "2 -b:a 128k -metadata artist='Δοκιμή' -metadata album=Bench '" + d + "/xing.mp3'") &&
        Run(ff + "2 -b:a 128k -write_xing 0 '" + d + "/cbr.mp3'") &&
        Run(ff + "1 -b:a 320k -write_xing 0 '" + d + "/high.mp3'") &&
        Run(ff + "2 -b:a 64k -write_xing 0 '" + d + "/low.mp3'") &&
        Run("cat '" + d + "/high.mp3' '" + d + "/low.mp3' > '" + d + "/vbr.mp3'");
    if (!made) {
        fs::remove_all(dir);
        return 1;
    }

    const auto xing = velmora::bench::Copies(dir / "xing.mp3", dir, "xing", count);
    const auto cbr = velmora::bench::Copies(dir / "cbr.mp3", dir, "cbr", std::max(1, count / 10));
    const auto vbr = velmora::bench::Copies(dir / "vbr.mp3", dir, "vbr", std::max(1, count / 10));
    velmora::bench::Warm(xing);
    velmora::bench::Warm(cbr);
    velmora::bench::Warm(vbr);

    double sink = 0;
    Method bare{velmora::bench::Read_By_TagLib}, reader{ThroughReader};
    Method reader_cbr{ThroughReader}, reader_vbr{ThroughReader};
    Measure(xing, {&bare, &reader}, sink);
    Measure(cbr, {&reader_cbr}, sink);
    Measure(vbr, {&reader_vbr}, sink);
    fs::remove_all(dir);
    if (!(sink > 0)) {
        std::fprintf(stderr, "nothing was read\n");
        return 1;
    }

    std::printf("files with a Xing header:     %zu\n", xing.size());
    std::printf("  bare TagLib loop            %8.0f files/s\n", bare.best);
    std::printf("  ReadMediaItem               %8.0f files/s (%.2f of the bare loop)\n", reader.best,
                reader.best / bare.best);
    std::printf("constant bit rate, no header: %zu\n", cbr.size());
    std::printf("  ReadMediaItem               %8.0f files/s\n", reader_cbr.best);
    std::printf("changing bit rate, no header: %zu\n", vbr.size());
    std::printf("  ReadMediaItem               %8.0f files/s\n", reader_vbr.best);
    return reader.best >= 5000 ? 0 : 2;
}

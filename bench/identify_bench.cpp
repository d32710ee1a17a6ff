// How fast a Collection is identified through the whole model: 5,000 small
// MP3 files (copies of one, each with its own name and title) are added to a
// fresh Collection by Add_Files_Under_Path, then Identify_Properties reads
// them anew, on the ports velmora-cli identify runs on: Qt's event loop (its
// real yields), the libmpv engines, whose reader is the TagLib and
// libavformat media reader, and the terminal's dialogs answering Yes. A bare
// TagLib loop (FileRef, audio properties, tag) over the same files runs in
// the same process. Files come from the page cache: one identification runs
// untimed first. Each method keeps its best of three rounds, taken in turn.
// The model's time includes the run's closing save of the whole Collection;
// that save is also timed alone, to show its share.
//
//   identify_bench [FILES]     FILES defaults to 5000; needs ffmpeg on the PATH
//
// Exits with 2 when the model reads fewer than 5,000 files per second.

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <iostream>
#include <string>
#include <vector>

#include "cli/headless_program.h"
#include "cli/terminal_dialogs.h"
#include "collection/collection_file.h"
#include "core/app_context.h"
#include "intake/add_remove.h"
#include "intake/directory_search.h"
#include "intake/identification.h"
#include "mp3_copies.h"

namespace {

namespace fs = std::filesystem;
using Clock = std::chrono::steady_clock;
using namespace velmora;

double Seconds(Clock::time_point from) { return std::chrono::duration<double>(Clock::now() - from).count(); }

double Bare_TagLib(const std::vector<std::string>& paths) {
    double sink = 0;
    for (const auto& path : paths) {
        sink += bench::Read_By_TagLib(path);
    }
    return sink;
}

int Bench(const fs::path& dir, int count) {
    const fs::path media = dir / "media";
    fs::create_directories(media);
    const std::string source = (dir / "source.mp3").string();
    const std::string make = "ffmpeg -v error -y -f lavfi -i sine=frequency=440:duration=2 -b:a 128k "
                             "-metadata artist='Δοκιμή' -metadata album=Bench '" + source + "'";
    if (std::system(make.c_str()) != 0) {
        std::fprintf(stderr, "failed: %s\n", make.c_str());
        return 1;
    }
    const std::vector<std::string> paths = bench::Copies(source, media, "track", count);

    // The boxes' texts are not wanted here; the first button answers.
    std::ostream quiet(nullptr);
    cli::TerminalDialogs dialogs(std::cin, quiet, false);
    cli::TerminalShell shell(quiet);
    cli::HeadlessProgram program(dialogs, shell);
    AppContext& ctx = program.Context();
    ctx.program_folder = dir.string() + "/";
    ctx.core.App_Path = ctx.program_folder;
    cli::Start_Without_Window(ctx);
    ctx.collection.Collection_Path = (dir / "velmora_sylloges" / "bench.qel").string();

    // The search page pointed at the folder, every type, its subfolders on.
    Form1& f = ctx.form1;
    Command7_Click(ctx, 0);
    f.Dir1.SetPath(media.string());
    Dir1_change(ctx);
    Set_Check2(ctx, 1);
    auto t0 = Clock::now();
    Add_Files_Under_Path(ctx);
    const double add_s = Seconds(t0);
    if (f.List2.ListCount() != count) {
        std::fprintf(stderr, "added %d Tracks of %d\n", f.List2.ListCount(), count);
        return 1;
    }

    bench::Warm(paths);
    Identify_Properties(ctx, kIdentifyNew);
    double model_best = 0, bare_best = 0, sink = 0;
    for (int round = 0; round < 3; ++round) {
        t0 = Clock::now();
        if (!Identify_Properties(ctx, kIdentifyNew)) return 1;
        model_best = std::max(model_best, count / Seconds(t0));
        t0 = Clock::now();
        sink += Bare_TagLib(paths);
        bare_best = std::max(bare_best, count / Seconds(t0));
    }
    t0 = Clock::now();
    Save_Collection(ctx, false, true);
    const double save_s = Seconds(t0);

    // What was read must be what was written: the last row's title carries
    // the number in its file's name (the rows stand in the order of names).
    const TrackTable& t = ctx.table;
    const int last = count - 1;
    const std::string name = fs::path(f.List2.List(last)).stem().string();
    const bool read = t.Identified[last] && t.Duration[last].ToDouble() > 1.9 &&
                      t.Title[last] == "Κομμάτι " + name.substr(name.find('-') + 1) && sink > 0;
    if (!read) {
        std::fprintf(stderr, "the files were not read: %s\n", f.Text2[0].Text().c_str());
        return 1;
    }

    std::printf("files: %d (added in %.3f s)\n", count, add_s);
    std::printf("  bare TagLib loop                  %8.0f files/s\n", bare_best);
    std::printf("  Identify_Properties (with save)   %8.0f files/s (%.2f of the bare loop)\n", model_best,
                model_best / bare_best);
    std::printf("  the closing save alone            %8.3f s\n", save_s);
    return model_best >= 5000 ? 0 : 2;
}

}  // namespace

int main(int argc, char** argv) {
    const int count = argc > 1 ? std::max(1, std::atoi(argv[1])) : 5000;
    std::string pattern = (fs::temp_directory_path() / "velmora-identify-bench-XXXXXX").string();
    if (mkdtemp(pattern.data()) == nullptr) return 1;
    const int status = Bench(pattern, count);
    std::error_code ec;
    fs::remove_all(pattern, ec);
    return status;
}

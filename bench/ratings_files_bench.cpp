// How fast ratings move between a Collection and its files: 5,000 small MP3
// files (copies of one) in a fresh Collection, every Track given a class,
// then Exchange_Ratings writes every class into the files (255) and reads
// them back (1), on the ports velmora-cli ratings runs on: Qt's loop, the
// libmpv engines whose reader is the TagLib media reader. Each write makes
// a copy beside the file and renames it into place. Beside them, in the same
// run, a bare TagLib loop sets the POPM frame and saves each file in place.
// The classes change every round, so every write changes the file. Files
// come from the page cache; each method keeps its best of three rounds.
//
//   ratings_files_bench [FILES]     FILES defaults to 5000; needs ffmpeg
//
// Exits with 2 when writing is slower than 1,000 files/s or reading slower
// than 5,000 files/s.

#include <taglib/id3v2tag.h>
#include <taglib/mpegfile.h>
#include <taglib/popularimeterframe.h>

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
#include "core/app_context.h"
#include "mp3_copies.h"
#include "ratings/ratings_in_files.h"

namespace {

namespace fs = std::filesystem;
using Clock = std::chrono::steady_clock;
using namespace velmora;

double Seconds(Clock::time_point from) { return std::chrono::duration<double>(Clock::now() - from).count(); }

void Bare_TagLib_Save(const std::vector<std::string>& paths, int round) {
    for (size_t i = 0; i < paths.size(); ++i) {
        TagLib::MPEG::File file(paths[i].c_str());
        TagLib::ID3v2::Tag* tag = file.ID3v2Tag(true);
        tag->removeFrames("POPM");
        auto* popm = new TagLib::ID3v2::PopularimeterFrame;
        popm->setEmail("bench");
        popm->setRating(static_cast<int>(1 + (i + round) % 5 * 60));
        tag->addFrame(popm);
        file.save(TagLib::MPEG::File::ID3v2, TagLib::File::StripNone);
    }
}

int Bench(const fs::path& dir, int count) {
    const fs::path media = dir / "media";
    fs::create_directories(media);
    const std::string source = (dir / "source.mp3").string();
    const std::string make = "ffmpeg -v error -y -f lavfi -i sine=frequency=440:duration=2 -b:a 128k '" + source + "'";
    if (std::system(make.c_str()) != 0) {
        std::fprintf(stderr, "failed: %s\n", make.c_str());
        return 1;
    }
    const std::vector<std::string> paths = bench::Copies(source, media, "track", count);
    const std::vector<std::string> bare = bench::Copies(source, media, "bare", count);

    std::ostream quiet(nullptr);
    cli::TerminalDialogs dialogs(std::cin, quiet, false);
    cli::TerminalShell shell(quiet);
    cli::HeadlessProgram program(dialogs, shell);
    AppContext& ctx = program.Context();
    ctx.program_folder = dir.string() + "/";
    ctx.core.App_Path = ctx.program_folder;
    cli::Start_Without_Window(ctx);
    TrackTable& t = ctx.table;
    t.Track_Count = count;
    t.Dimension(count);
    ctx.form1.List2.Assign(paths);

    bench::Warm(paths);
    bench::Warm(bare);
    double write_best = 0, read_best = 0, bare_best = 0;
    int read_changes = 0;
    for (int round = 0; round < 3; ++round) {
        for (int i = 0; i < count; ++i) t.Rating_Class[i] = static_cast<int16_t>(1 + (i + round) % 5);
        auto t0 = Clock::now();
        const ExchangeOutcome written = Exchange_Ratings(ctx, 0, kExchangeWriteAll);
        write_best = std::max(write_best, count / Seconds(t0));
        if (written.left_alone > 0) {
            std::fprintf(stderr, "%d files left alone: %s\n", written.left_alone, ctx.form1.Text2[0].Text().c_str());
            return 1;
        }
        // Read back over a table that forgot them: every row changes.
        for (int i = 0; i < count; ++i) t.Rating_Class[i] = 0;
        t0 = Clock::now();
        read_changes = Exchange_Ratings(ctx, 0, kExchangeReadAll).changes;
        read_best = std::max(read_best, count / Seconds(t0));
        t0 = Clock::now();
        Bare_TagLib_Save(bare, round);
        bare_best = std::max(bare_best, count / Seconds(t0));
    }
    if (read_changes != count || t.Rating_Class[count - 1] != 1 + (count - 1 + 2) % 5) {
        std::fprintf(stderr, "the ratings did not come back: %d changes\n", read_changes);
        return 1;
    }

    std::printf("files: %d\n", count);
    std::printf("  bare TagLib POPM save loop (in place)   %8.0f files/s\n", bare_best);
    std::printf("  Exchange_Ratings 255 (copy and rename)  %8.0f files/s (%.2f of the bare loop)\n", write_best,
                write_best / bare_best);
    std::printf("  Exchange_Ratings 1                      %8.0f files/s\n", read_best);
    return write_best >= 1000 && read_best >= 5000 ? 0 : 2;
}

}  // namespace

int main(int argc, char** argv) {
    const int count = argc > 1 ? std::max(1, std::atoi(argv[1])) : 5000;
    std::string pattern = (fs::temp_directory_path() / "velmora-ratings-bench-XXXXXX").string();
    if (mkdtemp(pattern.data()) == nullptr) return 1;
    const int status = Bench(pattern, count);
    std::error_code ec;
    fs::remove_all(pattern, ec);
    return status;
}

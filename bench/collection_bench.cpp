// The Collection's files at full size: 32,766 Tracks with full tags. Measures,
// in one run and against the same files:
//   - the load (pointer, main file, both side files) against `cat` of the
//     three files to /dev/null from the page cache;
//   - the incremental save after one played Track;
//   - the full save against `dd` writing the same number of bytes, synced as
//     the save syncs.
// Usage: collection_bench [folder]   (default: a temporary folder, removed after)
#include <sys/resource.h>
#include <unistd.h>

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <functional>
#include <string>
#include <vector>

#include "collection/collection_file.h"
#include "collection/collection_paths.h"
#include "support/test_app.h"

namespace {

using namespace velmora;
using velmora::testing::TestApp;
using Clock = std::chrono::steady_clock;
namespace fs = std::filesystem;

double Ms(Clock::duration d) { return std::chrono::duration<double, std::milli>(d).count(); }

// The best of n runs: the figure least disturbed by the rest of the machine.
double Best(int n, const std::function<void()>& run) {
    double best = 1e300;
    for (int i = 0; i < n; ++i) {
        const auto t0 = Clock::now();
        run();
        best = std::min(best, Ms(Clock::now() - t0));
    }
    return best;
}

double Cpu_Ms(int who) {
    struct rusage u {};
    getrusage(who, &u);
    return (u.ru_utime.tv_sec + u.ru_stime.tv_sec) * 1e3 + (u.ru_utime.tv_usec + u.ru_stime.tv_usec) / 1e3;
}

void Run(const std::string& command) {
    if (std::system(command.c_str()) != 0) std::fprintf(stderr, "failed: %s\n", command.c_str());
}

std::string Padded(const std::string& head, int i, size_t width) {
    std::string s = head + std::to_string(i);
    s.resize(std::max(s.size(), width), 'x');
    return s;
}

void Fill(TestApp& app) {
    AppContext& ctx = app.ctx;
    TrackTable& t = ctx.table;
    std::vector<std::string> paths, rows{"Αγαπημένα | Διάρκεια | Μέγεθος", ""};
    for (int i = 0; i < kMaxTracks; ++i)
        paths.push_back("/home/χρήστης/Μουσική/Καλλιτέχνης " + std::to_string(i % 700) + "/Δίσκος " +
                        std::to_string(i % 3000) + "/" + Padded("Κομμάτι ", i, 30) + ".mp3");
    t.Track_Count = kMaxTracks;
    t.Dimension(t.Track_Count);
    for (int i = 0; i < kMaxTracks; ++i) {
        t.Played_Number[i] = i < 1000 ? i + 1 : 0;
        t.Duration[i] = Currency(180 + i % 400);
        t.Rating_Class[i] = static_cast<int16_t>(i % 6);
        t.File_Size[i] = Currency::FromRaw(40000 + i);
        t.Bitrate[i] = 320;
        t.Artist[i] = Padded("Καλλιτέχνης ", i % 700, 28);
        t.Genre[i] = "Έντεχνο";
        t.Album[i] = Padded("Δίσκος ", i % 3000, 32);
        t.Title[i] = Padded("Τίτλος τραγουδιού ", i, 40);
        t.Year[i] = std::to_string(1950 + i % 70);
        t.Identified[i] = true;
        char number[8];
        std::snprintf(number, sizeof number, "%06d", i + 1);
        rows.push_back(std::string(number) + "|" + number + "|" + t.Title[i] + "|" + t.Artist[i] + "|" +
                       t.Album[i] + "|" + t.Genre[i] + "|" + t.Year[i]);
    }
    ctx.form1.List2.Assign(std::move(paths));
    ctx.form1.List5.Assign(std::move(rows));
    t.Played_Count = t.Played_High = 1000;
}

void Start(TestApp& app, const std::string& folder) {
    app.ctx.program_folder = folder;
    app.ctx.core.App_Path = folder;
    Load_Pointer(app.ctx);
}

}  // namespace

// Peak memory of a fresh process that does nothing but load the Collection.
int Load_Only(const std::string& folder) {
    TestApp reader;
    Start(reader, folder);
    Load_Collection(reader.ctx);
    struct rusage usage {};
    getrusage(RUSAGE_SELF, &usage);
    std::printf("load peak RSS  %8.1f MB   (target < 150)\n", usage.ru_maxrss / 1024.0);
    return reader.ctx.form1.List2.ListCount() == kMaxTracks ? 0 : 1;
}

int main(int argc, char** argv) {
    if (argc > 2 && std::string(argv[1]) == "--load-only") return Load_Only(std::string(argv[2]) + "/");
    std::unique_ptr<velmora::testing::TempFolder> temp;
    std::string folder;
    if (argc > 1) {
        folder = std::string(argv[1]) + "/";
        fs::create_directories(folder);
    } else {
        temp = std::make_unique<velmora::testing::TempFolder>();
        folder = temp->Str();
    }

    TestApp writer;
    Start(writer, folder);
    Fill(writer);
    Save_Collection(writer.ctx, false, true);  // the files exist before the first timing

    const CollectionPaths p = Collection_Paths_Of(writer.ctx, writer.ctx.collection.Collection_Path);
    const std::string files = "'" + p.main + "' '" + p.files + "' '" + p.filters + "'";
    const uintmax_t bytes = fs::file_size(p.main) + fs::file_size(p.files) + fs::file_size(p.filters);
    const uintmax_t megabytes = (bytes + (1 << 20) - 1) >> 20;
    std::printf("Collection: %d Tracks, %.1f MB in three files\n", kMaxTracks, bytes / 1048576.0);

    const double full = Best(3, [&] {
        writer.ctx.collection.Saves_This_Run = 0;  // no backups inside the figure
        Save_Collection(writer.ctx, false, true);
    });
    const std::string dd_target = folder + "dd.out";
    const double dd = Best(3, [&] {
        Run("dd if=/dev/zero of='" + dd_target + "' bs=1M count=" + std::to_string(megabytes) +
              " conv=fsync status=none");
    });
    fs::remove(dd_target);
    std::printf("full save      %8.1f ms   dd conv=fsync %8.1f ms   ratio %.2f (target <= 2)\n", full, dd,
                full / dd);

    // Alternated, so that both see the same state of the machine; the CPU
    // time beside the wall time, which a busy machine disturbs less.
    double cat = 1e300, load = 1e300, cat_cpu = 1e300, load_cpu = 1e300;
    for (int i = 0; i < 7; ++i) {
        const double children = Cpu_Ms(RUSAGE_CHILDREN);
        cat = std::min(cat, Best(1, [&] { Run("cat " + files + " > /dev/null"); }));
        cat_cpu = std::min(cat_cpu, Cpu_Ms(RUSAGE_CHILDREN) - children);
        TestApp reader;
        const double self = Cpu_Ms(RUSAGE_SELF);
        const auto t0 = Clock::now();
        Start(reader, folder);
        Load_Collection(reader.ctx);
        load = std::min(load, Ms(Clock::now() - t0));
        load_cpu = std::min(load_cpu, Cpu_Ms(RUSAGE_SELF) - self);
        if (reader.ctx.form1.List2.ListCount() != kMaxTracks) std::fprintf(stderr, "load incomplete\n");
    }
    std::printf("load CPU       %8.1f ms   cat CPU       %8.1f ms   ratio %.2f\n", load_cpu, cat_cpu,
                load_cpu / cat_cpu);
    std::printf("load           %8.1f ms   cat           %8.1f ms   ratio %.2f (target <= 2)\n", load, cat,
                load / cat);

    // One played Track: its row and the header. Most of it is waiting for
    // the disk to flush, which varies: the best and the median of 20.
    int row = 5000;
    std::vector<double> times;
    for (int i = 0; i < 20; ++i) {
        TrackTable& t = writer.ctx.table;
        t.Played_Number[row] = ++t.Played_Count;
        t.Played_High = t.Played_Count;
        t.Saved[row] = false;
        t.Current_Track = row++;
        writer.ctx.collection.Saves_This_Run = 0;  // the fifth save's backups are not this figure
        const auto t0 = Clock::now();
        Save_Collection(writer.ctx, false, false);
        times.push_back(Ms(Clock::now() - t0));
    }
    std::sort(times.begin(), times.end());
    const double incremental = times.front();
    const double incremental_median = times[times.size() / 2];
    std::printf("incremental    %8.2f ms   median %8.2f ms   (target < 5)\n", incremental, incremental_median);

    std::fflush(stdout);
    Run("'" + std::string(argv[0]) + "' --load-only '" + folder + "'");
    return 0;
}

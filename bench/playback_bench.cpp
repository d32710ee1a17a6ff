// Playing a full Collection: one clock tick, a shuffled walk that must find
// the one row left, and the refresh of the totals, each on 32,766 rows.
#include <benchmark/benchmark.h>

#include <filesystem>
#include <fstream>
#include <memory>

#include "app/startup.h"
#include "catalogue/track_list_totals.h"
#include "playback/next_track.h"
#include "playback/playback_clock.h"
#include "support/test_app.h"

namespace {

using namespace velmora;

// A started program over the doubles with a full Collection, every row
// played but the last, whose file alone exists on disk.
struct FullCollection {
    testing::TestApp app;
    std::string last_path;

    FullCollection() {
        Form_Load(app.ctx);
        app.ctx.playback.First_Play_Done = -1;
        TrackTable& t = app.ctx.table;
        Form1& f = app.ctx.form1;
        const int rows = kMaxTracks;
        std::filesystem::create_directories(app.folder.Path() / "media");
        t.Track_Count = rows;
        t.Dimension(rows);
        std::vector<std::string> paths, numbers;
        for (int i = 0; i < rows; ++i) {
            paths.push_back((app.folder.Path() / "media" / ("Κομμάτι " + std::to_string(i) + ".mp3")).string());
            numbers.push_back(Row_Number_Text(i));
            t.Duration[i] = Currency(200 + i % 300);
            t.Total_Duration += t.Duration[i];
            t.Rating_Class[i] = static_cast<int16_t>(i % 6);
            t.Played_Number[i] = i + 1;
        }
        last_path = paths.back();
        std::ofstream(last_path) << "x";
        app.player.SetDuration(last_path, 100000.0);
        f.List2.Assign(paths);
        for (auto& mirror : f.List3_0) mirror.Assign(numbers);
        t.Played_Number[rows - 1] = 0;
        t.Played_Count = rows - 1;
        t.Played_High = rows - 1;
        t.Current_Track = 0;
        app.ctx.settings.Random_Order = -1;
    }
};

void BM_ClockTickOnAFullCollection(benchmark::State& state) {
    FullCollection c;
    auto& app = c.app;
    // The last row plays; the clock is driven by hand so that each tick is timed alone.
    (void)Bres_Kommati(app.ctx);
    app.loop.Advance(2000);
    app.ctx.form1.Timer1.SetEnabled(false);
    for (auto _ : state) {
        state.PauseTiming();
        app.loop.Advance(1000);
        state.ResumeTiming();
        Timer1_Timer(app.ctx);
    }
    benchmark::DoNotOptimize(app.ctx.form1.Text5[1].Text());
}
BENCHMARK(BM_ClockTickOnAFullCollection)
    ->Unit(benchmark::kMillisecond)
    ->Iterations(500)
    ->Repetitions(5)
    ->ReportAggregatesOnly(true);

void BM_ShuffledWalkFindsTheLastUnplayedRow(benchmark::State& state) {
    FullCollection c;
    auto& app = c.app;
    TrackTable& t = app.ctx.table;
    const int last = kMaxTracks - 1;
    for (auto _ : state) {
        state.PauseTiming();
        t.Played_Number[last] = 0;
        t.Played_Count = last;
        t.Current_Track = 0;
        app.loop.RunPosted();
        state.ResumeTiming();
        const Status walk = Bres_Kommati(app.ctx);
        benchmark::DoNotOptimize(walk.ok());
    }
    if (t.Current_Track != last) state.SkipWithError("the walk did not find the last row");
}
BENCHMARK(BM_ShuffledWalkFindsTheLastUnplayedRow)
    ->Unit(benchmark::kMillisecond)
    ->Iterations(200)
    ->Repetitions(5)
    ->ReportAggregatesOnly(true);

void BM_TotalsOfAFullCollection(benchmark::State& state) {
    FullCollection c;
    // The refresh, and the count of the duration played that the clock's
    // next tick makes when the refresh left it waiting.
    for (auto _ : state) {
        Etiketes_Synol_Songs(c.app.ctx);
        Settle_Played_Duration(c.app.ctx);
    }
    benchmark::DoNotOptimize(c.app.ctx.form1.Label3[0].Caption());
    benchmark::DoNotOptimize(c.app.ctx.playback.Played_Duration);
}
BENCHMARK(BM_TotalsOfAFullCollection)->Unit(benchmark::kMillisecond)->Repetitions(5)->ReportAggregatesOnly(true);

// A Collection whose drive is gone: one press walks every row, each found
// missing, marked X and logged, the next step posted to the loop.
void BM_WalkPastAGoneDrive(benchmark::State& state) {
    const int rows = static_cast<int>(state.range(0));
    int marked = 0;
    for (auto _ : state) {
        state.PauseTiming();
        testing::TestApp app;
        Form_Load(app.ctx);
        TrackTable& t = app.ctx.table;
        Form1& f = app.ctx.form1;
        t.Track_Count = rows;
        t.Dimension(rows);
        std::vector<std::string> paths, numbers;
        for (int i = 0; i < rows; ++i) {
            paths.push_back("/media/gone/Κομμάτι " + std::to_string(i) + ".mp3");
            numbers.push_back(Row_Number_Text(i));
        }
        f.List2.Assign(paths);
        for (auto& mirror : f.List3_0) mirror.Assign(numbers);
        f.List3_0[1].Assign(std::vector<std::string>(static_cast<size_t>(rows), "-"));  // every row Unmarked
        t.Current_Track = 0;
        state.ResumeTiming();
        (void)Bres_Kommati(app.ctx);
        const std::string& log = f.Text2[0].Text();
        for (int step = 0; step < 4 * rows; ++step) {
            app.loop.Advance(50);
            if (step % 64 == 0 && log.find("Every file has been reproduced") != std::string::npos) break;
        }
        state.PauseTiming();
        marked = 0;
        for (int i = 0; i < rows; ++i) marked += t.Rating_Class[i] == 1;
        state.ResumeTiming();
    }
    state.counters["marked"] = marked;
}
BENCHMARK(BM_WalkPastAGoneDrive)->Unit(benchmark::kMillisecond)->Arg(2000)->Arg(32766)->Iterations(1);

}  // namespace

BENCHMARK_MAIN();

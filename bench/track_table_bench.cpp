// The track list under a full Collection: adding every path after a find,
// and taking out the first row.
#include <benchmark/benchmark.h>

#include "core/controls.h"
#include "core/track_table.h"

namespace {

std::vector<std::string> Paths() {
    std::vector<std::string> paths;
    paths.reserve(velmora::kMaxTracks);
    for (int i = 0; i < velmora::kMaxTracks; ++i)
        paths.push_back("/home/user/Μουσική/Artist " + std::to_string(i % 500) + "/Album/Track " +
                        std::to_string(i) + ".mp3");
    return paths;
}

// Intake asks for an exact find before every add, to refuse duplicates.
void BM_AddEachAfterExactFind(benchmark::State& state) {
    const auto paths = Paths();
    for (auto _ : state) {
        velmora::ListBox box("List2");
        for (const auto& p : paths) {
            if (box.FindExact(p) < 0) box.AddItem(p);
        }
        benchmark::DoNotOptimize(box.ListCount());
    }
}
BENCHMARK(BM_AddEachAfterExactFind)->Unit(benchmark::kMillisecond);

void BM_RemoveFirstRowOfFullTable(benchmark::State& state) {
    velmora::TrackTable t;
    t.Track_Count = velmora::kMaxTracks;
    t.Dimension(t.Track_Count);
    for (int r = 0; r < t.Track_Count; ++r) {
        t.Title[r] = "A title long enough to live on the heap " + std::to_string(r);
        t.Artist[r] = "Artist " + std::to_string(r);
        t.Slot_Text[r].Set(3, "slot");
    }
    int list_count = t.Track_Count;
    for (auto _ : state) {
        velmora::Compact_TrackTable(t, 0, list_count);
        state.PauseTiming();
        if (--list_count < 1000) {  // refill so every removal sees a near-full table
            list_count = t.Track_Count;
        }
        state.ResumeTiming();
    }
}
BENCHMARK(BM_RemoveFirstRowOfFullTable)->Unit(benchmark::kMillisecond)->Iterations(200);

}  // namespace

BENCHMARK_MAIN();

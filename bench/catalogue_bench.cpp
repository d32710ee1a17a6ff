// The catalogue on a full Collection of 32,766 Tracks with 5,000 artists,
// 2,000 albums and 300 genres: building the nine boxes, one query, the
// rebuild of every row, and one search of the list in view. A subscriber on
// the lists stands in for the view. With VELMORA_BENCH_WRITE set to a
// folder, the Collection is also saved there for the terminal's timing
// (bench/catalogue_cli_bench.sh).
#include <benchmark/benchmark.h>

#include <cstdlib>
#include <filesystem>

#include "app/startup.h"
#include "catalogue/catalogue_search.h"
#include "catalogue/filter_building.h"
#include "catalogue/filter_query.h"
#include "collection/collection_file.h"
#include "ratings/rating_calculation.h"
#include "support/test_app.h"

namespace {

using namespace velmora;

struct FullCatalogue {
    testing::TestApp app;
    Subscription view4, view5;
    int64_t notifications = 0;

    FullCatalogue() {
        AppContext& ctx = app.ctx;
        Form_Load(ctx);
        TrackTable& t = ctx.table;
        Form1& f = ctx.form1;
        const int rows = kMaxTracks;
        t.Track_Count = rows;
        t.Dimension(rows);
        std::vector<std::string> paths, numbers, letters, times, sizes, rates;
        for (int i = 0; i < rows; ++i) {
            const std::string artist = (i % 2 ? "Καλλιτέχνης " : "Artist ") + std::to_string(i % 5000);
            paths.push_back("/media/μουσική/" + artist + "/Κομμάτι " + std::to_string(i) + ".mp3");
            t.Duration[i] = Currency(120 + i % 400);
            t.File_Size[i] = Currency::FromRaw(35000 + 17 * i);
            t.Bitrate[i] = static_cast<int16_t>(128 + 32 * (i % 7));
            t.Rating_Class[i] = static_cast<int16_t>(i % 6);
            t.Artist[i] = artist;
            t.Album[i] = "Album " + std::to_string(i % 2000);
            t.Genre[i] = (i % 3 ? "Είδος " : "Genre ") + std::to_string(i % 300);
            t.Title[i] = "Τίτλος του κομματιού " + std::to_string(i);
            t.Year[i] = std::to_string(1950 + i % 70);
            numbers.push_back(Row_Number_Text(i));
            letters.push_back(Class_Letter(i % 6));
            times.push_back(Duration_Text(t.Duration[i]));
            sizes.push_back(Size_Text(t.File_Size[i]));
            rates.push_back(Bitrate_Text(t.Bitrate[i]));
        }
        f.List2.Assign(paths);
        f.List3_0[0].Assign(numbers);
        f.List3_0[1].Assign(letters);
        f.List3_0[2].Assign(times);
        f.List3_0[3].Assign(sizes);
        f.List3_0[4].Assign(rates);
        Calculate_Ratings(ctx);
        Remake_Filters(ctx);
        view4 = f.List4.Changed.connect([this](Change) { ++notifications; });
        view5 = f.List5.Changed.connect([this](Change) { ++notifications; });
        if (const char* folder = std::getenv("VELMORA_BENCH_WRITE")) {
            std::filesystem::create_directories(std::string(folder) + "/velmora_sylloges");
            ctx.core.App_Path = std::string(folder) + "/";
            ctx.collection.Collection_Path = std::string(folder) + "/velmora_sylloges/catalogue.qel";
            Save_Collection(ctx, false, true);
        }
    }
};

FullCatalogue& Catalogue() {
    static FullCatalogue c;
    return c;
}

void BM_AddFiltersOnAFullCollection(benchmark::State& state) {
    AppContext& ctx = Catalogue().app.ctx;
    for (auto _ : state) Add_Filters(ctx);
    state.counters["artists"] = ctx.form1.Combo4_0[6].ListCount();
    state.counters["genres"] = ctx.form1.Combo4_0[4].ListCount();
}

void BM_QueryOneArtist(benchmark::State& state) {
    FullCatalogue& c = Catalogue();
    AppContext& ctx = c.app.ctx;
    Reboot_Filters(ctx);
    ctx.form1.Combo4_0[6].SetText("Artist 1234");
    for (auto _ : state) Apply_Filters(ctx);
    state.counters["rows"] = ctx.form1.List4.ListCount() - 2;
}

void BM_RebuildEveryRow(benchmark::State& state) {
    AppContext& ctx = Catalogue().app.ctx;
    for (auto _ : state) Filtered_Songs_List(ctx, -1);
    state.counters["rows"] = ctx.form1.List5.ListCount() - 2;
}

void BM_SearchTheListInView(benchmark::State& state) {
    AppContext& ctx = Catalogue().app.ctx;
    Reboot_Filters(ctx);
    Filtered_Songs_List(ctx, 0);
    ctx.form1.Text2[4].SetText(state.range(0) ? "Κομμάτι 3276" : "Track 3276");
    for (auto _ : state) Command17_Click(ctx);
    state.counters["found"] = ctx.form1.List5.SelCount();
}

BENCHMARK(BM_AddFiltersOnAFullCollection)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_QueryOneArtist)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_RebuildEveryRow)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_SearchTheListInView)->Arg(0)->Arg(1)->Unit(benchmark::kMillisecond);

}  // namespace

BENCHMARK_MAIN();

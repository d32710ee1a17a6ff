// The rating work on a full Collection of 32,766 rows: the recount from the
// letters, and one press of the rating button with the labels redrawn. A
// subscriber on every control the window draws stands in for the view; its
// count of notifications is reported beside the time.
#include <benchmark/benchmark.h>

#include <memory>
#include <vector>

#include "app/startup.h"
#include "ratings/rating_marks.h"
#include "ratings/reset_views.h"
#include "support/test_app.h"

namespace {

using namespace velmora;

struct FullCollection {
    testing::TestApp app;
    std::vector<Subscription> view;
    int64_t notifications = 0;

    FullCollection() {
        AppContext& ctx = app.ctx;
        Form_Load(ctx);
        TrackTable& t = ctx.table;
        Form1& f = ctx.form1;
        const int rows = kMaxTracks;
        t.Track_Count = rows;
        t.Dimension(rows);
        std::vector<std::string> paths, numbers, letters;
        for (int i = 0; i < rows; ++i) {
            paths.push_back("/media/Κομμάτι " + std::to_string(i) + ".mp3");
            numbers.push_back(Row_Number_Text(i));
            letters.push_back(Class_Letter(i % 6));
            t.Duration[i] = Currency(200 + i % 300);
            t.File_Size[i] = Currency::FromRaw(35000 + 17 * i);
        }
        f.List2.Assign(paths);
        for (int b = 0; b < 5; ++b) f.List3_0[b].Assign(b == 1 ? letters : numbers);
        Calculate_Ratings(ctx);
        Attach_View();
    }

    void Watch(Control& c) {
        view.push_back(c.Changed.connect([this](Change) { ++notifications; }));
    }

    void Attach_View() {
        AppContext& ctx = app.ctx;
        Form1& f = ctx.form1;
        Form4& g = ctx.form4;
        for (Control* c : std::initializer_list<Control*>{&f, &f.List2, &f.Command8, &f.Picture2, &f.Text6, &f.Label6,
                                                          &g, &g.Command8, &g.Command6, &g.Label6})
            Watch(*c);
        for (auto* boxes : {&f.List3_0}) for (auto& c : *boxes) Watch(c);
        for (auto& c : f.Text2) Watch(c);
        for (auto& c : f.Shape1) Watch(c);
        for (auto& c : f.Label11) Watch(c);
        for (auto& c : f.Label2) Watch(c);
        for (auto& c : f.Label9) Watch(c);
        for (auto& c : f.Label10) Watch(c);
        for (auto& c : f.Label21) Watch(c);
        for (auto& c : g.Label21) Watch(c);
        for (auto& c : g.Label7) Watch(c);
        for (auto& m : f.Menus.All()) Watch(*m);
        for (auto& m : f.Tray.All()) Watch(*m);
    }
};

void BM_CalculateRatingsOnAFullCollection(benchmark::State& state) {
    FullCollection c;
    c.notifications = 0;
    for (auto _ : state) Calculate_Ratings(c.app.ctx);
    state.counters["notifications"] =
        benchmark::Counter(static_cast<double>(c.notifications), benchmark::Counter::kAvgIterations);
}
BENCHMARK(BM_CalculateRatingsOnAFullCollection)
    ->Unit(benchmark::kMillisecond)
    ->Iterations(20)
    ->Repetitions(3)
    ->ReportAggregatesOnly(true);

void BM_OneRatingPressOnAFullCollection(benchmark::State& state) {
    FullCollection c;
    AppContext& ctx = c.app.ctx;
    ctx.table.Current_Track = kMaxTracks / 2;
    c.notifications = 0;
    for (auto _ : state) Command8_Click(ctx);
    state.counters["notifications"] =
        benchmark::Counter(static_cast<double>(c.notifications), benchmark::Counter::kAvgIterations);
}
BENCHMARK(BM_OneRatingPressOnAFullCollection)
    ->Unit(benchmark::kMillisecond)
    ->Iterations(300)
    ->Repetitions(3)
    ->ReportAggregatesOnly(true);

}  // namespace

BENCHMARK_MAIN();

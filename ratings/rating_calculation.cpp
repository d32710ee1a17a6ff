#include "ratings/rating_calculation.h"

#include <algorithm>

#include "base/text_format.h"
#include "core/app_context.h"
#include "core/progress.h"

namespace velmora {

namespace {

const char* const kDisabling = "-> Πρόσκαιρη απενεργοποίηση ... -  Disabling for a while...";
const char* const kCalculating = "Υπολογισμός Προτιμήσεων... - Calculating Ratings...";

// Rows between two progress redraws: a text box update costs more than the
// recount of a row.
constexpr int kProgressEvery = 40;
constexpr int kProgressTail = 50;
constexpr int64_t kLogRefreshMs = 50;

// The number of a class letter; -1 for a text that is none of them.
int Letter_Class(const std::string& letter) {
    if (letter.size() != 1) return -1;
    switch (letter[0]) {
        case '-': return 0;
        case 'X': return 1;
        case 'C': return 2;
        case 'B': return 3;
        case 'A': return 4;
        case 'S': return 5;
        default: return -1;
    }
}

// Megabytes above 1024 print as gigabytes.
std::string Size_With_Unit(Currency megabytes) {
    if (megabytes > Currency(1024)) return Format(megabytes / Currency(1024), "00.00") + " Gb";
    return Format(megabytes, "00.00") + " Mb";
}

void Set_Window_Enabled(AppContext& ctx, bool on) {
    Form1& f = ctx.form1;
    f.SetEnabled(on);
    f.Tray("MnuSystemTray").SetEnabled(on);
}

}  // namespace

std::string Class_Stats_Line(Currency count, Currency megabytes, float of_count) {
    const float share = static_cast<float>(count.ToDouble()) / of_count * 100.0f;
    return " [" + Format(count, "00000") + "]" + " - [" + Size_With_Unit(megabytes) + "]" + " - [" +
           Format(static_cast<double>(share), "00.0") + "%]";
}

void Calculate_Ratings(AppContext& ctx) {
    Form1& f = ctx.form1;
    TrackTable& t = ctx.table;
    EventLoop& loop = ctx.ports.loop;

    // Every total from nothing.
    t.Class_Count.fill(Currency());
    t.Class_Size.fill(Currency());
    t.Class_Duration.fill(Currency());
    t.Total_Duration = Currency();
    t.Total_Size = Currency();

    // Nothing may re-enter while the rows are recounted.
    Set_Window_Enabled(ctx, false);
    for (auto& box : f.List3_0) box.SetEnabled(false);
    TextBox& log = f.Text2[0];
    const std::string head = TimeText(loop.Now()) + kDisabling + "\n" + kCalculating;
    const std::string before = log.Text();
    log.SetText(head + "\n" + before);

    // The class of each row read from its letter, and the totals summed.
    const ListBox& letters = f.List3_0[1];
    const int total = f.List2.ListCount();
    const int rows = std::min(total, t.Bound() + 1);
    int rating = 0;  // a letter that is none of the six keeps the row before's
    int64_t shown_at = loop.TickCount();
    for (int i = 0, n = 0; i < rows; ++i) {
        t.Total_Size += t.File_Size[i];
        t.Total_Duration += t.Duration[i];
        if (i < letters.ListCount()) {
            const int k = Letter_Class(letters.List(i));
            if (k >= 0) rating = k;
        }
        t.Rating_Class[i] = static_cast<int16_t>(rating);
        t.Class_Count[rating] += Currency(1);
        t.Class_Size[rating] += t.File_Size[i];
        t.Class_Duration[rating] += t.Duration[i];

        ++n;
        if (n % kProgressEvery == 0 || n > total - kProgressTail) {
            Show_Progress(f, n, total, 1);
            // Each count rewrites the whole log: a few a second are all an
            // eye can follow, and a recount runs once per missing file.
            const int64_t tick = loop.TickCount();
            if (n == rows || tick - shown_at >= kLogRefreshMs) {
                shown_at = tick;
                log.SetText(head + "\n" + Str(int64_t{i} + 1) + " - " + Str(int64_t{t.Track_Count}) + "\n" + before);
            }
        }
        loop.DoEvents();
        if (ctx.core.Esc_Key == 27) {
            ctx.core.Esc_Key = 0;
            log.SetText("Ακυρώθηκε - Canceled\n" + log.Text());
            break;
        }
    }

    // The totals of the classes chosen for playing, and the window back.
    Class_Play_Totals(ctx);
    f.List3_0[1].SetEnabled(true);
    Set_Window_Enabled(ctx, true);
    log.SetText(TimeText(loop.Now()) + "-> Έτοιμο - Done\n" + log.Text());
    for (auto& box : f.List3_0) box.SetEnabled(true);
}

void Class_Stats_Texts(AppContext& ctx) {
    RatingsState& r = ctx.ratings;
    const TrackTable& t = ctx.table;
    if (!r.Stats_Dirty) return;
    float count = static_cast<float>(ctx.form1.List2.ListCount());
    if (count <= 0) count = 0.1f;  // an empty list divides by a tenth, never by zero
    r.Total_Stats_Text = " [" + Format(static_cast<double>(count), "00000") + "]" + " - [" +
                         Size_With_Unit(t.Total_Size) + "]" + " - [100%]";
    for (int k = 0; k < kClassCount; ++k)
        r.Class_Stats_Text[k] = Class_Stats_Line(t.Class_Count[k], t.Class_Size[k], count);
}

void Class_Duration_Texts(AppContext& ctx) {
    RatingsState& r = ctx.ratings;
    if (!r.Stats_Dirty) return;
    for (int k = 0; k < kClassCount; ++k)
        r.Class_Duration_Text[k] = " - [" + Day_Time_Text(ctx.table.Class_Duration[k].Round()) + "]";
}

void Class_Play_Totals(AppContext& ctx) {
    TrackTable& t = ctx.table;
    RatingsState& r = ctx.ratings;
    r.Class_Total_Duration = Currency();
    if (ctx.form1.List2.ListCount() == 0) return;
    const bool any = std::any_of(t.Class_Play.begin(), t.Class_Play.end(), [](int16_t on) { return on != 0; });
    if (!any) {
        t.Any_Class_Play = 0;
        ctx.playback.Class_Time_Left = Currency();
        ctx.playback.Played_Class_Duration = Currency();
        r.Class_Played_Count = 0;
        return;
    }
    t.Any_Class_Play = -1;
    // The count is a sum of the chosen classes, so it starts again with the duration.
    r.Class_Total_Count = 0;
    // From class 1: the Unmarked class stays out of the totals even while its
    // flag is set.
    for (int k = 1; k < kClassCount; ++k) {
        if (t.Class_Play[k] == 0) continue;
        r.Class_Total_Duration += t.Class_Duration[k];
        r.Class_Total_Count += static_cast<int32_t>(t.Class_Count[k].Round());
    }
}

}  // namespace velmora

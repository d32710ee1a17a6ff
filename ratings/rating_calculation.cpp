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

}  // namespace

int Class_Of_Letter(std::string_view letter) {
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

namespace {

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

namespace {

// The rows as the last whole count saw them, for Recount_Is_Current.
RatingsState::Counted Rows_Now(const AppContext& ctx) {
    const Form1& f = ctx.form1;
    RatingsState::Counted c;
    c.valid = true;
    c.paths = f.List2.Revision();
    c.letters = f.List3_0[1].Revision();
    c.track_count = ctx.table.Track_Count;
    return c;
}

bool Same_Rows(const RatingsState::Counted& a, const RatingsState::Counted& b) {
    return a.valid && b.valid && a.paths == b.paths && a.letters == b.letters && a.track_count == b.track_count;
}

// What a recount shows while it runs and when it ends: the window disabled,
// a head line in the log with the rows counted under it, the bar, then
// "Done" and the window back.
class Recount_View {
public:
    // A count of one row shows its last line at once: the head alone would
    // be overwritten before anything could draw it, and each rewrite of the
    // log copies all of it.
    enum class Rows { All, One };

    Recount_View(AppContext& ctx, Rows rows)
        : m_ctx(ctx), m_log(ctx.form1.Text2[0]), m_loop(ctx.ports.loop), m_total(ctx.form1.List2.ListCount()) {
        Form1& f = ctx.form1;
        // Nothing may re-enter while the rows are recounted.
        Set_Window_Enabled(ctx, false);
        for (auto& box : f.List3_0) box.SetEnabled(false);
        m_head = TimeText(m_loop.Now()) + kDisabling + "\n" + kCalculating;
        if (rows == Rows::One) return;
        m_before = m_log.Text();
        m_log.SetText(m_head + "\n" + m_before);
        m_shown_at = m_loop.TickCount();
    }

    // The line of the last row over the log as it stands.
    void Counted_At_Once() {
        Show_Progress(m_ctx.form1, m_total, m_total, 1);
        m_log.Prepend(m_head + "\n" + Str(int64_t{m_total}) + " - " + Str(int64_t{m_ctx.table.Track_Count}) + "\n");
    }

    int Total() const { return m_total; }

    // After row `n` (1-based) of `rows`.
    void Counted(int n, int rows) {
        if (n % kProgressEvery != 0 && n <= m_total - kProgressTail) return;
        Show_Progress(m_ctx.form1, n, m_total, 1);
        // Each count rewrites the whole log: a few a second are all an eye
        // can follow.
        const int64_t tick = m_loop.TickCount();
        if (n == rows || tick - m_shown_at >= kLogRefreshMs) {
            m_shown_at = tick;
            m_log.SetText(m_head + "\n" + Str(int64_t{n}) + " - " + Str(int64_t{m_ctx.table.Track_Count}) + "\n" +
                          m_before);
        }
    }

    // Gives way to events; true when Esc asked to stop.
    bool Canceled() {
        m_loop.DoEvents();
        if (m_ctx.core.Esc_Key != 27) return false;
        m_ctx.core.Esc_Key = 0;
        m_log.Prepend("Ακυρώθηκε - Canceled\n");
        return true;
    }

    void Finish() {
        Form1& f = m_ctx.form1;
        Class_Play_Totals(m_ctx);
        f.List3_0[1].SetEnabled(true);
        Set_Window_Enabled(m_ctx, true);
        m_log.Prepend(TimeText(m_loop.Now()) + "-> Έτοιμο - Done\n");
        for (auto& box : f.List3_0) box.SetEnabled(true);
    }

private:
    AppContext& m_ctx;
    TextBox& m_log;
    EventLoop& m_loop;
    const int m_total;
    std::string m_head, m_before;
    int64_t m_shown_at = 0;
};

}  // namespace

void Calculate_Ratings(AppContext& ctx) {
    Form1& f = ctx.form1;
    TrackTable& t = ctx.table;

    t.Class_Count.fill(Currency());
    t.Class_Size.fill(Currency());
    t.Class_Duration.fill(Currency());
    t.Total_Duration = Currency();
    t.Total_Size = Currency();
    ctx.ratings.Last_Count.valid = false;

    Recount_View view(ctx, Recount_View::Rows::All);
    const ListBox& letters = f.List3_0[1];
    const int total = view.Total();
    const int rows = std::min(total, t.Bound() + 1);
    int rating = 0;  // a letter that is none of the six keeps the row before's
    bool every_letter_a_class = rows == total && letters.ListCount() >= rows;
    bool canceled = false;
    for (int i = 0; i < rows; ++i) {
        t.Total_Size += t.File_Size[i];
        t.Total_Duration += t.Duration[i];
        const int k = i < letters.ListCount() ? Class_Of_Letter(letters.List(i)) : -1;
        if (k >= 0) rating = k;
        else every_letter_a_class = false;
        t.Rating_Class[i] = static_cast<int16_t>(rating);
        t.Class_Count[rating] += Currency(1);
        t.Class_Size[rating] += t.File_Size[i];
        t.Class_Duration[rating] += t.Duration[i];

        view.Counted(i + 1, rows);
        if (view.Canceled()) {
            canceled = true;
            break;
        }
    }
    view.Finish();
    if (!canceled && every_letter_a_class) ctx.ratings.Last_Count = Rows_Now(ctx);
}

bool Recount_Is_Current(const AppContext& ctx) { return Same_Rows(ctx.ratings.Last_Count, Rows_Now(ctx)); }

void Recount_Moved_Row(AppContext& ctx, int row, int old_class, Currency old_size) {
    TrackTable& t = ctx.table;
    const int new_class = t.Rating_Class[row];
    t.Class_Count[old_class] -= Currency(1);
    t.Class_Count[new_class] += Currency(1);
    t.Class_Size[old_class] -= old_size;
    t.Class_Size[new_class] += t.File_Size[row];
    t.Class_Duration[old_class] -= t.Duration[row];
    t.Class_Duration[new_class] += t.Duration[row];
    t.Total_Size += t.File_Size[row] - old_size;

    // The same lines, bar and window states a whole recount leaves, from the
    // last row's count.
    Recount_View view(ctx, Recount_View::Rows::One);
    view.Counted_At_Once();
    const bool canceled = view.Canceled();
    view.Finish();
    ctx.ratings.Last_Count = Rows_Now(ctx);
    ctx.ratings.Last_Count.valid = !canceled;
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

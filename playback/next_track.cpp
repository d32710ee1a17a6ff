#include "playback/next_track.h"

#include <limits>
#include <vector>

#include "base/text_format.h"
#include "catalogue/track_list_totals.h"
#include "core/app_context.h"
#include "core/port_faults.h"
#include "core/running_report.h"
#include "core/suppress_events.h"
#include "playback/start_track.h"
#include "playback/track_watch.h"
#include "playback/transport.h"
#include "ratings/rating_marks.h"

namespace velmora {

namespace {

Error Overflow(const char* where) { return Error{std::string("Υπερχείλιση - Overflow in ") + where}; }
Error Out_Of_Range(const char* where) {
    return Error{std::string("Εκτός ορίων πίνακα - Subscript out of range in ") + where};
}

// Sums that must not wrap: a fault of the procedure instead.
bool Add(int32_t a, int32_t b, int32_t& out) { return !__builtin_add_overflow(a, b, &out); }

bool In_Table(const TrackTable& t, int64_t row) { return row >= 0 && row <= t.Bound(); }

// The repair the steppers make when rows were removed under Current_Track.
void Repair_Current(AppContext& ctx) {
    TrackTable& t = ctx.table;
    ListBox& list = ctx.form1.List2;
    if (t.Current_Track > list.ListCount() - 1 || t.Current_Track < 0) {
        list.SetListIndex(0);
        t.Current_Track = list.ListIndex();
    }
}

// The end of a cycle: everything is unplayed again, and playing starts over
// or stops by Replay_Mode.
Status End_Of_Cycle(AppContext& ctx) {
    TrackTable& t = ctx.table;
    ListBox& list = ctx.form1.List2;
    Log_Line(ctx, "-> Αναπαράχθηκαν όλα τα αρχεία - Every file has been reproduced");

    int32_t next = 0;
    if (!Add(t.Current_Track, 1, next)) return Overflow("Bres_Kommati");
    t.Current_Track = next > list.ListCount() - 1 ? 0 : next;

    std::fill(t.Played_Number.begin(), t.Played_Number.end(), 0);
    std::fill(t.Saved.begin(), t.Saved.end(), false);

    {
        SuppressEvents quiet(ctx.core);
        Clear_Selection(ctx);
        list.SetListIndex(t.Current_Track);
    }

    t.Played_Count = 0;
    t.Played_High = 0;
    ctx.playback.Played_Duration = Currency();
    ctx.playback.Played_Duration_Pending = false;
    ctx.playback.Played_Class_Duration = Currency();

    // Only Replay_Mode 2 gets here with a non-zero mode: 1 never searches.
    // A new cycle that ends again before anything of it plays (no row of the
    // chosen classes, every file gone) stops instead of starting over and
    // over until the stack runs out.
    const bool restart = ctx.settings.Replay_Mode != 0 && !ctx.playback.Cycle_Restarting;
    if (restart) {
        ctx.playback.Cycle_Restarting = true;
        Command3_Click(ctx, 0);
        ctx.playback.Cycle_Restarting = false;
    }
    if (!restart) {
        // The video window counts only while it always shows.
        MediaEngine* engine = nullptr;
        if (t.Video_Mode == 0) engine = Audio_Engine(ctx);
        else if (t.Video_Mode == -1) engine = &ctx.ports.video;
        if (engine != nullptr) {
            Log_Failure(ctx, *engine, "stop", engine->stop());
            Log_Failure(ctx, *engine, "close", engine->close());
        }
    }
    return {};
}

}  // namespace

bool Acceptable_Row(const TrackTable& t, int row) {
    if (t.Played_Number[row] != 0) return false;
    // The order of the two clauses is the point: while Class_Play(0) is 0
    // every unplayed row passes, whatever the other flags say.
    if (t.Class_Play[0] == 0) return true;
    const int k = t.Rating_Class[row];
    return k >= 0 && k < kClassCount && t.Class_Play[k] == -1;
}

double Next_Random(AppContext& ctx) {
    // 32 bits of the generator over 2^32: uniform in [0, 1), and the same
    // sequence on every platform, which a library distribution does not promise.
    return static_cast<double>(ctx.playback.Generator()) / 4294967296.0;
}

void Report_Fault(AppContext& ctx, const Status& status) {
    if (!status.ok()) Log_Line(ctx, "-> " + status.error());
}

Status Bres_Kommati(AppContext& ctx) {
    TrackTable& t = ctx.table;
    PlaybackState& p = ctx.playback;
    ListBox& list = ctx.form1.List2;
    int found = 0;
    Forget_Watch(ctx);  // the clock watches the Track it starts next

    if (t.Resume_Pending != 0) {
        // A loaded Collection goes on at its Track and position.
        t.Resume_Pending = 0;
        if (list.ListCount() == 0) return {};
        if (t.Current_Track < 0) t.Current_Track = 0;
        if (t.Played_High <= 0) t.Played_High = t.Played_Count;
        Show_Current_Media(ctx);
    } else {
        t.Current_Position = 0;  // any other move starts the Track from its beginning
        if (ctx.settings.Replay_Mode == 1 || p.Jump_To_Selected != 0) {
            // The same Track again, or the one asked for; no number changes.
            if (p.Jump_To_Selected == -1) {
                t.Current_Track = list.ListIndex();
                p.Jump_To_Selected = 0;
            }
            Show_Current_Media(ctx);
        } else {
            // Is anything left? The row found is not used.
            const int count = list.ListCount();
            if (count - 1 > t.Bound()) return Out_Of_Range("Bres_Kommati");
            found = -1;
            if (t.Class_Play[0] == 0) {
                // Every unplayed row is acceptable: the first 0 in the column.
                found = Row_Numbered(t, count, 0);
            } else {
                for (int i = 0; i < count; ++i) {
                    if (Acceptable_Row(t, i)) {
                        found = i;
                        break;
                    }
                }
            }
            if (found != -1) {
                // The walk.
                if (!In_Table(t, t.Current_Track)) return Out_Of_Range("Bres_Kommati");
                p.Walk_Mark = t.Played_Number[t.Current_Track];
                const int32_t n = count - 1;
                for (;;) {
                    if (ctx.settings.Random_Order == -1) {
                        // Rounded, not spread: the first and the last row are
                        // half as likely as the others. No retry limit: the
                        // search above has shown that an acceptable row exists.
                        t.Current_Track = static_cast<int32_t>(RoundHalfEven(Next_Random(ctx) * n));
                    } else if (p.Walk_Mark != 0) {
                        int32_t next = 0;
                        if (!Add(t.Current_Track, 1, next)) return Overflow("Bres_Kommati");
                        t.Current_Track = next > n ? 0 : next;
                    }
                    if (!In_Table(t, t.Current_Track)) return Out_Of_Range("Bres_Kommati");
                    if (t.Played_Number[t.Current_Track] != 0) continue;
                    if (!Acceptable_Row(t, t.Current_Track)) {
                        p.Walk_Mark = -1;
                        continue;
                    }
                    int32_t number = 0;
                    if (!Add(t.Played_Count, 1, number)) return Overflow("Bres_Kommati");
                    t.Played_Count = number > count ? 1 : number;
                    t.Played_Number[t.Current_Track] = t.Played_Count;
                    t.Saved[t.Current_Track] = false;  // the incremental save stores the row
                    if (t.Current_Track > -1 && t.Current_Track < count) Show_Current_Media(ctx);
                    break;
                }
            }
        }
    }

    // The top of the history never stands below the count.
    if (t.Played_High < t.Played_Count) t.Played_High = t.Played_Count;

    // The search found no unplayed row of the chosen classes: the cycle ends.
    if (t.Track_Count > -1 && list.ListCount() > 0 && found == -1) return End_Of_Cycle(ctx);

    // The Track found: its class shown or given, then started.
    t.Collection_Saved = 0;
    if (ctx.settings.Auto_Rating == 0) {
        ctx.ratings.Stats_Dirty = true;
        if (In_Table(t, t.Current_Track)) DeikseAgapi(ctx, t.Rating_Class[t.Current_Track], t.Current_Track);
    } else {
        Command8_Click(ctx);
    }
    Decide_Video(ctx);
    Etiketes_Synol_Songs(ctx);
    return {};
}

Status Step_Forward(AppContext& ctx) {
    TrackTable& t = ctx.table;
    PlaybackState& p = ctx.playback;
    ListBox& list = ctx.form1.List2;
    if (list.ListCount() == 0) return {};
    Repair_Current(ctx);
    SuppressEvents quiet(ctx.core);

    if (p.Jump_To_Selected != -1 && ctx.settings.Random_Order == -1) {
        // In shuffled order forward retraces the history first; only past its
        // top does the walk draw new rows.
        if (!In_Table(t, t.Current_Track)) return Out_Of_Range("Step_Forward");
        int32_t wanted = 0;
        if (!Add(t.Played_Number[t.Current_Track], ctx.settings.Backtrack_Steps, wanted))
            return Overflow("Step_Forward");
        const int count = std::min(list.ListCount(), t.Bound() + 1);
        const int row = Row_Numbered(t, count, wanted);
        if (row < 0) {
            p.Jump_To_Selected = 0;
        } else {
            if (t.Resume_Pending == 0 && ctx.settings.Replay_Mode == 0) {
                int32_t number = 0;
                if (!Add(t.Played_Count, ctx.settings.Backtrack_Steps, number)) return Overflow("Step_Forward");
                p.Jump_To_Selected = -1;
                t.Played_Count = number;
            }
            list.SetListIndex(row);
        }
    }

    quiet.Restore();
    p.Step_Direction = 1;
    return Bres_Kommati(ctx);
}

Status Step_Backward(AppContext& ctx) {
    TrackTable& t = ctx.table;
    ListBox& list = ctx.form1.List2;
    if (list.ListCount() == 0) return {};
    Repair_Current(ctx);
    SuppressEvents quiet(ctx.core);
    ctx.playback.Jump_To_Selected = -1;

    if (!In_Table(t, t.Current_Track)) return Out_Of_Range("Step_Backward");
    const int steps = ctx.settings.Backtrack_Steps;
    const int32_t played = t.Played_Number[t.Current_Track];
    // Rows of the numbers 1, 2 ... steps below the current one; a number
    // with no row leaves its entry at row 0.
    std::vector<int32_t> back(static_cast<size_t>(std::max(steps, 0)) + 1, 0);
    back[0] = t.Current_Track;
    const int count = std::min(list.ListCount(), t.Bound() + 1);
    for (int s = 1; s <= steps; ++s) {
        int32_t wanted = 0;
        if (__builtin_sub_overflow(played, s, &wanted)) return Overflow("Step_Backward");
        if (wanted < 1) continue;
        if (const int row = Row_Numbered(t, count, wanted); row >= 0) back[s] = row;
    }

    list.SetSelected(t.Current_Track, false);
    int32_t target = 0;
    for (int s = 1; s <= steps; ++s) {
        target = back[s];
        if (target >= 0 && t.Played_Count > 1) {
            --t.Played_Count;
            list.SetSelected(target, false);
            for (auto& mirror : ctx.form1.List3_0) mirror.SetSelected(target, false);
        }
    }
    // The step lands on the last entry, also when the history was shorter:
    // back past the first Track is row 0.
    list.SetListIndex(-1);
    list.SetListIndex(target);
    list.SetSelected(target, true);

    quiet.Restore();
    return Bres_Kommati(ctx);
}

Status Repeat_Step(AppContext& ctx) {
    switch (ctx.playback.Step_Direction) {
        case -2: return Step_Backward(ctx);
        case -1: Command3_Click(ctx, 1); return {};
        case 0: Command3_Click(ctx, 0); return {};
        case 1: return Step_Forward(ctx);
        default: return {};
    }
}

void Show_Current_Media(AppContext& ctx) {
    TrackTable& t = ctx.table;
    Form1& f = ctx.form1;
    const int row = t.Current_Track;
    ctx.playback.Current_File = f.List2.List(row);
    const std::string number = Format(int64_t{row} + 1, "00000");
    f.Command10[1].SetCaption("Τρέχων Κομμάτι - Current Media [" + number + "]");
    std::string counter = "[";
    counter += number;
    counter += "] - [";
    counter += Format(f.List2.ListCount(), "00000");
    counter += "]";
    ctx.form4.Text1.SetText(std::move(counter));
    // The list's own handlers stay out while the walk moves its index.
    SuppressEvents quiet(ctx.core);
    f.List2.SetListIndex(row);
    f.List2.SetSelected(row, true);
    // Played rows stay selected: the selection is the picture of what has played.
    for (auto& mirror : f.List3_0) {
        mirror.SetSelected(row, true);
        mirror.SetListIndex(row);
    }
}

void Clear_Selection(AppContext& ctx) {
    Form1& f = ctx.form1;
    const int count = f.List2.ListCount();
    for (int row = 0; row < count; ++row) {
        f.List2.SetSelected(row, false);
        for (auto& mirror : f.List3_0) mirror.SetSelected(row, false);
    }
}

}  // namespace velmora

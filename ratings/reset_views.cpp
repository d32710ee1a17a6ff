#include "ratings/reset_views.h"

#include "catalogue/track_list_totals.h"
#include "core/app_context.h"
#include "core/port_faults.h"
#include "core/suppress_events.h"
#include "ratings/rating_marks.h"

namespace velmora {

namespace {

template <class Col>
void Dimension_Anew(Col& col, int32_t track_count) {
    col.assign(static_cast<size_t>(std::max<int32_t>(track_count, 0)) + 1, typename Col::value_type{});
}

void Clear_List_Controls(AppContext& ctx) {
    Form1& f = ctx.form1;
    f.List2.Clear();
    for (auto& box : f.List3_0) box.Clear();
    for (auto& box : f.Text1) box.SetText("");
    f.Combo1.SetListIndex(-1);
    f.Picture1.SetPicture("");
}

void Clear_Property_Columns(AppContext& ctx) {
    TrackTable& t = ctx.table;
    PlaybackState& p = ctx.playback;
    for (MediaEngine* engine : {&ctx.ports.player, &ctx.ports.reader, &ctx.ports.video})
        Log_Failure(ctx, *engine, "stop", engine->stop());
    const int32_t n = t.Track_Count;
    Dimension_Anew(t.Duration, n);
    Dimension_Anew(t.File_Size, n);
    Dimension_Anew(t.Bitrate, n);
    Dimension_Anew(t.Artist, n);
    Dimension_Anew(t.Genre, n);
    Dimension_Anew(t.Album, n);
    Dimension_Anew(t.Title, n);
    Dimension_Anew(t.Year, n);
    Dimension_Anew(t.Slot_Value, n);
    Dimension_Anew(t.Slot_Text, n);
    Dimension_Anew(t.Identified, n);
    p.Time_Left = Currency();
    t.Total_Size = Currency();
    p.Current_File.clear();
    p.Sum_Text = "00:00:00:00";
    ctx.form1.Text5[0].SetText("00:00:00");
    ctx.form4.Text5[0].SetText("00:00:00");
    p.Played_Now = Currency();
    p.Played_Class_Now = Currency();
    p.Class_Time_Left = Currency();
    ctx.form1.Text6.SetText("");
}

void Clear_Play_Columns(AppContext& ctx) {
    TrackTable& t = ctx.table;
    PlaybackState& p = ctx.playback;
    const int32_t n = t.Track_Count;
    Dimension_Anew(t.Played_Number, n);
    Dimension_Anew(t.Stop_Position, n);
    Dimension_Anew(t.Rating_Class, n);
    Dimension_Anew(t.Saved, n);
    p.Played_Duration = Currency();
    p.Played_Duration_Pending = false;
    p.Time_Left = t.Total_Duration;
    if (ctx.form1.List2.ListCount() > 0) {
        t.Played_Number[0] = 1;
        t.Played_Count = 1;
    }
    p.Current_File.clear();
    Etiketes_Synol_Songs(ctx);
}

void Dimension_Slots(TrackTable& t) {
    Dimension_Anew(t.Slot_Value, t.Track_Count);
    Dimension_Anew(t.Slot_Text, t.Track_Count);
}

}  // namespace

void Reset_Views(AppContext& ctx, int mode) {
    TrackTable& t = ctx.table;
    if (t.Track_Count < 0) t.Track_Count = 0;
    switch (mode) {
        case 0:
            Clear_List_Controls(ctx);
            t.Reset_Table();
            Clear_Property_Columns(ctx);
            Clear_Play_Columns(ctx);
            Dimension_Slots(t);
            break;
        case 1:
            Clear_Play_Columns(ctx);
            Dimension_Slots(t);
            Reset_Rating_Letters(ctx);
            Calculate_Ratings(ctx);
            break;
        case 2:
            Dimension_Anew(t.Rating_Class, t.Track_Count);
            ctx.settings.Search_Links.clear();
            Reset_Rating_Letters(ctx);
            Calculate_Ratings(ctx);
            break;
        default:
            break;
    }
    ctx.ratings.Stats_Dirty = true;
    DeikseAgapi(ctx, 0, 0);
    t.Collection_Saved = 0;
}

void Reset_Rating_Letters(AppContext& ctx) {
    Form1& f = ctx.form1;
    TrackTable& t = ctx.table;
    ListBox& letters = f.List3_0[1];
    SuppressEvents quiet(ctx.core);
    letters.SetEnabled(false);

    const int count = f.List2.ListCount();
    const int current = t.Current_Track;
    for (int i = 0; i < count; ++i) {
        f.List2.SetSelected(i, false);
        letters.SetList(i, "-");
        // The current row, not row i: only the current Track's selection goes.
        for (auto& box : f.List3_0) box.SetSelected(current, false);
    }

    if (current >= 0 && current < count && current <= t.Bound()) {
        f.List2.SetSelected(current, true);
        for (auto& box : f.List3_0) box.SetSelected(current, true);
        if (t.Played_Number[current] == 0) {
            t.Played_Number[current] = t.Played_Count;
            t.Saved[current] = false;
        }
    }

    letters.SetEnabled(true);
}

}  // namespace velmora

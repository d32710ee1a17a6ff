#include "ratings/reset_views.h"

#include "core/app_context.h"
#include "ratings/rating_marks.h"

namespace velmora {

namespace {

void Clear_List_Controls(AppContext& ctx) {
    Form1& f = ctx.form1;
    f.List2.Clear();
    for (auto& box : f.List3_0) box.Clear();
    for (auto& box : f.Text1) box.SetText("");
    f.Combo1.SetListIndex(-1);
    f.Picture1.SetPicture("");
}

}  // namespace

void Reset_Views(AppContext& ctx, int mode) {
    TrackTable& t = ctx.table;
    if (t.Track_Count < 0) t.Track_Count = 0;
    switch (mode) {
        case 0:
            Clear_List_Controls(ctx);
            t.Reset_Table();
            Reset_Rating_Letters(ctx);
            break;
        case 1:
            Reset_Rating_Letters(ctx);
            Calculate_Ratings(ctx);
            break;
        case 2:
            Reset_Rating_Letters(ctx);
            Calculate_Ratings(ctx);
            break;
        default:
            break;
    }
    ctx.core.Labels_Dirty = true;
    DeikseAgapi(ctx, 0, 0);
    t.Collection_Saved = 0;
}

// The recount from the class letters comes with the ratings work.
void Reset_Rating_Letters(AppContext&) {}
void Calculate_Ratings(AppContext&) {}

}  // namespace velmora

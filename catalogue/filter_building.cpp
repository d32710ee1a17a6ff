#include "catalogue/filter_building.h"

#include <unordered_set>
#include <vector>

#include "base/char_span.h"
#include "base/codepage1253.h"
#include "base/text_format.h"
#include "catalogue/filter_fields.h"
#include "catalogue/filter_query.h"
#include "core/app_context.h"
#include "core/progress.h"
#include "core/running_report.h"
#include "core/suppress_events.h"

namespace velmora {

namespace {

constexpr const char* kRemakeQuestion =
    "Θέλετε να δημιουργήσετε νέα φίλτρα για τα αρχεία σας; Αυτό μπορεί να απαιτήσει χρόνο.\n"
    "Would you like to remake the song filters? This action could take some time to complete. ";
constexpr const char* kBuilding = " -> Κατασκευή Φίλτρων Συλλογής... - Building collection filters...";

// The distinct values of one box as the sorted box keeps them: a value the
// box finds without regard to case is not added again, so the first
// spelling stays. They go into the box in one piece at the end, where the
// box puts them in its order: the same items a find and an add per value
// would leave, without an insertion into a sorted box per value.
class Box_Values {
public:
    void Offer(std::string text) {
        if (text.empty()) return;
        if (m_seen.insert(FoldCase(text)).second) m_values.push_back(std::move(text));
    }
    void Into(ComboBox& box) { box.Assign(std::move(m_values)); }

private:
    std::unordered_set<std::string> m_seen;
    std::vector<std::string> m_values;
};

}  // namespace

void Add_Filters(AppContext& ctx) {
    if (ctx.core.Suppress_Events) return;
    Form1& f = ctx.form1;
    TrackTable& t = ctx.table;
    Clear_Filters(ctx);
    if (f.List2.ListCount() == 0) return;
    Log_Line(ctx, kBuilding);

    std::array<Box_Values, kFilterBoxes> boxes;
    const int total = f.List2.ListCount();
    // Rows the path list holds beyond the table (a drop not yet counted)
    // stop the building, as the count that bounds it no longer holds.
    for (int i = 0; i <= f.List2.ListCount() - 1 && f.List2.ListCount() - 1 <= t.Track_Count; ++i) {
        ctx.ports.loop.DoEvents();
        if (i > t.Bound()) break;
        boxes[1].Offer(Duration_Box_Text(t.Duration[i]));
        boxes[2].Offer(Size_Box_Text(t.File_Size[i]));
        boxes[3].Offer(Bitrate_Box_Text(t.Bitrate[i]));
        boxes[4].Offer(Trim(t.Genre[i]));
        boxes[5].Offer(Trim(t.Album[i]));
        boxes[6].Offer(Trim(t.Artist[i]));
        boxes[7].Offer(Trim(t.Year[i]));
        boxes[8].Offer(Trim(t.Title[i]));
        if (i % 30 == 0 || i > total - 50) Show_Progress(f, i, total, 1);
    }
    for (int k = 1; k < kFilterBoxes; ++k) boxes[k].Into(f.Combo4_0[k]);
}

void Clear_Filters(AppContext& ctx) {
    Form1& f = ctx.form1;
    for (int k = 1; k < kFilterBoxes; ++k) f.Combo4_0[k].Clear();
    f.List4.Clear();
    f.List5.Clear();
}

void Reboot_Filters(AppContext& ctx) {
    SuppressEvents quiet(ctx.core);
    ctx.catalogue.Any_Filter = 0;
    for (ComboBox& box : ctx.form1.Combo4_0) box.SetListIndex(-1);
}

void Apply_Filters(AppContext& ctx) {
    CatalogueState& c = ctx.catalogue;
    if (ctx.core.Suppress_Events || c.Filtering) return;
    c.Any_Filter = 0;
    c.Filter_Value.fill(std::string());
    c.Filter_Active.fill(0);
    // A box with typed text counts as one with a chosen value.
    for (int k = 0; k < kFilterBoxes; ++k) {
        const std::string& text = ctx.form1.Combo4_0[k].Text();
        if (text.empty()) continue;
        c.Filter_Value[k] = text;
        c.Filter_Active[k] = -1;
    }
    for (int32_t active : c.Filter_Active)
        if (active == -1) {
            c.Any_Filter = -1;
            break;
        }
    Filtered_Songs_List(ctx, 0);
}

void Combo4_0_Click(AppContext& ctx, int) {
    if (!ctx.core.Suppress_Events) Apply_Filters(ctx);
}

void Combo4_0_Change(AppContext& ctx, int) {
    if (!ctx.core.Suppress_Events) Apply_Filters(ctx);
}

void Remake_Filters(AppContext& ctx) {
    Add_Filters(ctx);
    ctx.ports.loop.DoEvents();
    Reboot_Filters(ctx);
    Filtered_Songs_List(ctx, -1);
}

void MnuMoreFiltersRemake_Click(AppContext& ctx) {
    MultiPage& pages = ctx.form1.MultiPage1;
    const int page = pages.Value();
    // The question is asked over the catalogue page, whose lists it rebuilds.
    pages.SetValue(1);
    if (ctx.ports.dialogs.MsgBox(kRemakeQuestion, MsgButtons::YesNo, MsgIcon::Question, "") != MsgAnswer::Yes) {
        pages.SetValue(page);
        return;
    }
    Remake_Filters(ctx);
}

void Update_Filter_Row(AppContext& ctx, int track, int column) {
    FilterRows& rows = ctx.catalogue.Filter_Text;
    if (rows.size() <= 1) return;
    if (track < 0 || track >= static_cast<int>(rows.size())) return;
    std::string row = rows[track];
    // Only the class is patched: the other fields of a changed tag are
    // written nowhere, and the row keeps them as they were until a rebuild.
    if (column == 0 && track <= ctx.table.Bound()) {
        const std::string caption =
            Pad_Field(ctx.form1.Combo4_0[0].List(ctx.table.Rating_Class[track]), kFavoriteWidth);
        const size_t from = Char_Offset(row, kFavoriteStart - 1);
        const size_t to = Char_Offset(row, kFavoriteStart - 1 + kFavoriteWidth);
        // A row too short to hold the field is left as it is.
        if (to > from && Char_Count(row) >= kFavoriteStart - 1 + kFavoriteWidth) {
            row.replace(from, to - from, caption);
            rows.Set(track, row);
        }
    }
    ctx.form1.List5.SetList(track + 2, List_Row(track + 1, track + 1, row));
}

}  // namespace velmora

#include "catalogue/filter_query.h"

#include <string>
#include <vector>

#include "base/codepage1253.h"
#include "catalogue/filter_building.h"
#include "catalogue/filter_fields.h"
#include "core/app_context.h"
#include "core/progress.h"
#include "core/running_report.h"
#include "core/suppress_events.h"

namespace velmora {

namespace {

constexpr const char* kFiltering = " -> Φιλτράρισμα Στοιχείων - Filtering Properties";
constexpr const char* kFilteringEnded = " -> Τέλος Φιλτραρίσματος - Filtering Ended";

void Show_List(ListBox& list, bool on) {
    list.SetEnabled(on);
    list.SetVisible(on);
}

std::vector<std::string> Head_Rows(const CatalogueState& c) { return {c.Filter_Head_Title, c.Filter_Head_Rule}; }

// Every Track's cached row, and List5 with them all.
void Rebuild_Rows(AppContext& ctx, int last) {
    Form1& f = ctx.form1;
    CatalogueState& c = ctx.catalogue;
    c.Filter_Text.assign(static_cast<size_t>(last) + 1);
    f.List5.Clear();
    f.List4.Clear();
    // The rows go into List5 in one piece: it is hidden while they are made,
    // and one change is one redraw for whoever shows it.
    std::vector<std::string> rows = Head_Rows(c);
    rows.reserve(static_cast<size_t>(last) + 3);
    for (int i = 0; i <= last && last <= ctx.table.Track_Count; ++i) {
        const std::string row = Filter_Row(ctx, i);
        c.Filter_Text.Set(i, row);
        rows.push_back(List_Row(i + 1, i + 1, row));
        ctx.ports.loop.DoEvents();
        if (i % 30 == 0 || i > last - 50) Show_Progress(f, i, last, 1);
    }
    f.List5.Assign(std::move(rows));
}

// The rows that pass every chosen box: each chosen text must occur in the
// Track's field, without regard to case. The cache has a row per Track here.
void Query(AppContext& ctx, int last) {
    Form1& f = ctx.form1;
    const CatalogueState& c = ctx.catalogue;
    std::vector<std::pair<int, CaseBlindFinder>> chosen;
    for (int k = 0; k < kFilterBoxes; ++k)
        if (c.Filter_Active[k] == -1) chosen.emplace_back(k, CaseBlindFinder(c.Filter_Value[k]));
    std::vector<std::string> rows = Head_Rows(c);
    int matches = 0;
    for (int i = 0; i <= last && last <= ctx.table.Track_Count; ++i) {
        int misses = 0;
        for (const auto& [k, value] : chosen) {
            ++misses;
            if (value.In(Filter_Column_Value(ctx, k, i))) --misses;
        }
        if (misses == 0) {
            ++matches;
            rows.push_back(List_Row(matches, i + 1, c.Filter_Text[i]));
        }
        if (i % 10 == 0 || i > last - 50) Show_Progress(f, i, last, 1);
    }
    f.List4.Assign(std::move(rows));
}

// The row under the list's index names its Track; a head row names none.
void Go_To_Row_Track(AppContext& ctx, const ListBox& list) {
    if (list.ListCount() == 0) return;
    const int number = Row_Track_Number(list.List(list.ListIndex()));
    if (number < 0) return;
    SuppressEvents quiet(ctx.core);
    Select_Row(ctx, number - 1);
}

}  // namespace

void Filtered_Songs_List(AppContext& ctx, int rebuild) {
    Form1& f = ctx.form1;
    CatalogueState& c = ctx.catalogue;
    const int last = f.List2.ListCount() - 1;
    if (last >= 0) {
        // The cache no longer has a row per Track: it is rebuilt, and the
        // side file must follow.
        if (static_cast<int>(c.Filter_Text.size()) - 1 != last) {
            rebuild = -1;
            ctx.table.Filters_Changed = -1;
        }
        c.Filtering = true;
        f.Frame12.SetEnabled(false);
        Log_Line(ctx, kFiltering);
        if (c.Filter_Head_Title.empty()) {
            c.Filter_Head_Title = Head_Title();
            c.Filter_Head_Rule = Head_Rule();
        }
        Show_List(f.List4, false);
        Show_List(f.List5, false);
        if (rebuild == -1) {
            Rebuild_Rows(ctx, last);
        } else if (c.Any_Filter == -1) {
            Query(ctx, last);
        } else {
            // Nothing chosen: List4 keeps what the last query left in it.
            ctx.form5.Combo1.Clear();
        }
    }
    // The list that counts is shown; the other stays hidden.
    const bool filtered = c.Any_Filter == -1;
    Show_List(filtered ? f.List4 : f.List5, true);
    Show_List(filtered ? f.List5 : f.List4, false);
    c.Filtering = false;
    f.Frame12.SetEnabled(true);
    Log_Line(ctx, kFilteringEnded);
}

void List4_MouseDown(AppContext& ctx) { Go_To_Row_Track(ctx, ctx.form1.List4); }

void List5_MouseDown(AppContext& ctx) { Go_To_Row_Track(ctx, ctx.form1.List5); }

void Select_Row(AppContext& ctx, int index) {
    Form1& f = ctx.form1;
    if (f.List2.ListCount() == 0 || index < 0) return;
    f.List2.SetListIndex(index);
    f.List2.SetSelected(index, true);
    for (ListBox& mirror : f.List3_0) {
        mirror.SetListIndex(index);
        mirror.SetSelected(index, true);
    }
}

void Command16_Click(AppContext& ctx, int index) {
    if (index != 1) return;
    Reboot_Filters(ctx);
    Filtered_Songs_List(ctx, 0);
}

void Refresh_Stale_Results(AppContext& ctx) {
    if (static_cast<int>(ctx.catalogue.Filter_Text.size()) - 1 != ctx.form1.List2.ListCount() - 1)
        Filtered_Songs_List(ctx, 0);
}

}  // namespace velmora

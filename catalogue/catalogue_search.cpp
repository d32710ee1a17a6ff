#include "catalogue/catalogue_search.h"

#include <string>

#include "base/codepage1253.h"
#include "base/text_format.h"
#include "catalogue/filter_building.h"
#include "catalogue/filter_query.h"
#include "catalogue/list_box_find.h"
#include "core/app_context.h"

namespace velmora {

namespace {

constexpr const char* kTypeText = "Πληκτρολογήστε κείμενο για αναζήτηση - Type text to search";

// The text to look for, lower case and trimmed; empty when the box is. A
// box of blanks passes the test and then looks for nothing, which every
// row holds.
bool Search_Text(AppContext& ctx, const TextBox& box, std::string& text) {
    if (box.Text().empty()) {
        ctx.ports.dialogs.MsgBox(kTypeText, MsgButtons::OK, MsgIcon::Information, "");
        return false;
    }
    text = FoldCase(Trim(box.Text()));
    return true;
}


// The last row found becomes the list's index, in sight.
void Show_Last(ListBox& list, int row) {
    if (row < 0) return;
    list.SetListIndex(row);
    list.SetTopIndex(row);
}

}  // namespace

void Command6_Click(AppContext& ctx, int index) {
    if (index != 0) return;
    Form1& f = ctx.form1;
    std::string text;
    if (!Search_Text(ctx, f.Text2[3], text)) return;
    Reboot_Filters(ctx);
    Filtered_Songs_List(ctx, 0);
    // A text that is a whole path picks no rows.
    if (ListBoxFindString(f.List2, text, 0, true) == -1) {
        const CaseBlindFinder finder(text);
        int last_match = -1;
        for (int row = 0; row < f.List4.ListCount(); ++row) {
            if (!finder.In(f.List4.List(row))) continue;
            f.List4.Store_Selected(row, true);
            last_match = row;
        }
        Show_Last(f.List4, last_match);
    }
    f.MultiPage1.SetValue(1);
}

void Command17_Click(AppContext& ctx) {
    Form1& f = ctx.form1;
    if (ctx.catalogue.Filtering) return;
    std::string text;
    if (!Search_Text(ctx, f.Text2[4], text)) return;
    const int last = f.List5.Visible() ? f.List5.ListCount() - 1 : f.List4.ListCount() - 1;
    if (ListBoxFindString(f.List4, text, 0, true) != -1) return;
    ListBox& list = f.List5.Visible() ? f.List5 : f.List4;
    const CaseBlindFinder finder(text);
    int last_match = -1;
    // Behind the two head rows.
    for (int row = 2; row <= last; ++row) {
        const bool match = finder.In(list.List(row));
        list.Store_Selected(row, match);
        if (match) last_match = row;
    }
    Show_Last(list, last_match);
}

}  // namespace velmora

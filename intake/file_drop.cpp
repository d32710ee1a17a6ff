#include "intake/file_drop.h"

#include <algorithm>

#include "base/collection_records.h"
#include "base/text_format.h"
#include "catalogue/list_box_find.h"
#include "core/app_context.h"
#include "core/running_report.h"
#include "intake/directory_search.h"

namespace velmora {

namespace {

std::string Trimmed(const std::string& text) {
    const auto first = text.find_first_not_of(' ');
    if (first == std::string::npos) return {};
    return text.substr(first, text.find_last_not_of(' ') - first + 1);
}

}  // namespace

bool Is_Droppable_Name(const AppContext& ctx, const std::string& name) {
    const std::string trimmed = Trimmed(name);
    const std::string tail = trimmed.substr(trimmed.size() > 4 ? trimmed.size() - 4 : 0);
    for (const std::string& extension : ctx.core.Media_Extensions)
        if (!extension.empty() && extension.find(tail) != std::string::npos) return true;
    return false;
}

// Files dropped on the window are taken on purpose: users expect a drop to
// add what it carries, and the search page's adding is the same walk for a
// whole folder. What a drop fills is kept as narrow as the adding loop of the
// drop message has always been.
void Accept_Dropped_Files(AppContext& ctx, const std::vector<std::string>& names) {
    Form1& f = ctx.form1;
    TrackTable& t = ctx.table;
    const int32_t first_number = t.Track_Count;
    int32_t added = 0, invalid = 0;
    for (const std::string& name : names) {
        Log_Line(ctx, name);
        if (!Is_Droppable_Name(ctx, name)) {
            ++invalid;
            continue;
        }
        if (!Storable_Track_Path(name)) {
            Log_Line(ctx, "-> Το όνομα δεν χωρά στη συλλογή - The name cannot be stored in the Collection: " + name);
            continue;
        }
        if (ListBoxFindString(f.List2, name, -1, true) >= 0) continue;
        if (f.List2.ListCount() + 1 > kMaxTracks) {
            ctx.ports.dialogs.MsgBox(kIntakeFullMessage, MsgButtons::OK, MsgIcon::Critical, "");
            break;
        }
        ++added;
        f.List2.AddItem(name);
        f.List3_0[0].AddItem(Format(int64_t{added} + first_number, "#00000"));
        f.List3_0[1].AddItem("-");
        Log_Line(ctx, "-> Αριθμός Προστιθέμενων Αρχείων - Number of Added files = " + std::to_string(added));
    }
    if (added > 0) {
        // The current Track shown again, once for the drop rather than once a file.
        if (t.Current_Track >= 0 && t.Current_Track < f.List2.ListCount()) f.List2.SetListIndex(t.Current_Track);
        // A drop fills the path list and the first two mirrors only, and leaves
        // Track_Count and the class totals alone: the next adding from the
        // search page takes the count from the path list, and the save writes
        // every listed row. The columns grow beneath the new rows all the same,
        // so that a rating or a save that reaches one finds its fields.
        t.Grow_Columns(std::max(t.Track_Count, f.List2.ListCount()));
    }
    Log_Line(ctx, "-> Άκυρα Αρχεία - Non Valid Files: " + std::to_string(invalid));
}

}  // namespace velmora

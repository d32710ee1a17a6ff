#include "desktop/collection_commands.h"

#include <random>
#include <string>

#include "base/collection_records.h"
#include "catalogue/filter_building.h"
#include "catalogue/filter_query.h"
#include "catalogue/track_list_totals.h"
#include "collection/collection_claim.h"
#include "collection/collection_file.h"
#include "collection/collection_paths.h"
#include "core/app_context.h"
#include "core/program_folders.h"
#include "core/running_report.h"
#include "fileops/file_engine.h"
#include "playback/transport.h"
#include "ratings/rating_marks.h"
#include "ratings/reset_views.h"

namespace velmora {

namespace {

constexpr const char* kFilter = "Velmora (*.qel) | *.qel";

std::string Collections_Folder(const AppContext& ctx) { return ctx.core.App_Path + kCollectionsFolder + "/"; }

// The totals and the class labels of the Collection now in the lists.
void Class_Steps(AppContext& ctx) {
    Calculate_Ratings(ctx);
    Class_Play_Totals(ctx);
    Update_Class_Labels(ctx);
}

// Save as, offering `name` in the dialogue.
void Save_As(AppContext& ctx, const std::string& name) {
    Make_Folder(ctx, 1);
    Make_Folder(ctx, 3);
    FileDialogOptions o;
    o.title = "Σώσιμο Αρχείου - Save File";
    o.filter = kFilter;
    o.initial_dir = Collections_Folder(ctx);
    o.file_name = name;
    const auto chosen = ctx.ports.dialogs.SaveFile(o);
    if (!chosen || chosen->empty()) return;
    if (!Has_Collection_Ending(*chosen)) {
        ctx.ports.dialogs.MsgBox("Δε σώθηκε η συλλογή. Το όνομα πρέπει να τελειώνει σε [.qel] should be the ending of "
                                 "the file. Collection was not saved",
                                 MsgButtons::OKCancel, MsgIcon::Critical, "");
        return;
    }
    ctx.collection.Collection_Path = *chosen;
    // Written by this program from now on, as at start-up; one held by
    // another program is refused by the save, which says so.
    (void)Claim_Collection(ctx);
    Save_Pointer(ctx);
    Save_Collection(ctx, false, true);
    Etiketes_Synol_Songs(ctx);
}

}  // namespace

bool Has_Collection_Ending(std::string_view name) { return name.size() >= 4 && name.substr(name.size() - 4) == ".qel"; }

void mnufilesnew_Click(AppContext& ctx) {
    if (ctx.table.Collection_Saved == 0) {
        if (ctx.ports.dialogs.MsgBox("Θέλετε σίγουρα νέα συλλογή;\nDo you really want new collection?",
                                     MsgButtons::YesNo, MsgIcon::Question, "") != MsgAnswer::Yes)
            return;
        Save_Collection(ctx, false, false);
    }
    Reset_Views(ctx, 0);
    Class_Steps(ctx);
    DeikseAgapi(ctx, 0, 0);
    std::random_device random;
    const int number = static_cast<int>(random() % 100);
    ctx.collection.Collection_Path = Collections_Folder(ctx) + "new_collection" + std::to_string(number) + ".qel";
    Save_As(ctx, ctx.collection.Collection_Path);
}

void mnuFileOpen_Click(AppContext& ctx) {
    if (ctx.table.Collection_Saved == 0) Save_Collection(ctx, true, false);
    FileDialogOptions o;
    o.title = "Άνοιγμα Νέας Συλλογής - Open New Collection";
    o.filter = kFilter;
    o.initial_dir = Collections_Folder(ctx);
    const auto chosen = ctx.ports.dialogs.OpenFile(o);
    if (!chosen || chosen->empty()) return;
    if (!Has_Collection_Ending(*chosen)) {
        ctx.ports.dialogs.MsgBox("Το όνομα πρέπει να τελειώνει σε [.qel] should be the ending of the file",
                                 MsgButtons::OK, MsgIcon::Exclamation, "");
        return;
    }
    const std::string before = ctx.collection.Collection_Path;
    ctx.collection.Collection_Path = *chosen;
    // Claimed as at start-up: held by another program, it is looked at
    // read-only or not opened at all.
    if (!Claim_Or_Offer_Read_Only(ctx)) {
        ctx.collection.Collection_Path = before;
        (void)Claim_Collection(ctx);
        return;
    }
    Reset_Views(ctx, 0);
    ctx.form1.MultiPage1.SetValue(0);
    Load_Collection(ctx);
    Class_Steps(ctx);
    ctx.ratings.Stats_Dirty = true;
    DeikseAgapi(ctx, 0, 0);
    Command3_Click(ctx, 0);
}

void mnuFileSave_Click(AppContext& ctx) {
    Save_Collection(ctx, false, false);
    Log_Line(ctx, " -> Σώθηκε - Saved");
}

void mnuFileSaveAs_Click(AppContext& ctx) { Save_As(ctx, ctx.collection.Collection_Path); }

void mnuFileSaveAsAuto_Click(AppContext& ctx) {
    MenuItem& item = ctx.form1.Menus("mnuFileSaveAsAuto");
    item.SetChecked(!item.Checked());
    ctx.settings.Save_Auto = item.Checked() ? -1 : 0;
}

void mnuFileReset_Click(AppContext& ctx) {
    if (ctx.ports.dialogs.MsgBox("Θα διαγραφούν όλες οι προτιμήσεις πολυμέσων ενώ η αναπαραγωγή θα αρχίσει από την "
                                 "αρχή ξανά.\nDo you really want to reset the collection?\n All favorites will be "
                                 "reseted and reproduction will start over.",
                                 MsgButtons::YesNo, MsgIcon::Question, "") != MsgAnswer::Yes)
        return;
    Reset_Views(ctx, 1);
    Save_Collection(ctx, true, false);
    Add_Filters(ctx);
    ctx.ports.loop.DoEvents();
    Reboot_Filters(ctx);
    Filtered_Songs_List(ctx, -1);
}

void mnufiledelete_Click(AppContext& ctx) {
    const std::string path = ctx.collection.Collection_Path;
    if (path == Default_Collection_Path(ctx)) {
        Log_Line(ctx, "-> Η αρχική συλλογή " + path + " δεν γίνεται να διαγραφεί! - Default collection  " + path +
                          " cannot be deleted!");
        return;
    }
    if (ctx.ports.dialogs.MsgBox("Θέλετε σίγουρα να διαγράψετε τη συλλογή " + path + " από τον δίσκο; \nDo you really "
                                 "want to delete the collection " + path + " from disc?",
                                 MsgButtons::YesNo, MsgIcon::Critical, "") != MsgAnswer::Yes)
        return;
    int error = 0;
    Delete_File_And_Side_Files(ctx, path, error);
    if (error != 0)
        ctx.ports.dialogs.MsgBox("Λάθος κατά τη διαγραφή της συλλογής - Error while deleting collection", MsgButtons::OK,
                                 MsgIcon::Exclamation, "");
    ctx.table.Collection_Saved = 0;
}

}  // namespace velmora

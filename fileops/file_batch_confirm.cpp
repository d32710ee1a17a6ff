#include "fileops/file_batch_confirm.h"

#include <string>

#include "core/app_context.h"

namespace velmora {

namespace {

constexpr const char* kFromCollection =
    "Πρόκειται να διαγράψετε οριστικά από την συλλογή σας τα επιλεγμένα αρχεία!..."
    " - You are going to permanetly delete selected files from collection! Continue?";
constexpr const char* kFromDisk =
    "Πρόκειται να διαγράψετε οριστικά από τον δίσκο σας τα επιλεγμένα αρχεία!..."
    " - You are going to permanetly delete selected files for your disk! Continue?";
constexpr const char* kTrashIsSlow =
    "Αν ο διαχειριστής αρχείων ζητά επιβεβαίωση για κάθε διαγραφή, η διαδικασία θα διαρκέσει πολύ και θα σας "
    "ρωτήσει για κάθε αρχείο. - If your file manager asks to confirm each deletion, the procedure takes long and "
    "asks you about every file's deletion. Continue?";

// How the Collection follows moved files, said before anything moves.
std::string Move_Question(const AppContext& ctx) {
    const std::string& dir = ctx.fileops.Destination_Directory;
    if (ctx.settings.Move_Points_To_New_Path != 0)
        return "Η μετακίνηση αρχείων με Αναφορά σε νέα Θέση σημαίνει αλλαγή των φακέλων προς {" + dir +
               "} των επιλεγμένων αρχείων. Θέλετε να συνεχίσετε; - Mooving files while Pointing to the New Path, "
               "means changing folders names towards {" +
               dir + "} of the selected files. Will you procceed?";
    return "Η μετακίνηση αρχείων χωρίς Αναφορά σε νέα Θέση σημαίνει και διαγραφή των επιλεγμένων αρχείων από τη "
           "συλλογή. Θέλετε να συνεχίσετε; - Mooving files without Pointing to the New Path, means also deleting "
           "the selected files from the collection. Will you procceed?";
}

bool Cancelled(AppContext& ctx, const std::string& text) {
    return ctx.ports.dialogs.MsgBox(text, MsgButtons::OKCancel, MsgIcon::Exclamation, "") != MsgAnswer::OK;
}

}  // namespace

bool Confirm_File_Batch(AppContext& ctx, int mode) {
    if (mode == kBatchMove)
        return ctx.ports.dialogs.MsgBox(Move_Question(ctx), MsgButtons::YesNo, MsgIcon::Question, "") != MsgAnswer::Yes;
    // A batch this program does not know is never run unasked.
    if (mode != kBatchDelete) return true;
    const Settings& s = ctx.settings;
    // With the trash on, the files themselves are not lost, so the first
    // question speaks of the Collection only.
    const bool to_trash = s.Delete_From_Disk != 0 && s.Recycle_Deleted != 0;
    if (Cancelled(ctx, s.Delete_From_Disk == 0 || s.Recycle_Deleted != 0 ? kFromCollection : kFromDisk)) return true;
    return to_trash && Cancelled(ctx, kTrashIsSlow);
}

}  // namespace velmora

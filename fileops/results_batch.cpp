#include "fileops/results_batch.h"

#include <string>

#include "base/char_span.h"
#include "core/app_context.h"
#include "fileops/file_batch.h"
#include "fileops/file_engine.h"

namespace velmora {

namespace {

constexpr int kShownRows = 10;  // selected rows shown in the question before "ecc"

int Chosen_Mode(const Form1& f) {
    if (f.Option3[1].Value() != 0) return kFileMove;
    if (f.Option3[2].Value() != 0) return kFileDelete;
    return kFileCopy;
}

// The chosen boxes, or else the selected rows of the whole list.
std::string Criteria(const Form1& f) {
    std::string text;
    for (size_t k = 0; k < f.Combo4_0.size(); ++k)
        if (!f.Combo4_0[k].Text().empty())
            text += "|" + f.Label12[k].Caption() + ": " + f.Combo4_0[k].Text() + " | \n";
    if (!text.empty()) return text;
    int shown = 0;
    for (int row = 0; row < f.List5.ListCount(); ++row) {
        if (!f.List5.Selected(row)) continue;
        if (shown++ == kShownRows) {
            text += "κ.λ.π. - ecc";
            break;
        }
        text += Char_Left(f.List5.List(row), 60) + "...\n";
    }
    return text.empty() ? text : "Όλα τα ΕΠΙΛΕΓΜΕΝΑ αρχεία; - All SELECTED files?\n" + text;
}

}  // namespace

void Command16_Execute(AppContext& ctx) {
    if (ctx.core.Busy_Working) return;
    Form1& f = ctx.form1;
    const int mode = Chosen_Mode(f);
    static constexpr const char* kGreek[] = {"ΑΝΤΙΓΡΑΨΕΤΕ", "ΜΕΤΑΚΙΝΗΣΕΤΕ", "ΔΙΑΓΡΑΨΕΤΕ"};
    static constexpr const char* kEnglish[] = {"COPY", "MOVE", "DELETE"};
    std::string greek = kGreek[mode], english = kEnglish[mode];
    if (mode == kFileDelete) {
        const bool trash = ctx.settings.Recycle_Deleted != 0;
        greek += trash ? " στον ΚΑΔΟ ΑΝΑΚΥΚΛΩΣΗΣ" : " από τον ΔΙΣΚΟ ΣΑΣ";
        english += trash ? " to the RECYCLE BIN" : " from your DISK";
    } else if (ctx.fileops.Destination_Directory.empty()) {
        ctx.ports.dialogs.MsgBox("Δεν έχετε επιλέξει Φάκελο Μετακίνησης - You have not setted a Destination Directory",
                                 MsgButtons::OK, MsgIcon::Critical, "");
        return;
    }
    const std::string criteria = Criteria(f);
    if (criteria.empty()) {
        ctx.ports.dialogs.MsgBox("Δεν υπάρχουν κριτήρια επιλογής! - No current criterions selected!", MsgButtons::OK,
                                 MsgIcon::Exclamation, "");
        return;
    }
    const std::string question = "Θέλετε σίγουρα να " + greek + " τα αρχεία με τα ακόλουθα κριτήρια;\nAre you sure you want to " +
                                 english + " files with the following criterion?\n\n" + criteria;
    if (ctx.ports.dialogs.MsgBox(question, MsgButtons::YesNo, MsgIcon::Question, "") != MsgAnswer::Yes) return;
    const BatchOutcome done = File_Batch(ctx, true, kBatchAll, mode, true);
    const Settings& s = ctx.settings;
    const bool points = mode == kFileMove   ? s.Move_Points_To_New_Path != 0
                        : mode == kFileCopy ? s.Copy_Points_To_New_Path != 0
                                            : true;
    if (!done.cancelled && points) Save_After_Batch(ctx);
}

void Option3_Click(AppContext& ctx, int index) {
    Form1& f = ctx.form1;
    for (int i = 0; i < 3; ++i) f.Option3[i].SetValue(i == index ? -1 : 0);
    // Nothing reads the folder tree: every file lands in the destination
    // folder itself. The box is offered where it would mean something.
    f.Check4.SetEnabled(index != kFileDelete);
}

void Check3_Click(AppContext& ctx) { ctx.settings.Recycle_Deleted = ctx.form1.Check3.Value() != 0 ? -1 : 0; }

void Ask_Destination_Directory(AppContext& ctx) {
    const auto folder = ctx.ports.dialogs.PickFolder("Pick a folder", ctx.fileops.Destination_Directory);
    std::string& dir = ctx.fileops.Destination_Directory;
    if (!folder || folder->empty()) {
        ctx.ports.dialogs.MsgBox("Δεν επιλέξατε ορθή διαδρομή δίσκου - You haven't choose correct disk path",
                                 MsgButtons::OK, MsgIcon::Critical, "");
        dir.clear();
    } else {
        dir = folder->back() == '/' ? *folder : *folder + "/";
    }
    ctx.form1.Text2[5].SetText(dir);
}

}  // namespace velmora

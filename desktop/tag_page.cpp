#include "desktop/tag_page.h"

#include <string>

#include "base/text_format.h"
#include "core/app_context.h"
#include "core/running_report.h"
#include "metadata/tag_saving.h"
#include "playback/start_track.h"

namespace velmora {

namespace {

void Take_Boxes(AppContext& ctx) {
    Form1& f = ctx.form1;
    auto& values = ctx.metadata.Tag_Values;
    for (int i = 0; i < 5; ++i) values[i] = f.Text1[i].Text();
    values[5] = f.Combo1.Text();
}

// The save goes through the player, which lets go of the file if it plays
// it and takes it up again at the same second.
void Save_Through_Player(AppContext& ctx, const std::string& path) {
    std::string error;
    Replace_Playing_File(ctx, path, "", "", [&ctx, &path, &error] { Save_Tags(ctx, path, error); });
}

void Changed(AppContext& ctx) {
    if (ctx.core.Suppress_Events) return;
    ctx.metadata.Tag_Dirty = true;
    Take_Boxes(ctx);
    if (!ctx.metadata.Tag_File.empty()) ctx.form1.Command14.SetEnabled(true);
    Ask_Save_Tags(ctx);
}

}  // namespace

void Text1_N_Change(AppContext& ctx, int) { Changed(ctx); }

void Combo1_Click(AppContext& ctx) { Changed(ctx); }

void Ask_Save_Tags(AppContext& ctx) {
    Form1& f = ctx.form1;
    MetadataState& m = ctx.metadata;
    if (ctx.core.Suppress_Events || ctx.playback.Current_File.empty() || f.List2.ListIndex() < -1) return;
    if (m.Tag_File.empty() || !m.Tag_Dirty) {
        if (f.Command14.Enabled()) f.Command14.SetEnabled(false);
        return;
    }
    Take_Boxes(ctx);
    std::string lines;
    for (int i = 0; i < 5; ++i) lines += f.Label1[i].Caption() + ":" + std::string(5, ' ') + m.Tag_Values[i] + "\n";
    lines += f.Label1[5].Caption() + f.Combo1.Text();
    const std::string question = "Θα αποθηκεύσετε ό,τι γράψατε; - Are you willing to store what you typed?\n"
                                 "Αρχείο - File :" + m.Tag_File + "\n" + lines;
    if (ctx.ports.dialogs.MsgBox(question, MsgButtons::YesNo, MsgIcon::Question, "") == MsgAnswer::Yes)
        Save_Through_Player(ctx, m.Tag_File);
    m.Tag_Dirty = false;
    Fill_Tag_Boxes(ctx);
}

void Command14_Click(AppContext& ctx) {
    Take_Boxes(ctx);
    const std::string path = ctx.metadata.Tag_File;
    Save_Through_Player(ctx, path);
    ctx.metadata.Tag_Dirty = false;
    // Said whatever Save_Tags did: it reports nothing back.
    ctx.form1.Text2[0].Prepend(TimeText(ctx.ports.loop.Now()) + "->" + "Αρχείο - File :" + "\n" + path + "\n" +
                               " Επιτυχημένη Αποθήκευση - Saving succeded" + "\n");
}

}  // namespace velmora

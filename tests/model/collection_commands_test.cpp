#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>

#include "collection/collection_claim.h"
#include "collection/collection_file.h"
#include "collection/collection_paths.h"
#include "core/app_context.h"
#include "desktop/collection_commands.h"
#include "support/holds.h"
#include "support/test_app.h"
#include "support/track_rows.h"

namespace velmora {
namespace {

namespace fs = std::filesystem;
using testing::Holds;
using testing::TestApp;
using Strings = std::vector<std::string>;

// Three rated Tracks with files, saved whole as the default Collection.
struct CollectionCommands : ::testing::Test {
    TestApp app;
    AppContext& ctx = app.ctx;
    std::string folder = app.folder.Str() + "velmora_sylloges/";
    std::vector<testing::TrackRow> rows{{app.folder.Str() + "m/one.mp3", 30, 5, 1},
                                        {app.folder.Str() + "m/two.mp3", 40, 2, 1},
                                        {app.folder.Str() + "m/three.mp3", 50, 0, 1}};

    CollectionCommands() {
        testing::Start_In(app, app.folder.Str());
        testing::Make_Files(app, rows);
        testing::Fill_Tracks(ctx, rows);
        EXPECT_TRUE(Save_Collection(ctx, false, true));
    }
    Strings Loaded(const std::string& path) {
        TestApp other;
        other.ctx.program_folder = other.ctx.core.App_Path = app.folder.Str();
        other.ctx.collection.Collection_Path = path;
        EXPECT_TRUE(Load_Collection(other.ctx)) << other.ctx.collection.Load_Fault;
        const PackedTexts& items = other.ctx.form1.List2.Items();
        return Strings(items.begin(), items.end());
    }
};

TEST_F(CollectionCommands, SaveAsWritesAWholeCopyUnderAnExactQelNameAndOnlySuchACopyIsDeleted) {
    const std::string before = ctx.collection.Collection_Path;
    mnufiledelete_Click(ctx);
    EXPECT_TRUE(Holds(app.Log(), "-> Η αρχική συλλογή " + before + " δεν γίνεται να διαγραφεί! - Default collection  "));
    EXPECT_TRUE(app.dialogs.Messages().empty());

    app.dialogs.ExpectFile(folder + "copy.QEL");
    app.dialogs.ExpectMsgBox(MsgAnswer::OK);
    mnuFileSaveAs_Click(ctx);
    EXPECT_EQ(app.dialogs.Messages().back().icon, MsgIcon::Critical);
    EXPECT_EQ(ctx.collection.Collection_Path, before) << "upper case is no Collection";

    app.dialogs.ExpectFile(folder + "copy.qel");
    mnuFileSaveAs_Click(ctx);
    const FileDialogOptions& asked = app.dialogs.FileDialogs().back();
    EXPECT_EQ(std::tuple(asked.title, asked.filter, asked.initial_dir, asked.file_name),
              std::tuple(std::string("Σώσιμο Αρχείου - Save File"), std::string("Velmora (*.qel) | *.qel"), folder,
                         before));
    EXPECT_EQ(ctx.collection.Collection_Path, folder + "copy.qel");
    EXPECT_EQ(Loaded(folder + "copy.qel"), Loaded(before));
    EXPECT_EQ(Loaded(before).size(), 3u);
    EXPECT_TRUE(fs::exists(Lock_Path(folder + "copy.qel"))) << "the new name is held as at start-up";

    // Deleting it takes its side files, not its backups of the main file.
    const CollectionPaths p = Collection_Paths_Of(ctx, folder + "copy.qel");
    std::ofstream(p.main + ".backup") << "b";
    std::ofstream(p.files + ".backup") << "b";
    ctx.settings.Recycle_Deleted = 0;
    app.dialogs.ExpectMsgBox(MsgAnswer::Yes);
    mnufiledelete_Click(ctx);
    EXPECT_FALSE(fs::exists(p.main) || fs::exists(p.files) || fs::exists(p.filters) || fs::exists(p.files + ".backup"));
    EXPECT_TRUE(fs::exists(p.main + ".backup"));
    EXPECT_EQ(ctx.table.Collection_Saved, 0);
    EXPECT_EQ(ctx.form1.List2.ListCount(), 3) << "the Collection stays in memory";
}

TEST_F(CollectionCommands, OpenStartsPlayingAndResetKeepsThePaths) {
    app.dialogs.ExpectFile(folder + "second.qel");
    mnuFileSaveAs_Click(ctx);
    ctx.settings.Auto_Start = 0;
    ctx.table.Collection_Saved = -1;
    app.dialogs.ExpectFile(folder + "second.qel");
    mnuFileOpen_Click(ctx);
    EXPECT_EQ(app.dialogs.FileDialogs().back().title, "Άνοιγμα Νέας Συλλογής - Open New Collection");
    EXPECT_EQ(ctx.form1.List2.ListCount(), 3);
    EXPECT_EQ(app.player.URL(), ctx.form1.List2.List(ctx.table.Current_Track));

    ctx.table.Played_Number[1] = 2;
    ctx.table.Played_Count = 2;
    app.dialogs.ExpectMsgBox(MsgAnswer::Yes);
    app.dialogs.ExpectMsgBox(MsgAnswer::OK);  // the save reports itself
    mnuFileReset_Click(ctx);
    EXPECT_EQ(ctx.form1.List2.Items(), Loaded(folder + "second.qel"));
    EXPECT_EQ(ctx.table.Duration[2].Round(), 50);
    EXPECT_EQ(ctx.table.Rating_Class[0], 0);
    EXPECT_EQ(ctx.table.Played_Number[1], 0);
}

}  // namespace
}  // namespace velmora

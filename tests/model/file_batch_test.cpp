#include <gtest/gtest.h>

#include <filesystem>
#include <functional>

#include "app/handlers.h"
#include "catalogue/filter_building.h"
#include "collection/collection_file.h"
#include "core/app_context.h"
#include "fileops/file_batch.h"
#include "fileops/results_batch.h"
#include "support/holds.h"
#include "support/test_app.h"
#include "support/track_rows.h"

namespace velmora {
namespace {

namespace fs = std::filesystem;
using testing::Holds;
using testing::Count;
using testing::TestApp;
using Strings = std::vector<std::string>;

// Six Tracks on disk: two of class C, one A, one S, two unmarked; the
// destination folder exists.
struct FileBatch : ::testing::Test {
    TestApp app;
    Form1& f = app.ctx.form1;
    std::string src = app.folder.Str() + "music/";
    std::string dst = app.folder.Str() + "out/";
    std::vector<testing::TrackRow> rows{{src + "c one.mp3", 1, 2, 1.5}, {src + "Ελληνικό.mp3", 1, 0, 2},
                                        {src + "c 'two'.mp3", 1, 2, 1}, {src + "a.mp3", 1, 4, 1},
                                        {src + "s.mp3", 1, 5, 1},        {src + "plain.mp3", 1, 0, 1}};

    FileBatch() {
        testing::Start_In(app, app.folder.Str());
        testing::Make_Files(app, rows);
        testing::Fill_Tracks(app.ctx, rows);
        fs::create_directories(dst);
        app.ctx.fileops.Destination_Directory = dst;
        app.ctx.settings.Recycle_Deleted = 0;
        EXPECT_TRUE(Save_Collection(app.ctx, false, true));
    }
    // Esc pressed while the loop gives way for the n-th time.
    void Esc_After(int n) {
        auto left = std::make_shared<int>(n);
        auto tick = std::make_shared<std::function<void()>>();
        *tick = [this, left, tick] {
            if (--*left == 0) app.ctx.core.Esc_Key = 27;
            else app.loop.Post(*tick);
        };
        app.loop.Post(*tick);
    }
};

TEST_F(FileBatch, MovingAClassPointsTheTracksAtTheNewFilesAndSavesThem) {
    app.ctx.settings.Move_Points_To_New_Path = -1;
    app.dialogs.ExpectMsgBox(MsgAnswer::Yes);
    MoveSelected(app.ctx, -1, 1);
    EXPECT_TRUE(Holds(app.dialogs.Messages()[0].text,
                      "Πρόκειται να μετακινήσετε  όλα τα αρχεία C' Kλάσης στον κατάλογο: " + dst +
                          "\n - You are going to move  all the C' Class files to directory: "));
    EXPECT_EQ(f.List2.List(0), dst + "c one.mp3");
    EXPECT_EQ(f.List2.List(2), dst + "c 'two'.mp3");
    EXPECT_EQ(f.List2.List(1), src + "Ελληνικό.mp3");
    EXPECT_TRUE(fs::exists(dst + "c 'two'.mp3") && !fs::exists(src + "c one.mp3"));
    EXPECT_EQ(Count(app.Log(), "-> διαγραφή - deleting ---> " + src), 2u) << "a rename logs its copy and its deletion";
    EXPECT_TRUE(Holds(app.Log(), "Copy/Move/Delete Tries:  2\n. Αποτυχίες - Failures:  0\n. Επιτυχίες - Success : 2"));
    EXPECT_TRUE(Holds(app.Log(), "-> Αντιγράφηκαν/Μετακινήθηκαν/Διαγράφησαν 2.50Mb have been copied/moved/deleted!"));
    ASSERT_NE(app.Log().find(" -> Σώθηκε - Saved"), std::string::npos) << app.ctx.collection.Save_Fault;

    TestApp again;
    ASSERT_TRUE(testing::Load_In(again, app.folder.Str())) << again.ctx.collection.Load_Fault;
    EXPECT_EQ(again.ctx.form1.List2.Items(), f.List2.Items()) << "the saved paths agree with the disk";
}

TEST_F(FileBatch, CopyingAllKeepsTheTracksAndAMoveWithoutNewPathsCountsFailures) {
    app.dialogs.ExpectMsgBox(MsgAnswer::Yes);
    MoveSelected(app.ctx, 0, 0);
    EXPECT_EQ(Count(app.Log(), " ---> " + dst), 6u);
    EXPECT_EQ(Count(app.Log(), "Tries"), 0u) << "a plain copy reports no sums";
    EXPECT_EQ(f.List2.List(0), src + "c one.mp3");

    // Moved without new paths, the Tracks leave the Collection and, as the
    // second deletion finds nothing, count as failures.
    app.ctx.settings.Copy_Points_To_New_Path = -1;  // any new-path mark brings the sums
    f.List2.SetSelected(3, true);
    app.dialogs.ExpectMsgBox(MsgAnswer::Yes);
    MoveSelected(app.ctx, -1, -1);
    EXPECT_EQ(f.List2.ListCount(), 5);
    EXPECT_FALSE(fs::exists(src + "a.mp3"));
    EXPECT_TRUE(Holds(app.Log(), ". Αποτυχίες - Failures:  1\n. Επιτυχίες - Success : 0"));
}

// Tracks follow their copies only onto a disk that confirmed them. A folder
// that was not there when the batch began (it appears after the first file)
// cannot be vouched for: every Track stays with its source.
TEST_F(FileBatch, CopiesTakeTheTracksOnlyOnceTheDiskHoldsThem) {
    app.ctx.settings.Copy_Points_To_New_Path = -1;
    app.dialogs.ExpectMsgBox(MsgAnswer::Yes);
    MoveSelected(app.ctx, 0, 1);
    EXPECT_EQ(f.List2.List(0), dst + "c one.mp3");
    EXPECT_EQ(f.List2.List(2), dst + "c 'two'.mp3");
    EXPECT_EQ(f.List2.List(1), src + "Ελληνικό.mp3");

    const std::string later = app.folder.Str() + "later/";
    app.ctx.fileops.Destination_Directory = later;
    app.loop.Post([later] { fs::create_directories(later); });
    const auto before = f.List2.Items();
    app.dialogs.ExpectMsgBox(MsgAnswer::Yes);
    const BatchOutcome copied = MoveSelected(app.ctx, 0, kBatchAll);
    EXPECT_EQ(std::tuple(copied.successes, copied.failures), std::tuple(5, 1));
    EXPECT_TRUE(fs::exists(later + "c one.mp3"));
    EXPECT_EQ(f.List2.Items(), before);
    EXPECT_EQ(Count(app.Log(), "The copies could not be confirmed on the disk, the Tracks keep their source files ---> " +
                               later),
              1u);
}

TEST_F(FileBatch, CommandsRefuseAnEmptyClassAndAMissingDestination) {
    app.ctx.fileops.Destination_Directory.clear();
    app.dialogs.ExpectMsgBox(MsgAnswer::OK);
    MoveSelected(app.ctx, 0, 4);  // no X' Tracks
    app.dialogs.ExpectMsgBox(MsgAnswer::OK);
    MoveSelected(app.ctx, 0, 0);
    EXPECT_EQ(app.dialogs.Messages()[0].text,
              "Δεν υπάρχουν αρχεία αυτής της κατηγορίας - There aren't any files of this category");
    EXPECT_EQ(app.dialogs.Messages()[1].text,
              "Δεν έχετε επιλέξει Φάκελο Μετακίνησης - You have not setted a Destination Directory");
    // Deleting needs no destination.
    app.dialogs.ExpectMsgBox(MsgAnswer::OK);
    Pro_File_Del(app.ctx, 6);
    EXPECT_EQ(f.List2.ListCount(), 5);
    EXPECT_TRUE(fs::exists(src + "s.mp3")) << "out of the Collection only";

    // The folder button gives the destination, shown with its slash; a
    // picker left without a folder clears it with its message.
    ASSERT_TRUE(Wire_Handlers(app.ctx).empty());
    app.dialogs.ExpectFile(app.folder.Str() + "out");
    f.Command19.Click.emit();
    EXPECT_EQ(std::tuple(app.ctx.fileops.Destination_Directory, f.Text2[5].Text()), std::tuple(dst, dst));
    app.dialogs.ExpectFile(std::nullopt);
    app.dialogs.ExpectMsgBox(MsgAnswer::OK);
    f.Command19.Click.emit();
    EXPECT_EQ(std::tuple(app.ctx.fileops.Destination_Directory, app.dialogs.Messages().back().text),
              std::tuple("", "Δεν επιλέξατε ορθή διαδρομή δίσκου - You haven't choose correct disk path"));
}

TEST_F(FileBatch, DeletingCAndAReadEachOthersCount) {
    app.ctx.settings.Delete_From_Disk = -1;
    app.dialogs.ExpectMsgBox(MsgAnswer::OK);
    Pro_File_Del(app.ctx, 1);  // C': there is an A' Track, so it runs
    EXPECT_EQ(f.List2.ListCount(), 4);
    EXPECT_FALSE(fs::exists(src + "c one.mp3") || fs::exists(src + "c 'two'.mp3"));
    app.dialogs.ExpectMsgBox(MsgAnswer::OK);
    Pro_File_Del(app.ctx, 3);  // A': no C' Track is left, so nothing
    EXPECT_EQ(app.dialogs.Messages().back().text,
              "Δεν υπάρχουν αρχεία αυτής της κατηγορίας - There aren't any files of this category");
    EXPECT_TRUE(fs::exists(src + "a.mp3"));
}

TEST_F(FileBatch, EscStopsBetweenFilesWithTheTriesSoFar) {
    app.ctx.settings.Move_Points_To_New_Path = -1;
    Esc_After(2);
    app.dialogs.ExpectMsgBox(MsgAnswer::Yes);
    MoveSelected(app.ctx, -1, 0);
    EXPECT_TRUE(Holds(app.Log(), "Tries:  2\n"));
    EXPECT_TRUE(Holds(app.Log(), "Ακυρώθηκε - Canceled\n"));
    // Last row first: the two last files moved, each wholly, and the rest stayed.
    for (int i = 0; i < 6; ++i) {
        const std::string path(f.List2.List(i));
        EXPECT_EQ(path.starts_with(dst), i >= 4) << path;
        EXPECT_TRUE(fs::exists(path)) << path;
    }
}

TEST_F(FileBatch, TheResultBatchAsksWithTheCriteriaAndTakesTheSelectedRows) {
    Remake_Filters(app.ctx);
    Option3_Click(app.ctx, 2);
    EXPECT_FALSE(f.Check4.Enabled());
    app.dialogs.ExpectMsgBox(MsgAnswer::OK);
    Command16_Execute(app.ctx);
    EXPECT_EQ(app.dialogs.Messages().back().text, "Δεν υπάρχουν κριτήρια επιλογής! - No current criterions selected!");

    Option3_Click(app.ctx, 0);
    EXPECT_TRUE(f.Check4.Enabled());
    ASSERT_TRUE(f.List5.Enabled());
    f.List5.SetSelected(f.List5.ListCount() - 1, true);  // the last Track's row
    app.dialogs.ExpectMsgBox(MsgAnswer::Yes);
    Command16_Execute(app.ctx);
    const std::string& asked = app.dialogs.Messages().back().text;
    EXPECT_TRUE(asked.starts_with("Θέλετε σίγουρα να ΑΝΤΙΓΡΑΨΕΤΕ τα αρχεία με τα ακόλουθα κριτήρια;\nAre you sure "
                                  "you want to COPY files with the following criterion?\n\nΌλα τα ΕΠΙΛΕΓΜΕΝΑ αρχεία;"))
        << asked;
    EXPECT_TRUE(fs::exists(dst + "plain.mp3"));
    EXPECT_EQ(Count(app.Log(), " ---> " + dst), 1u);
}

// A folder named in letters the Collection's code page lacks: Tracks that
// would follow their files there could never be saved, so nothing moves and
// nothing is asked; copies that leave the Tracks alone go ahead.
TEST_F(FileBatch, AFolderTheCollectionCannotNameIsRefusedOnlyWhenTheTracksWouldFollow) {
    const std::string cyrillic = app.folder.Str() + "Музыка/";
    fs::create_directories(cyrillic);
    app.ctx.fileops.Destination_Directory = cyrillic;
    app.ctx.settings.Move_Points_To_New_Path = -1;
    EXPECT_TRUE(MoveSelected(app.ctx, -1, kBatchAll).refused);
    EXPECT_TRUE(app.dialogs.Messages().empty());
    EXPECT_TRUE(Holds(app.Log(),
                      "The Collection cannot store the name of the destination folder, nothing was done ---> " +
                          cyrillic));
    EXPECT_TRUE(fs::is_empty(cyrillic));
    for (const auto& row : rows) EXPECT_TRUE(fs::exists(row.path)) << row.path;

    app.ctx.settings.Copy_Points_To_New_Path = 0;
    app.dialogs.ExpectMsgBox(MsgAnswer::Yes);
    const BatchOutcome copied = MoveSelected(app.ctx, 0, kBatchAll);
    EXPECT_EQ(std::tuple(copied.refused, copied.successes), std::tuple(false, 6));
    EXPECT_TRUE(fs::exists(cyrillic + "Ελληνικό.mp3"));
    EXPECT_TRUE(Save_Collection(app.ctx, false, true)) << app.ctx.collection.Save_Fault;
}

}  // namespace
}  // namespace velmora

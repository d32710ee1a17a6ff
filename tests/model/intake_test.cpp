#include <gtest/gtest.h>

#include <filesystem>

#include "app/handlers.h"
#include "app/startup.h"
#include "core/constant_tables.h"
#include "intake/add_remove.h"
#include "intake/directory_search.h"
#include "intake/file_drop.h"
#include "support/holds.h"
#include "support/test_app.h"

namespace velmora {
namespace {

namespace fs = std::filesystem;
using testing::TestApp;

using Strings = std::vector<std::string>;

using testing::Holds;

// A program with the type list of start-up over a generated tree:
//   a/            song1.mp3 song2.MP3 clip.wmv empty.mp3 (zero bytes) Ελληνικό.mp3 notes.txt
//   a/b/          deep.mp3
//   a/b/c/        LOUD.MP3 (capitals only)
//   gone/         lost.mp3 (a test may remove it while the search runs)
//   cyr/          Песня.mp3 (no place in code page 1253) ok.mp3
struct Intake : ::testing::Test {
    TestApp app;
    Form1& f = app.ctx.form1;
    std::string root = app.folder.Str() + "tree";

    Intake() {
        app.ctx.core.Media_Extensions = Media_Extension_Table();
        std::vector<std::string> types;
        for (const auto& e : app.ctx.core.Media_Extensions) types.push_back("*" + e);
        f.List3.Assign(types);
        for (const char* name : {"a/song1.mp3", "a/song2.MP3", "a/clip.wmv", "a/Ελληνικό.mp3", "a/b/deep.mp3",
                                 "a/b/c/LOUD.MP3", "gone/lost.mp3", "cyr/Песня.mp3", "cyr/ok.mp3", "a/notes.txt",
                                 "a/empty.mp3"}) {
            fs::create_directories(fs::path(root + "/" + name).parent_path());
            testing::Put(root + "/" + name, std::string(name) == "a/empty.mp3" ? "" : "data");
        }
    }

    // Every mouse pointer the window was given, in order, from the last call on.
    std::vector<int> pointers;
    int pointer = f.MousePointer();
    Subscription pointer_watch = f.Changed.connect([this](Change) {
        if (pointer != f.MousePointer()) pointers.push_back(pointer = f.MousePointer());
    });
    std::vector<int> Pointers() { return std::exchange(pointers, {}); }
    static constexpr int kWait = FormState::kHourglass, kNormal = FormState::kDefaultPointer;

    void Open(const std::string& folder) {
        f.Dir1.SetPath(folder);
        Dir1_change(app.ctx);
    }
    void Choose_Types(int button) {
        Command7_Click(app.ctx, button);
        Open(root);
    }
    // Adds the files of one folder, the way the add button does.
    void Add_Folder(const std::string& folder) {
        Open(folder);
        Command18_Click(app.ctx, 0);
    }
    // Every folder under the root, as the subfolder check finds them.
    void Add_Everything() {
        Choose_Types(4);
        Set_Check2(app.ctx, 1);
        Add_Files_Under_Path(app.ctx);
    }
    ::testing::AssertionResult Status_Has(const std::string& part) const { return Holds(f.Text2[1].Text(), part); }
    ::testing::AssertionResult Log_Has(const std::string& part) const { return Holds(app.Log(), part); }
    const std::string& Last_Box() const { return app.dialogs.Messages().back().text; }
};

TEST_F(Intake, FileBoxFiltersWithoutCaseAndSortsDriveBoxStartsAtRoot) {
    EXPECT_TRUE(Matches_Patterns("Song.MP3", "*.wav;*.mp3") && Matches_Patterns("Ελληνικό.mp3", "ΕΛΛΗΝΙΚΌ.*"));
    EXPECT_FALSE(Matches_Patterns("song.mp3x", "*.mp3;*.wav"));
    EXPECT_TRUE(Matches_Patterns("x.y", "")) << "no type chosen shows every file";

    f.File1.SetPath(root + "/a");
    f.File1.SetPattern("*.MP3;*.wmv");
    Refresh_File_List(f.File1);
    EXPECT_EQ(f.File1.Items(), (Strings{"clip.wmv", "empty.mp3", "song1.mp3", "song2.MP3", "Ελληνικό.mp3"}));
    f.Dir1.SetPath(root);
    Refresh_Dir_List(f.Dir1);
    EXPECT_EQ(f.Dir1.Items(), (Strings{root + "/a", root + "/cyr", root + "/gone"}));

    const std::string mounts = app.folder.Str() + "mounts";
    testing::Put(mounts, "tmpfs /run tmpfs rw 0 0\n/dev/sda1 / ext4 rw 0 0\n"
                         "/dev/sdb1 /media/My\\040Disk vfat rw 0 0\ntmpfs /run tmpfs rw 0 0\n");
    Refresh_Drive_List(f.Drive1, mounts);
    EXPECT_EQ(f.Drive1.Items(), (Strings{"/", "/run", "/media/My Disk"}));
}

TEST_F(Intake, TypeButtonsSelectTheirRangesAndToggle) {
    // Extra selects only *.mp3; a second click clears, a third fills again.
    for (auto [count, pattern] : {std::pair{1, "*.mp3"}, {0, ""}, {1, "*.mp3"}}) {
        Command7_Click(app.ctx, 4);
        EXPECT_EQ(std::tuple(f.List3.SelCount(), f.List3.Selected(0), f.File1.Pattern()),
                  std::tuple(count, count == 1, pattern));
    }
    Command7_Click(app.ctx, 2);
    EXPECT_EQ(f.List3.SelCount(), 15);
    EXPECT_TRUE(f.List3.Selected(14) && f.List3.Selected(28) && !f.List3.Selected(13) && !f.List3.Selected(29));
    Command7_Click(app.ctx, 3);
    EXPECT_EQ(f.File1.Pattern(), "*.m3u;*.wpl;*.wvx");

    app.ctx.core.Suppress_Events = true;
    f.List3.SetSelected(0, true);
    List3_Click(app.ctx);
    EXPECT_EQ(f.File1.Pattern(), "*.m3u;*.wpl;*.wvx") << "no pattern change while events are suppressed";
    app.ctx.core.Suppress_Events = false;

    // The found folders: invert, then all and none by one button whose caption follows.
    f.List1.Assign({"/x/", "/y/"});
    f.List1.SetSelected(0, true);
    Command1_Click(app.ctx, 1);
    EXPECT_TRUE(!f.List1.Selected(0) && f.List1.Selected(1));
    for (auto [count, caption] : {std::pair{2, "Κανένας - None"}, {0, "Επέλεξε Όλους - Select All"}}) {
        Command1_Click(app.ctx, 0);
        EXPECT_EQ(std::tuple(f.List1.SelCount(), f.Command1[0].Caption()), std::tuple(count, caption));
    }
}

TEST_F(Intake, SearchFindsFoldersByExactExtensionAndCountsRepeats) {
    Choose_Types(0);
    fs::remove_all(root + "/gone");
    Pointers();
    Set_Check2(app.ctx, 1);
    EXPECT_EQ(Pointers(), (std::vector<int>{kWait, kNormal}));

    EXPECT_EQ(f.List1.Items(), (Strings{root + "/a/", root + "/cyr/", root + "/a/b/"}))
        << "breadth first; a/b/c holds only capitals";
    // a: song1, clip.wmv twice, empty, Ελληνικό; cyr: two; a/b: one.
    EXPECT_EQ(f.Frame8.Caption(), "Υποφάκελοι - Subdirectories --> 3 Αρχεία - Files ---> 8");
    EXPECT_TRUE(Status_Has("-> Έτοιμο - Ready"));
    EXPECT_TRUE(f.List1.Visible() && !f.Command2.Enabled() && !app.ctx.core.Suppress_Events);
}

TEST_F(Intake, AFolderThatCannotBeReadLeavesTheWalkWithWhatWasFound) {
    Choose_Types(0);
    // Running as root, no permission keeps a folder out; a folder removed
    // between the listing of its parent and its own reading does.
    app.loop.Post([&] { fs::remove_all(root + "/gone"); });
    Pointers();
    Set_Check2(app.ctx, 1);
    EXPECT_EQ(Pointers(), (std::vector<int>{kWait, kNormal})) << "the pointer comes back all the same";
    EXPECT_EQ(f.List1.Items(), (Strings{root + "/a/", root + "/cyr/"})) << "gone/ comes before a/b/";
    EXPECT_FALSE(Status_Has("-> Έτοιμο - Ready") || Log_Has("gone"));
    EXPECT_TRUE(!f.List1.Visible() && f.Command2.Enabled()) << "the closing lines are passed over";
}

TEST_F(Intake, EscStopsTheSearchWithWhatWasFound) {
    Choose_Types(4);
    app.loop.Post([&] { Command2_Click(app.ctx); });
    Set_Check2(app.ctx, 1);
    EXPECT_EQ(std::tuple(app.ctx.core.Esc_Key, f.Check2.Value()), std::tuple(0, 0));
    EXPECT_EQ(f.List1.ListCount(), 0) << "the root holds no media and nothing was read after it";
    EXPECT_TRUE(Status_Has("-> Ακυρώθηκε - Canceled\n" + root + "/"));

    // Inside a folder it stops at the next name, before the media further on.
    Open(root + "/a");
    app.loop.Post([&] { app.ctx.core.Esc_Key = 27; });
    Set_Check2(app.ctx, 1);
    EXPECT_EQ(f.List1.ListCount(), 0) << "a/ holds media, but Esc came after its first name";
    EXPECT_TRUE(Status_Has("-> Ακυρώθηκε - Canceled\n" + root + "/a/"));
}

TEST_F(Intake, AddingTwiceGivesDoublesCaseIsIgnoredAndTheRemoveButtonsAskInTheWordsOfTheSettings) {
    Choose_Types(4);
    f.List2.AddItem(root + "/a/SONG1.mp3");  // the same file, written in other case
    for (auto& box : f.List3_0) box.AddItem("x");
    app.ctx.table.Track_Count = 1;
    app.ctx.table.Grow_Columns();
    Add_Folder(root + "/a");

    // Four files of File1: three new; four passes over them.
    EXPECT_EQ(std::tuple(f.List2.List(1), f.List3_0[2].List(3)), std::tuple(root + "/a/empty.mp3", "00:00:00"));
    EXPECT_EQ(f.List3_0[0].Items(), (Strings{"x", "00002", "00003", "00004"}));
    EXPECT_TRUE(Status_Has("Number of Added files : 3. Λάθη σε αρχεία με μηδενικό μήκος - Error in "
                           "files with zero bytes : 0. Διπλά αρχεία - Double Files : 13"));
    const TrackTable& t = app.ctx.table;
    EXPECT_EQ(std::tuple(t.Track_Count, t.Bound(), t.Class_Count[0]), std::tuple(4, 4, Currency(3)));
    EXPECT_TRUE(f.Enabled() && f.List2.Visible() && !app.ctx.core.Busy_Working);

    Add_Folder(root + "/a");
    EXPECT_EQ(f.List2.ListCount(), 4);
    EXPECT_TRUE(Status_Has("Number of Added files : 0") && Status_Has("Double Files : 16"));
    const auto before = f.List2.Items();

    // The remove buttons: Cancel leaves every Track; the first question speaks of the Collection.
    app.dialogs.ExpectMsgBox(MsgAnswer::Cancel);
    Command18_Click(app.ctx, 1);
    EXPECT_EQ(f.List2.Items(), before);
    EXPECT_TRUE(Holds(Last_Box(), "delete selected files from collection"));

    // To the trash: a second question, whose Cancel still keeps everything.
    app.ctx.settings.Delete_From_Disk = app.ctx.settings.Recycle_Deleted = -1;
    app.dialogs.ExpectMsgBox(MsgAnswer::OK);
    app.dialogs.ExpectMsgBox(MsgAnswer::Cancel);
    Command5_Click(app.ctx);
    EXPECT_EQ(f.List2.Items(), before);
    EXPECT_TRUE(Holds(Last_Box(), "Continue?"));

    // Off the disk, then the filters question; No returns to the page the removal showed.
    app.ctx.settings.Delete_From_Disk = 0;
    f.MultiPage1.SetValue(3);
    app.dialogs.ExpectMsgBox(MsgAnswer::OK);
    app.dialogs.ExpectMsgBox(MsgAnswer::No);
    Command5_Click(app.ctx);
    EXPECT_TRUE(Holds(Last_Box(), "Would you like to remake the song filters?"));
    EXPECT_EQ(std::tuple(f.List2.ListCount(), f.MultiPage1.Value()), std::tuple(0, 2));
}

TEST_F(Intake, SubfoldersAddWhatTheCodePageCarriesAndRemovingCompactsTheRest) {
    Add_Everything();  // a: empty, song1, song2.MP3, Ελληνικό; cyr: ok; gone: lost; a/b: deep
    ASSERT_EQ(f.List2.ListCount(), 7);
    EXPECT_EQ(Pointers(), (std::vector<int>{kWait, kNormal, kWait, kNormal})) << "the search, then the adding";
    EXPECT_EQ(std::tuple(f.List2.FindExact(root + "/cyr/ok.mp3"), f.List2.FindExact(root + "/cyr/Песня.mp3"),
                         f.List2.FindExact(root + "/a/b/deep.mp3"), f.List3_0[0].List(6)),
              std::tuple(4, -1, 6, "00007"));
    EXPECT_TRUE(Log_Has("The name cannot be stored in the Collection: " + root + "/cyr/Песня.mp3"));
    EXPECT_TRUE(app.ctx.intake.Intake_Failed);

    // The columns move with their rows as the track table's compaction moves
    // them; one column shows that they move in step with the path list.
    TrackTable& t = app.ctx.table;
    t.Artist[4] = "ok artist";
    Set_Check2(app.ctx, 0);
    Open(root + "/a");
    Removing_Files_Under_Path(app.ctx);
    EXPECT_EQ(Pointers(), (std::vector<int>{kWait, kNormal}));

    EXPECT_EQ(f.List2.Items(), (Strings{root + "/cyr/ok.mp3", root + "/gone/lost.mp3", root + "/a/b/deep.mp3"}));
    EXPECT_EQ(f.List3_0[0].Items(), (Strings{"0001", "0002", "0003"}));
    EXPECT_EQ(std::tuple(f.List3_0[2].ListCount(), t.Track_Count, t.Bound()), std::tuple(3, 3, 3));
    EXPECT_EQ(t.Artist[0], "ok artist");
    EXPECT_TRUE(Status_Has("Number of removed files : 0")) << "a removal from the list alone is not counted";
}

TEST_F(Intake, RemovingThePlayingTrackStopsItAndAFailedDeleteKeepsTheTrack) {
    Choose_Types(4);
    Add_Folder(root + "/a/b");
    Add_Folder(root + "/cyr");
    TrackTable& t = app.ctx.table;
    const std::string deep = root + "/a/b/deep.mp3";
    t.Rating_Class[0] = 5, t.Class_Count[5] = t.Class_Count[0] = Currency(1);
    t.File_Size[0] = t.Class_Size[5] = Currency(3);
    app.player.SetDuration(deep, 100);
    ASSERT_TRUE(app.player.setURL(deep).ok() && app.player.play().ok());
    app.loop.RunPosted();
    ASSERT_EQ(app.player.playState(), PS_Playing);
    app.ctx.playback.Current_File = deep;
    t.Current_Track = 0;

    // A file gone from the disk cannot be deleted: the Track stays and the error is counted.
    app.ctx.settings.Delete_From_Disk = -1;
    app.ctx.settings.Recycle_Deleted = 0;
    fs::remove(deep);
    RemovalTally tally;
    Remove_the_Files(app.ctx, deep, 0, tally);
    EXPECT_EQ(std::tuple(f.List2.ListCount(), tally.errors), std::tuple(2, 1));
    EXPECT_TRUE(Status_Has("Αδύνατη η διαγραφή - ?X?X??X?X? - Impossible to delete file"));

    app.ctx.settings.Delete_On_Disk_Error = -1;
    Remove_the_Files(app.ctx, deep, 0, tally);
    EXPECT_EQ(f.List2.Items(), (Strings{root + "/cyr/ok.mp3"}));
    EXPECT_EQ(std::tuple(tally.removed, tally.freed_size, t.Class_Count[5], t.Class_Size[5]),
              std::tuple(1, Currency(3), Currency(0), Currency(0)));
    app.loop.RunPosted();
    EXPECT_EQ(app.player.playState(), PS_Stopped) << "the removed Track was playing";
    EXPECT_TRUE(Status_Has(" ---> XXXXXXXX\n3.00Mb\nΛάθη διαγραφής από δίσκο - Errors while deleting from disk: 1"));

    // With the trash chosen, the file goes there and the Track with it.
    app.ctx.settings.Recycle_Deleted = -1;
    app.ctx.settings.Delete_On_Disk_Error = 0;
    Remove_the_Files(app.ctx, root + "/cyr/ok.mp3", 0, tally);
    EXPECT_EQ(app.shell.trashed, (Strings{root + "/cyr/ok.mp3"}));
    EXPECT_EQ(f.List2.ListCount(), 0);
}

TEST_F(Intake, AddingStopsAtCapacityKeepingWhatWasAddedAndRefusesNothingToAdd) {
    Choose_Types(4);
    Strings rows;
    for (int i = 0; i < kMaxTracks - 2; ++i) rows.push_back("/full/" + std::to_string(i));
    f.List2.Assign(rows);
    app.ctx.table.Track_Count = kMaxTracks - 2;
    app.ctx.table.Grow_Columns();
    app.dialogs.ExpectMsgBox(MsgAnswer::OK);
    Add_Folder(root + "/a");
    EXPECT_EQ(std::tuple(f.List2.ListCount(), app.ctx.table.Bound()), std::tuple(kMaxTracks, kMaxTracks));
    EXPECT_EQ(Last_Box(), kIntakeFullMessage);
    EXPECT_TRUE(app.ctx.intake.Intake_Failed && f.Enabled());

    // A folder without media, then no type chosen.
    app.dialogs.ExpectMsgBox(MsgAnswer::OK);
    Add_Folder(root + "/gone/none");
    EXPECT_TRUE(Holds(Last_Box(), "There aren't any under search type files"));
    Command7_Click(app.ctx, 4);
    app.dialogs.ExpectMsgBox(MsgAnswer::OK);
    Add_Folder(root + "/a");
    EXPECT_TRUE(Holds(Last_Box(), "Select at least one type of media file"));
    EXPECT_EQ(f.List2.ListCount(), kMaxTracks);
}

TEST_F(Intake, AddAndIdentifyAsksToIdentifyAndOnlyThenToRemakeTheFilters) {
    Choose_Types(4);
    app.ctx.collection.Collection_Path = app.folder.Str() + "intake.qel";
    Open(root + "/a/b");
    app.dialogs.ExpectMsgBox(MsgAnswer::No);  // identify
    Command4_Click(app.ctx);
    EXPECT_EQ(f.List2.ListCount(), 1) << "the files are added whatever the answer";
    EXPECT_EQ(app.dialogs.Messages().size(), 1u) << "no filters question after a refused identification";

    Open(root + "/cyr");
    // identify, save, saved, remake the filters
    for (MsgAnswer a : {MsgAnswer::Yes, MsgAnswer::Yes, MsgAnswer::OK, MsgAnswer::Yes}) app.dialogs.ExpectMsgBox(a);
    Command4_Click(app.ctx);
    EXPECT_EQ(f.List2.ListCount(), 2);
    EXPECT_TRUE(app.ctx.table.Identified[0] && app.ctx.table.Identified[1]);
    EXPECT_EQ(f.MultiPage1.Value(), 1) << "the filters are remade on their own page";
}

// A drop fills the path list and the number and class mirrors; the count of
// Tracks waits for the next adding from the search page.
TEST_F(Intake, DroppedFilesPassByTheirLastFourCharactersAndFillTwoMirrors) {
    const std::pair<const char*, bool> names[] = {
        {"/m/song.mp3", true}, {"/m/piece.midi", true}, {"/m/film.mpeg", true}, {"/m/clip.wmv", true},
        {"/m/SONG.MP3", false}, {"/m/voice.au", false}, {"/m/notes.txt", false}, {"/m/x.wm", false}};
    for (const auto& [name, valid] : names) EXPECT_EQ(Is_Droppable_Name(app.ctx, name), valid) << name;

    Choose_Types(4);
    Add_Folder(root + "/a/b");
    TrackTable& t = app.ctx.table;
    t.Current_Track = 0;
    Accept_Dropped_Files(app.ctx, {root + "/a/b/DEEP.mp3", "/m/new.mp3", "/m/notes.txt", "/m/Песня.mp3",
                                   "/m/other.wma"});
    EXPECT_EQ(f.List2.Items(), (Strings{root + "/a/b/deep.mp3", "/m/new.mp3", "/m/other.wma"}))
        << "a double by case is not added, nor a name the Collection cannot store";
    EXPECT_EQ(f.List3_0[0].Items(), (Strings{"00001", "00002", "00003"}));
    EXPECT_EQ(f.List3_0[1].Items(), (Strings{"-", "-", "-"}));
    for (int k = 2; k < 5; ++k) EXPECT_EQ(f.List3_0[k].ListCount(), 1) << k;
    EXPECT_EQ(t.Track_Count, 1);
    EXPECT_EQ(t.Class_Count[0], Currency(1));
    EXPECT_GE(t.Bound(), 3) << "every listed row has its columns";
    EXPECT_EQ(f.List2.ListIndex(), 0) << "the current Track stays shown";
    EXPECT_TRUE(Log_Has("-> Άκυρα Αρχεία - Non Valid Files: 1") && Log_Has("Number of Added files = 2"));
    EXPECT_TRUE(Log_Has("The name cannot be stored in the Collection: /m/Песня.mp3"));

    // The next adding takes the count from the path list.
    Add_Folder(root + "/cyr");
    EXPECT_EQ(t.Track_Count, f.List2.ListCount());
    EXPECT_EQ(f.List2.ListCount(), 4);
}

TEST_F(Intake, AnyChangeOfPageEndsTheSubfolderMode) {
    ASSERT_TRUE(Wire_Handlers(app.ctx).empty());
    Choose_Types(4);
    f.MultiPage1.SetValue(2);
    Set_Check2(app.ctx, 1);
    ASSERT_TRUE(app.ctx.intake.Use_Subdirectories && f.List1.ListCount() > 0);
    f.MultiPage1.SetValue(3);
    EXPECT_EQ(f.Check2.Value(), 0);
    EXPECT_FALSE(app.ctx.intake.Use_Subdirectories || f.Frame10.Visible());
}

// The types chosen when the program last ran are the pattern of the file
// list at the next start, and only their files are added.
TEST(IntakeRestart, TheSavedTypesMakeTheFileListsPatternAgain) {
    testing::Running first;
    Form1& f0 = first.ctx.form1;
    EXPECT_EQ(f0.File1.Pattern(), "*.mp3") << "a first run chooses *.mp3 alone";
    f0.List3.SetSelected(0, false);
    f0.List3.SetSelected(f0.List3.FindExact("*.wav"), true);
    Form_QueryUnload(first.ctx);

    const std::string media = first.folder.Str() + "media";
    fs::create_directories(media);
    for (const char* name : {"one.mp3", "tone.wav", "notes.txt"}) testing::Put(media + "/" + name, "x");
    testing::Running again(first.folder.Str());
    Form1& f = again.ctx.form1;
    EXPECT_EQ(f.File1.Pattern(), "*.wav");
    f.Dir1.SetPath(media);
    Dir1_change(again.ctx);
    EXPECT_EQ(f.File1.Items(), Strings{"tone.wav"});
    Command18_Click(again.ctx, 0);
    EXPECT_EQ(f.List2.Items(), Strings{media + "/tone.wav"});
}

}  // namespace
}  // namespace velmora

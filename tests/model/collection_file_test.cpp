#include "collection/collection_file.h"

#include <gtest/gtest.h>
#include <fcntl.h>
#include <signal.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <chrono>
#include <sstream>
#include <fstream>
#include <iterator>
#include <random>
#include <tuple>

#include "app/startup.h"
#include "base/record_file.h"
#include "collection/collection_paths.h"
#include "support/file_size_limit.h"
#include "support/golden_collection.h"
#include "support/test_app.h"

namespace velmora {
namespace {

namespace fs = std::filesystem;
using testing::Bytes;
using testing::Golden;
using testing::Golden_Bytes;
using testing::Put;
using testing::TestApp;
using Strings = std::vector<std::string>;

using testing::Load_In;
using testing::Start_In;

using Files = testing::GoldenFiles;
Files Files_Of(const std::string& folder) { return testing::Golden_Files_In(folder); }

void Add_Row(AppContext& ctx, const std::string& path) {
    ctx.form1.List2.AddItem(path);
    ctx.table.Track_Count = ctx.form1.List2.ListCount();
    ctx.table.Grow_Columns();
}

// The engine stands at 82.5 s in the second Track: a save keeps 82, the even neighbour.
void Engine_At(TestApp& app, double seconds) {
    app.player.SetDuration("/home/b.mp3", 300);
    ASSERT_TRUE(app.player.setURL("/home/b.mp3").ok());
    app.loop.RunPosted();
    ASSERT_TRUE(app.player.setCurrentPosition(seconds).ok());
}

// The table and window that the golden files describe.
void Fill_Golden(TestApp& app) {
    AppContext& ctx = app.ctx;
    TrackTable& t = ctx.table;
    ctx.form1.Drive1.SetPath("/");
    ctx.form1.Dir1.SetPath("/home/μουσική");
    Add_Row(ctx, "/home/μουσική/α.mp3");
    Add_Row(ctx, "/home/b.mp3");
    t.Current_Track = 1, t.Total_Duration = Currency::FromRaw(5015000);
    PlaybackState& pb = ctx.playback;
    pb.Played_Duration = Currency(200), pb.Played_Now = Currency(282), pb.Played_Class_Duration = Currency(1);
    pb.Played_Class_Now = Currency(2), pb.Class_Time_Left = Currency(3);
    ctx.collection.Alarm_File = "/alarm/ξύπνα.mp3";
    t.Class_Play = {0, 0, 0, -1, -1, 0};
    t.Played_Count = t.Played_High = 2;
    t.Class_Duration[3] = Currency(200), t.Class_Duration[4] = Currency::FromRaw(3015000);

    t.Played_Number[0] = 1, t.Duration[0] = Currency(200), t.Rating_Class[0] = 3;
    t.File_Size[0] = Currency::FromRaw(45678), t.Stop_Position[0] = Currency(12), t.Bitrate[0] = 128;
    t.Artist[0] = "Μάνος", t.Genre[0] = "Έντεχνο", t.Album[0] = "Album A", t.Title[0] = "Τίτλος", t.Year[0] = "1960";
    t.Identified[0] = true, t.Slot_Value[0][2] = 7, t.Slot_Text[0].Set(15, "σχόλιο");
    t.Played_Number[1] = 2, t.Duration[1] = Currency::FromRaw(3015000), t.Rating_Class[1] = 4;
    t.File_Size[1] = Currency(1024), t.Bitrate[1] = 320, t.Artist[1] = "Artist B", t.Title[1] = "Title B";
    t.Slot_Value[1][15] = -1, t.Slot_Text[1].Set(0, "x");
    ctx.form1.List5.Assign({"head", "", "000001|000001|Μάνος|B", "000002|000002|A"});

    Engine_At(app, 82.5);
}

// The three files hold exactly `g`, and no temporary file or commit marker
// lies beside them.
void Expect_On_Disk(const std::string& folder, const Golden& g) {
    const Files p = Files_Of(folder);
    EXPECT_EQ(Bytes(p.main), g.main);
    EXPECT_EQ(Bytes(p.files), g.files);
    EXPECT_EQ(Bytes(p.filters), g.filters);
    EXPECT_EQ(std::distance(fs::directory_iterator(p.main.parent_path()), {}), 2);
    EXPECT_EQ(std::distance(fs::directory_iterator(p.filters.parent_path()), {}), 1);
}

const std::string kSaveError =
    "Λάθος κατά το σώσιμο Συλλογής. Παρακαλώ επαναλάβατε - Error while saving Collection. Please retry.";

// The one box shown.
void Expect_Box(const TestApp& app, MsgIcon icon, const std::string& text) {
    ASSERT_EQ(app.dialogs.Messages().size(), 1u);
    EXPECT_EQ(std::tie(app.dialogs.Messages()[0].icon, app.dialogs.Messages()[0].text), std::tie(icon, text));
}

void Write_Golden(const std::string& folder, const Golden& g = Golden_Bytes()) {
    testing::Write_Golden(Files_Of(folder), g);
}

TEST(CollectionFile, TheWriterProducesTheGoldenBytes) {
    TestApp app;
    Start_In(app, app.folder.Str());
    Fill_Golden(app);
    Save_Collection(app.ctx, false, true);
    Expect_On_Disk(app.folder.Str(), Golden_Bytes());
    EXPECT_EQ(std::tuple(app.ctx.table.Current_Position, app.ctx.table.Collection_Saved), std::tuple(82, -1));
}

// A Track's stored fields, one a line under its name: two Tracks compared
// this way show the field that differs.
std::string Fields(const TrackTable& t, int r) {
    std::ostringstream o;
    o << "Played_Number " << t.Played_Number[r] << "\nDuration " << t.Duration[r].Raw() << "\nRating_Class "
      << t.Rating_Class[r] << "\nFile_Size " << t.File_Size[r].Raw() << "\nStop_Position " << t.Stop_Position[r].Raw()
      << "\nBitrate " << t.Bitrate[r] << "\nArtist " << t.Artist[r] << "\nGenre " << t.Genre[r] << "\nAlbum "
      << t.Album[r] << "\nTitle " << t.Title[r] << "\nYear " << t.Year[r] << "\nIdentified " << t.Identified[r]
      << "\nSaved " << t.Saved[r];
    for (int j = 0; j < kSlotCount; ++j) o << "\nSlot " << j << " " << t.Slot_Value[r][j] << " " << t.Slot_Text[r][j];
    return o.str();
}

TEST(CollectionFile, TheReaderReadsTheGoldenBytesBackAndARefusedSaveLeavesThem) {
    TestApp app;
    Write_Golden(app.folder.Str());
    Load_In(app, app.folder.Str());
    TestApp want;  // the table the golden files were made from, as saved
    Fill_Golden(want);
    TrackTable& w = want.ctx.table;
    w.Stop_Position[1] = Currency(82), w.Saved[0] = w.Saved[1] = true;

    const TrackTable& t = app.ctx.table;
    Form1& f = app.ctx.form1;
    ASSERT_EQ(t.Track_Count, 2);
    for (int r = 0; r < 2; ++r) EXPECT_EQ(Fields(t, r), Fields(w, r)) << "Track " << r;
    EXPECT_EQ(f.List2.Items(), want.ctx.form1.List2.Items());
    EXPECT_EQ(f.List5.Items(), want.ctx.form1.List5.Items());
    EXPECT_EQ(f.List3_0[1].Items(), (Strings{"B", "A"}));
    EXPECT_EQ(f.List3_0[3].Items(), (Strings{"04.57Mb", "01.00Gb"}));
    EXPECT_TRUE(app.ctx.catalogue.Filter_Text == (Strings{"", "", "Μάνος|B", "A"}));
    EXPECT_EQ(t.Class_Play, w.Class_Play);
    EXPECT_EQ(f.Drive1.Path(), "/");
    EXPECT_EQ(f.Dir1.Path(), "/home/μουσική");
    EXPECT_EQ(app.ctx.collection.Alarm_File, "/alarm/ξύπνα.mp3");
    EXPECT_TRUE(f.Menus("mnuvideoshow", 1).Checked() && !f.Menus("mnuvideoshow", 0).Checked());
    const struct {
        const char* name;
        int64_t read, want;
    } values[] = {
        {"Current_Track", t.Current_Track, 1},        {"Current_Position", t.Current_Position, 82},
        {"Played_Count", t.Played_Count, 2},          {"Played_High", t.Played_High, 2},
        {"Any_Class_Play", t.Any_Class_Play, -1},     {"Resume_Pending", t.Resume_Pending, -1},
        {"Collection_Saved", t.Collection_Saved, -1}, {"Total_Duration", t.Total_Duration.Raw(), 5015000},
        {"Total_Size", t.Total_Size.Raw(), 10285678}, {"Class_Count B", t.Class_Count[3].Raw(), 10000},
        {"Class_Size A", t.Class_Size[4].Raw(), 10240000}, {"List2's index", f.List2.ListIndex(), 1},
        {"List3_0(4)'s index", f.List3_0[4].ListIndex(), 1},
    };
    for (const auto& v : values) EXPECT_EQ(v.read, v.want) << v.name;

    const std::string& log = f.Text2[0].Text();
    const size_t end = log.find(" -> Τέλος φορτώματος - End loading\n");
    const size_t filters = log.find("-> Ανάγνωση Φίλτρων Συλλογής... - Reading Collection Filters...\n");
    const size_t files = log.find("-> Ανάγνωση αρχείων από Συλλογή... - Reading files from Collection...\n");
    EXPECT_TRUE(end < filters && filters < files && files != std::string::npos) << log;

    // A save the disk refuses (here the file size limit) leaves the Collection
    // on the disk as it stood, and says so.
    Add_Row(app.ctx, "/home/c.mp3");
    app.dialogs.ExpectMsgBox(MsgAnswer::OK);
    {
        testing::FileSizeLimit full(40000);  // the new files side file needs 54000 bytes
        ASSERT_TRUE(full.Set());
        Save_Collection(app.ctx, false, true);
    }
    Expect_Box(app, MsgIcon::Critical, kSaveError);
    Expect_On_Disk(app.folder.Str(), Golden_Bytes());
    EXPECT_FALSE(app.ctx.table.Saved[0]) << "every row is to be written again";
}

// Only rows whose Saved is False are written, and the header.
TEST(CollectionFile, AnIncrementalSaveRewritesOnlyTheChangedRows) {
    TestApp app;
    Write_Golden(app.folder.Str());
    Load_In(app, app.folder.Str());
    Engine_At(app, 82.5);
    const Files p = Files_Of(app.folder.Str());
    TrackTable& t = app.ctx.table;

    // The rest of a record is not significant: a mark left there survives
    // exactly as long as nobody rewrites the record.
    auto mark = [&](int64_t record) {
        std::fstream io(p.files, std::ios::in | std::ios::out | std::ios::binary);
        io.seekp(record * 400 - 1);
        io.put('\x5A');
    };
    auto marked = [&](int64_t record) { return Bytes(p.files)[record * 400 - 1] == '\x5A'; };

    // Nothing changed: the rows stay as they are, the filters keep their date.
    mark(1), mark(46);
    const timespec old_times[2] = {{1000000000, 0}, {1000000000, 0}};
    ASSERT_EQ(utimensat(AT_FDCWD, p.filters.c_str(), old_times, 0), 0);
    Save_Collection(app.ctx, false, false);
    EXPECT_TRUE(marked(1) && marked(46));
    struct stat st {};
    ASSERT_EQ(stat(p.filters.c_str(), &st), 0);
    EXPECT_EQ(st.st_mtim.tv_sec, 1000000000);

    // Playing the first Track changes its row, and the header with it.
    t.Played_Number[0] = 3, t.Played_Count = t.Played_High = 3, t.Saved[0] = false;
    Save_Collection(app.ctx, false, false);
    std::string want = Golden_Bytes().files;
    want[0] = 3, want[46 * 400 - 1] = '\x5A';
    EXPECT_EQ(Bytes(p.files), want) << "row 0 rewritten whole, row 1 untouched";
    EXPECT_TRUE(t.Saved[0]);
    EXPECT_EQ(Bytes(p.main).substr(18 * 300, 4), std::string("\x03\0\0\0", 4)) << "Played_High in the header";

    // A rating change patches a filter row: that record alone is rewritten.
    app.ctx.form1.List5.SetList(3, "000002|000002|S");
    t.Rating_Class[1] = 5, t.Saved[1] = false;
    Save_Collection(app.ctx, false, false);
    std::string filters = Golden_Bytes().filters;
    filters.replace(12 * 600, 17, std::string("\x0F\0" "000002|000002|S", 17));
    EXPECT_EQ(Bytes(p.filters), filters);
}

TEST(CollectionFile, EveryFifthSaveOfARunMakesTheBackups) {
    TestApp first;
    const std::string folder = first.folder.Str();
    Start_In(first, folder);
    Add_Row(first.ctx, "/a.mp3");
    const Files p = Files_Of(folder);
    auto five_saves = [&](AppContext& ctx, bool first_full) {
        auto backups = [&] {
            return fs::exists(p.main.string() + ".backup") + fs::exists(p.files.string() + ".backup") +
                   fs::exists(p.filters.string() + ".backup");
        };
        for (int k = 1; k <= 4; ++k) Save_Collection(ctx, false, first_full && k == 1);
        EXPECT_EQ(backups(), 0);
        Save_Collection(ctx, false, false);
        EXPECT_EQ(backups(), 3);
    };
    five_saves(first.ctx, true);
    EXPECT_EQ(Bytes(p.files.string() + ".backup"), Bytes(p.files));

    // The count does not survive a restart.
    for (const fs::path& file : {p.main, p.files, p.filters}) fs::remove(file.string() + ".backup");
    Save_Collection(first.ctx, false, false);
    TestApp second;
    Load_In(second, folder);
    five_saves(second.ctx, false);
}

TEST(CollectionFile, ACollectionHoldsAtMost32766Tracks) {
    TestApp app;
    const std::string folder = app.folder.Str();
    Start_In(app, folder);
    // Built quickly: a header and, per Track, its number and path. The records
    // between are holes, which read as zeros.
    const Files p = Files_Of(folder);
    RecordFile main, files;
    ASSERT_TRUE(main.Open(p.main.string(), 300) && files.Open(p.files.string(), 400));
    EXPECT_TRUE(main.PutString(1, "5.0") && main.PutLong(6, kMaxTracks) && main.PutLong(19, kMaxTracks));
    for (int i = 0; i < kMaxTracks; ++i) {
        ASSERT_TRUE(files.PutLong(45 * i + 1, i + 1));
        ASSERT_TRUE(files.PutString(45 * i + 12, "/m/" + std::to_string(i) + ".mp3"));
    }
    ASSERT_TRUE(files.PutInteger(45 * kMaxTracks, 0));
    ASSERT_TRUE(main.PutInteger(28, 0) && main.Close() && files.Close());

    TestApp full;
    Load_In(full, folder);
    const Form1& f = full.ctx.form1;
    EXPECT_EQ(std::tuple(full.ctx.table.Track_Count, f.List2.ListCount(), full.ctx.table.Played_Number[kMaxTracks - 1]),
              std::tuple(kMaxTracks, kMaxTracks, kMaxTracks));
    EXPECT_EQ(std::tuple(f.List2.List(kMaxTracks - 1), f.List3_0[0].List(kMaxTracks - 1)),
              std::tuple("/m/32765.mp3", "32766"));

    // One more is refused whole, with the box of the track table.
    ASSERT_TRUE(main.Open(p.main.string(), 300) && main.PutLong(6, kMaxTracks + 1) && main.Close());
    TestApp over;
    over.dialogs.ExpectMsgBox(MsgAnswer::OK);
    Load_In(over, folder);
    Expect_Box(over, MsgIcon::Critical,
               "Η παρούσα συλλογή ξεπερνά το όριο κομματιών 32766 New Collection exceeds this limit");
    EXPECT_EQ(std::tuple(over.ctx.table.Track_Count, over.ctx.form1.List2.ListCount(), over.ctx.table.Resume_Pending),
              std::tuple(0, 0, 0));
}

TEST(CollectionFile, AFirstRunAndThePointerFile) {
    TestApp app;
    const std::string folder = app.folder.Str();
    Start_In(app, folder);
    // A first run: the default Collection, made empty, with no message.
    EXPECT_EQ(app.ctx.collection.Collection_Path, folder + "velmora_sylloges/velmora.qel");
    Load_Collection(app.ctx);
    EXPECT_EQ(fs::file_size(Files_Of(folder).main), 0u);
    EXPECT_EQ(std::tie(app.ctx.table.Track_Count, app.ctx.table.Resume_Pending, app.Log()),
              std::tuple(0, 0, ""));

    CollectionState& c = app.ctx.collection;
    c.Collection_Path = folder + "velmora_sylloges/Ελληνικά.qel";
    c.Stat_Files = 12, c.Stat_Years = 0, c.Stat_Months = 3, c.Stat_Days = 29;
    c.Stat_Hours = 23, c.Stat_Minutes = 59, c.Stat_Seconds = -1;
    Save_Pointer(app.ctx);
    const std::string qr = folder + "velmora_sylloges/default.qr";
    EXPECT_EQ(Bytes(qr), folder + "velmora_sylloges/\xC5\xEB\xEB\xE7\xED\xE9\xEA\xDC.qel\n"
                                  " 12  0  3  29  23  59 -1 \n");
    TestApp next;
    Start_In(next, folder);
    const CollectionState& n = next.ctx.collection;
    EXPECT_EQ(std::tie(n.Collection_Path, n.Stat_Days, n.Stat_Seconds), std::tuple(c.Collection_Path, 29, -1));

    // Read back as comma-separated input: a comma cuts the path.
    Put(qr, "/a,b/c.qel\r\n 1  2  3  4  5  6  7 \r\n");
    TestApp cut;
    Start_In(cut, folder);
    const CollectionState& k = cut.ctx.collection;
    EXPECT_EQ(std::tie(k.Collection_Path, k.Stat_Files, k.Stat_Years), std::tuple("/a", 0, 1))
        << "\"b/c.qel\" read as the first number";
}

TEST(CollectionFile, ThePlayedCountDisagreeingRenumbersTheWalk) {
    TestApp app;
    Write_Golden(app.folder.Str());
    const Files p = Files_Of(app.folder.Str());
    RecordFile main, files;
    ASSERT_TRUE(main.Open(p.main.string(), 300) && files.Open(p.files.string(), 400));
    ASSERT_TRUE(main.PutLong(18, 4) && main.PutLong(19, 5));
    ASSERT_TRUE(files.PutLong(1, 2) && files.PutLong(46, 4));
    ASSERT_TRUE(main.Close() && files.Close());
    Load_In(app, app.folder.Str());
    const TrackTable& t = app.ctx.table;
    // Played_Count keeps its old distance of one behind the highest.
    EXPECT_EQ(std::tie(t.Played_Number[0], t.Played_Number[1], t.Played_Count, t.Played_High, t.Current_Track),
              std::tuple(1, 2, 1, 2, 0));
    EXPECT_FALSE(t.Saved[0] || t.Saved[1]) << "renumbered rows are to be saved";
}

// The side files spelled as the load spells them are found; a save gives
// them the writer's names.
TEST(CollectionFile, TheTwoSpellingsOfTheSuffixesMeet) {
    TestApp app;
    Write_Golden(app.folder.Str());
    const Files p = Files_Of(app.folder.Str());
    const fs::path files_other = p.files.parent_path() / "velmora_Files.qqel";
    const fs::path filters_other = p.filters.parent_path() / "velmora_Filters.qqel";
    fs::rename(p.files, files_other), fs::rename(p.filters, filters_other);
    Load_In(app, app.folder.Str());
    EXPECT_EQ(std::tuple(app.ctx.form1.List2.ListCount(), app.ctx.form1.List5.ListCount()), std::tuple(2, 4));

    Engine_At(app, 82.5);
    app.ctx.table.Played_Number[0] = 3, app.ctx.table.Saved[0] = false;
    Save_Collection(app.ctx, false, false);
    std::string want = Golden_Bytes().files;
    want[0] = 3;
    EXPECT_EQ(Bytes(p.files), want);
    EXPECT_TRUE(fs::exists(p.filters) && !fs::exists(filters_other) && !fs::exists(files_other));
}

TEST(CollectionFile, ATextTheCodePageCannotCarryFailsTheSaveAloneItsField) {
    TestApp app;
    Start_In(app, app.folder.Str());
    Fill_Golden(app);
    app.ctx.table.Title[0] = "日本の歌";
    app.dialogs.ExpectMsgBox(MsgAnswer::No);
    Save_Collection(app.ctx, true, true);
    EXPECT_FALSE(fs::exists(Files_Of(app.folder.Str()).main)) << "No changes nothing";
    auto save_asking = [&] {
        app.dialogs.ExpectMsgBox(MsgAnswer::Yes);
        app.dialogs.ExpectMsgBox(MsgAnswer::OK);
        Save_Collection(app.ctx, true, true);
    };
    save_asking();
    const auto& shown = app.dialogs.Messages();
    ASSERT_EQ(shown.size(), 3u);
    EXPECT_EQ(shown[1].text, "Θα σώσετε την παρούσα συλλογή; \nDo you want to save the present collection?");
    EXPECT_EQ(std::tie(shown[2].text, shown[2].icon), std::tuple(kSaveError, MsgIcon::Critical));

    TestApp next;
    Load_In(next, app.folder.Str());
    EXPECT_EQ(next.ctx.form1.List2.ListCount(), 2);
    EXPECT_EQ(std::tie(next.ctx.table.Title[0], next.ctx.table.Artist[0]), std::tuple("", "Μάνος"))
        << "that field alone is lost";

    // Fixed, the next save reports its success.
    app.ctx.table.Title[0] = "Τίτλος";
    save_asking();
    EXPECT_EQ(std::tie(shown.back().text, shown.back().icon),
              std::tuple("Επιτυχημένο Σώσιμο Συλλογής - Collection Saved Correctly", MsgIcon::Information));
}

// A child saves two Collections in turn, as fast as it can, and is killed at
// random moments: every time, the Collection on the disk loads whole, as
// the one or the other.
TEST(CollectionFile, AKilledFullSaveLeavesTheOldOrTheNewCollection) {
    TestApp app;
    const std::string folder = app.folder.Str();
    Start_In(app, folder);
    auto fill = [](AppContext& ctx, int n) {
        ctx.form1.List2.Clear(), ctx.form1.List5.Clear(), ctx.table.Reset_Table();
        for (int i = 0; i < n; ++i) {
            Add_Row(ctx, "/c" + std::to_string(n) + "/" + std::to_string(i) + ".mp3");
            ctx.table.Title[i] = "Τίτλος " + std::to_string(n);
            ctx.form1.List5.AddItem("row " + std::to_string(n));
        }
        ctx.table.Current_Track = n - 1;
    };
    fill(app.ctx, 3);
    Save_Collection(app.ctx, false, true);

    std::mt19937 random(11);
    const auto deadline = std::chrono::steady_clock::now() + std::chrono::seconds(8);
    int rounds = 0;
    while (rounds < 150 && std::chrono::steady_clock::now() < deadline) {
        const pid_t child = fork();
        ASSERT_GE(child, 0);
        if (child == 0) {
            for (int n = 0;; ++n) {
                fill(app.ctx, n % 2 ? 3 : 40);
                Save_Collection(app.ctx, false, true);
            }
        }
        usleep(std::uniform_int_distribution<useconds_t>(0, 30000)(random));
        kill(child, SIGKILL);
        waitpid(child, nullptr, 0);
        ++rounds;

        TestApp reader;
        Load_In(reader, folder);
        const int n = reader.ctx.table.Track_Count;
        const Form1& f = reader.ctx.form1;
        const std::string tag = std::to_string(n);
        ASSERT_TRUE(n == 3 || n == 40) << "round " << rounds << ": " << n << " Tracks";
        ASSERT_EQ(std::tuple(f.List2.ListCount(), f.List5.ListCount()), std::tuple(n, n))
            << "round " << rounds << ", the filters of the same Collection";
        ASSERT_EQ(std::tuple(f.List2.List(n - 1), reader.ctx.table.Title[n - 1], f.List5.List(0)),
                  std::tuple("/c" + tag + "/" + std::to_string(n - 1) + ".mp3", "Τίτλος " + tag, "row " + tag));
        ASSERT_EQ(f.Text2[0].Text().find("Error"), std::string::npos);
    }
    EXPECT_GT(rounds, 50);
}

}  // namespace
}  // namespace velmora

#include <gtest/gtest.h>

#include <filesystem>

#include "collection/m3u_playlist.h"
#include "collection/playlist_export.h"
#include "collection/playlist_library.h"
#include "core/app_context.h"
#include "intake/playlist_import.h"
#include "support/holds.h"
#include "support/test_app.h"
#include "support/track_rows.h"

namespace velmora {
namespace {

using testing::Holds;
using testing::TestApp;
using Strings = std::vector<std::string>;

struct PlaylistInterchange : ::testing::Test {
    TestApp app;
    AppContext& ctx = app.ctx;
    std::string folder = app.folder.Str();

    PlaylistInterchange() {
        ctx.program_folder = ctx.core.App_Path = folder;
        ctx.table.Collection_Saved = -1;
        std::filesystem::create_directories(folder + "lists/sub");
    }
    Strings Paths() const {
        const PackedTexts& items = ctx.form1.List2.Items();
        return Strings(items.begin(), items.end());
    }
    PlaylistImport Add(const std::string& name, const std::string& bytes) {
        const std::string file = folder + "lists/" + name;
        testing::Put(file, bytes);
        return Import_Playlist(ctx, -1, 0, file, file);
    }
};

TEST_F(PlaylistInterchange, ListsFromTheWildImportWithTheirFilesResolved) {
    const std::string l = folder + "lists/";
    const PlaylistImport run = Add("wild.m3u",
                                   "\xEF\xBB\xBF#EXTM3U\r\n"
                                   "# a comment\r\n"
                                   "#EXTINF:215,Χάρις Αλεξίου - Η Νύχτα\r\n"
                                   "sub/Η Νύχτα.mp3\r\n"
                                   "\r\n"
                                   "..\\other\\b.mp3\r\n"
                                   "file:///music/My%20Song%20%CE%B1.mp3\r\n"
                                   "file://localhost/music/%C1%E8%DE%ED%E1.mp3\r\n"
                                   "http://radio.example/stream?x=1&y=2\r\n"
                                   "  ./sub/./Η Νύχτα.mp3  \r\n");
    EXPECT_EQ(Paths(), (Strings{l + "sub/Η Νύχτα.mp3", folder + "other/b.mp3", "/music/My Song α.mp3",
                                "/music/Αθήνα.mp3", "http://radio.example/stream?x=1&y=2"}));
    EXPECT_EQ(std::pair(run.added, run.doubles), std::pair(5, 1));
    const TrackTable& t = ctx.table;
    EXPECT_EQ(std::tuple(t.Duration[0], t.Artist[0], t.Title[0]),
              std::tuple(Currency(215), std::string("Χάρις Αλεξίου"), std::string("Η Νύχτα")));
    EXPECT_EQ(ctx.form1.List3_0[2].List(0), "00:03:35");
}

TEST_F(PlaylistInterchange, LegacyListsAreReadInTheCodePageTheirBytesShow) {
    // "Νύχτα" and "Café Müller" as their old editors saved them. The
    // Collection's code page has no é: that name is refused with a line.
    Add("greek.m3u", "/m/\xCD\xFD\xF7\xF4\xE1.mp3\n");
    Add("latin.m3u", "/m/Caf\xE9 M\xFCller.mp3\n");
    EXPECT_EQ(Paths(), (Strings{"/m/Νύχτα.mp3"}));
    EXPECT_TRUE(Holds(app.Log(), "The name cannot be stored in the Collection: /m/Café Müller.mp3"));
    EXPECT_EQ(Parse_M3u("\xFF\xE8.mp3").entries.at(0).source, "ÿè.mp3") << "ÿ is no Greek letter";
    const PlaylistContents mac = Parse_M3u("#EXTM3U\r#VELMORA:UserRating=5\ra.mp3\rb.mp3\r");
    ASSERT_EQ(mac.entries.size(), 2u) << "lines ended by CR alone";
    EXPECT_EQ(mac.entries[0].getItemInfo("UserRating"), "5");
    EXPECT_EQ(Detect_Encoding("\xC1\xE8\xDE\xED\xE1"), ListEncoding::Cp1253);
    EXPECT_EQ(Detect_Encoding("Ger\xE4t"), ListEncoding::Latin1);
    EXPECT_FALSE(Is_Utf8("\xC0\x80")) << "an overlong form is no UTF-8";
}

TEST_F(PlaylistInterchange, ExportWritesTheClassNumberAndYearThatImportReadsOtherwise) {
    std::vector<testing::TrackRow> rows{{"/m/a & b.mp3", 61.4, 5, 2, 192}, {"/m/plain.mp3", 0, 0, 0, 0}};
    testing::Fill_Tracks(ctx, rows);
    ctx.table.Artist[0] = "Άρτιστ", ctx.table.Title[0] = "Τίτλος", ctx.table.Year[0] = "1999";
    const std::string out = folder + "out.m3u8";
    ASSERT_TRUE(Write_Playlist_File(out, "c", Playlist_Entries(ctx)));
    EXPECT_EQ(testing::Bytes(out),
              "#EXTM3U\n"
              "#EXTINF:61,Άρτιστ - Τίτλος\n"
              "#VELMORA:UserRating=5\n#VELMORA:Filesize=2097152\n#VELMORA:Bitrate=192\n#VELMORA:Artist=Άρτιστ\n"
              "#VELMORA:Title=Τίτλος\n#VELMORA:Year=1999\n"
              "/m/a & b.mp3\n"
              "#EXTINF:-1,\n"
              "/m/plain.mp3\n");

    TestApp other;
    other.ctx.core.App_Path = folder;
    other.ctx.table.Collection_Saved = -1;
    Import_Playlist(other.ctx, 0, 0, out, out);
    const TrackTable& t = other.ctx.table;
    // The class number read as a rating of 5 in a hundred is class X, and
    // the year goes out as Year but comes in as WM/Year.
    EXPECT_EQ(std::tuple(t.Rating_Class[0], t.Year[0], t.Bitrate[0], t.File_Size[0], t.Duration[0]),
              std::tuple(int16_t{1}, std::string(), int16_t{192}, Currency(2), Currency(61)));
    EXPECT_EQ(other.ctx.form1.List3_0[1].List(0), "X");
}

TEST_F(PlaylistInterchange, TheOpenDialogRefusesWvxAndNamesTheCollectionAfterTheList) {
    ctx.table.Collection_Saved = -1;
    app.dialogs.ExpectFile(folder + "lists/x.wvx");
    app.dialogs.ExpectMsgBox(MsgAnswer::OK);
    Import_Playlist(ctx, 0, -1, "", "");
    EXPECT_EQ(app.dialogs.Messages().back().text,
              "Το όνομα πρέπει να τελειώνει σε [.wpl,.m3u,.wvx] should be the ending of the file");
    EXPECT_EQ(app.dialogs.FileDialogs().back().filter,
              "Windows Media Player PlayLists (*.wpl,*.m3u,*.wvx) | *.wpl;*.m3u;*.wvx");

    ctx.table.Collection_Saved = -1;
    testing::Put(folder + "lists/mix.m3u", folder + "m/a.mp3\n" + folder + "m/a.mp3\n");
    testing::Make_Files(app, {{folder + "m/a.mp3", 3}});
    app.dialogs.ExpectFile(folder + "lists/mix.m3u");
    Import_Playlist(ctx, 0, -1, "", "");
    EXPECT_EQ(ctx.collection.Collection_Path, folder + "velmora_sylloges/mix.qel");
    EXPECT_EQ(Paths(), Strings{folder + "m/a.mp3"});
    EXPECT_TRUE(Holds(app.Log(), "Νέα αρχεία - New Files :1\nΔιπλά αρχεία που δεν προστέθηκαν [υπάρχουν "
                                 "στη συλλογή] - Double Files that were not added [allready in Collection]:1"));
    EXPECT_EQ(ctx.table.Track_Count, 1);
    EXPECT_EQ(app.player.URL(), folder + "m/a.mp3") << "it starts playing";
}

TEST_F(PlaylistInterchange, TheRoomTestComparesTheCountLessOne) {
    std::string many;
    for (int i = 0; i <= kMaxTracks; ++i) many += "/m/" + std::to_string(i) + ".mp3\n";
    const std::string file = folder + "lists/many.m3u";
    testing::Put(file, many);
    // 32,767 entries pass the test of a new Collection; the last finds no row.
    const PlaylistImport run = Import_Playlist(ctx, 0, 0, file, file);
    EXPECT_EQ(std::pair(run.read, run.added), std::pair(true, kMaxTracks));
    EXPECT_EQ(testing::Count(app.Log(), "--> Δεν υπάρχει άλλος χώρος - No more space"), 1u);

    EXPECT_FALSE(Add("two.m3u", "/n/1.mp3\n/n/2.mp3\n").read) << "a full Collection takes no list of two";
    EXPECT_EQ(ctx.form1.List2.ListCount(), kMaxTracks);
}

}  // namespace
}  // namespace velmora

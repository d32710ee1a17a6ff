// Play list files against the real readers: Qt's XML reader for .wpl and
// .wvx, and libmpv walking a list this program wrote.

#include <gtest/gtest.h>
#include <mpv/client.h>

#include <QByteArray>
#include <QXmlStreamReader>
#include <chrono>
#include <filesystem>
#include <map>

#include "collection/playlist_export.h"
#include "collection/playlist_library.h"
#include "intake/playlist_import.h"
#include "media_folder.h"
#include "platform/qt_playlist_reader.h"
#include "support/test_app.h"
#include "support/track_rows.h"

namespace velmora {
namespace {

using testing::TestApp;
using Strings = std::vector<std::string>;

struct PlaylistFiles : ::testing::Test {
    TestApp app;
    AppContext& ctx = app.ctx;
    QtPlaylistReader reader;
    std::string folder = app.folder.Str();

    PlaylistFiles() {
        ctx.ports.playlists = &reader;
        ctx.program_folder = ctx.core.App_Path = folder;
        ctx.table.Collection_Saved = -1;
    }
    Strings Paths() const {
        const PackedTexts& items = ctx.form1.List2.Items();
        return Strings(items.begin(), items.end());
    }
};

bool Well_Formed(const std::string& bytes) {
    QXmlStreamReader xml(QByteArray::fromStdString(bytes));
    while (!xml.atEnd()) xml.readNext();
    return !xml.hasError();
}

TEST_F(PlaylistFiles, HandWrittenWplAndWvxImportWithTheirPathsAndAttributes) {
    const std::string lists = folder + "lists/";
    std::filesystem::create_directories(lists);
    testing::Put(lists + "hand.wpl",
                 "\xEF\xBB\xBF<?wpl version=\"1.0\"?>\r\n<smil>\r\n<head><title><![CDATA[Rock & <Roll>]]></title>"
                 "</head>\r\n<body><seq>\r\n"
                 "<media src=\"..\\Μουσική\\Ένα &amp; Δύο.mp3\" dur=\"3:25\"/>\r\n"
                 "<media src=\"file:///srv/m/%CE%B1%CE%B2 &#x26; three.mp3\"><param name=\"WM/Year\" value=\"2001\"/>"
                 "<param name=\"UserRating\" value=\"99\"/></media>\r\n"
                 "<media src=\"http://radio.example/live?a=1&amp;b=2\"/>\r\n"
                 "</seq></body></smil>\r\n");
    testing::Put(lists + "old.wvx",
                 "<ASX version=\"3.0\"><Entry><Title>Ωδή</Title><Duration VALUE=\"00:01:05\"/>"
                 "<REF HREF=\"sub/ode.mp3\"/></Entry><entry><ref href=\"\"/></entry></ASX>");
    Import_Playlist(ctx, -1, 0, lists + "hand.wpl", lists + "hand.wpl");
    Import_Playlist(ctx, -1, 0, lists + "old.wvx", lists + "old.wvx");
    EXPECT_EQ(Paths(), (Strings{folder + "Μουσική/Ένα & Δύο.mp3", "/srv/m/αβ & three.mp3",
                                "http://radio.example/live?a=1&b=2", lists + "sub/ode.mp3"}));
    const TrackTable& t = ctx.table;
    EXPECT_EQ(std::tuple(t.Duration[0], t.Year[1], t.Rating_Class[1], t.Title[3], t.Duration[3]),
              std::tuple(Currency(205), std::string("2001"), int16_t{5}, std::string("Ωδή"), Currency(65)));

    PlaylistContents read;
    std::string error;
    ASSERT_TRUE(Read_Playlist_File(ctx, lists + "hand.wpl", read, error)) << error;
    EXPECT_EQ(read.title, "Rock & <Roll>");
    testing::Put(lists + "not.wpl", "<html><body>no list</body></html>");
    EXPECT_FALSE(Read_Playlist_File(ctx, lists + "not.wpl", read, error));
    EXPECT_EQ(Clock_Seconds("1.5min"), 90);
    EXPECT_EQ(Clock_Seconds("1:00:01.5"), 3601.5);
    EXPECT_EQ(Clock_Seconds("abc"), 0);
}

TEST_F(PlaylistFiles, TheLibraryFindsItsListsByTitleAndAsksBeforeASecondOfOneName) {
    testing::Fill_Tracks(ctx, {{"/m/a\"<&>'.mp3", 10, 4}, {"/m/Ψ\x01.mp3", 0, 0}});
    ctx.collection.Collection_Path = folder + "velmora_sylloges/mine.qel";
    const std::string library = folder + "velmora_playlists/";
    auto export_answering = [&](std::vector<MsgAnswer> answers) {
        for (MsgAnswer a : answers) app.dialogs.ExpectMsgBox(a);
        Export_Playlist(ctx, "mine");
    };
    export_answering({MsgAnswer::Yes});
    ASSERT_TRUE(std::filesystem::exists(library + "mine.wpl"));
    const std::string written = testing::Bytes(library + "mine.wpl");
    EXPECT_TRUE(Well_Formed(written)) << written;
    export_answering({MsgAnswer::Yes, MsgAnswer::Yes});
    EXPECT_TRUE(std::filesystem::exists(library + "mine (2).wpl")) << "Yes to the second question makes another";
    // Two of the name: the first is written without a question.
    ctx.form1.List2.SetList(1, "/m/changed.mp3");
    export_answering({MsgAnswer::Yes});
    EXPECT_EQ(Playlists_Named(ctx, "mine"), (Strings{library + "mine (2).wpl", library + "mine.wpl"}));
    PlaylistContents first;
    std::string error;
    ASSERT_TRUE(Read_Playlist_File(ctx, library + "mine (2).wpl", first, error)) << error;
    ASSERT_EQ(first.entries.size(), 2u);
    EXPECT_EQ(std::tuple(first.title, first.entries[0].source, first.entries[0].getItemInfo("UserRating"),
                         first.entries[1].source),
              std::tuple(std::string("mine"), std::string("/m/a\"<&>'.mp3"), std::string("4"),
                         std::string("/m/changed.mp3")));
    EXPECT_NE(ctx.form1.Text2[0].Text().find("--> Αλλαγές - Changes :0"), std::string::npos);
}

// What libmpv makes of a list: the files it played to their end, in order.
Strings Played_By_Mpv(const std::string& list) {
    mpv_handle* mpv = mpv_create();
    if (mpv == nullptr) return {"libmpv is missing"};
    mpv_set_option_string(mpv, "ao", "null");
    mpv_set_option_string(mpv, "vo", "null");
    mpv_set_option_string(mpv, "idle", "yes");
    Strings played;
    if (mpv_initialize(mpv) >= 0) {
        const char* load[] = {"loadlist", list.c_str(), nullptr};
        mpv_command(mpv, load);
        // The entries by id, read before they play: the end events name their
        // entry by id, and a property read when an event is taken may already
        // describe the next entry on a loaded machine.
        std::map<int64_t, std::string> files;
        int64_t count = 0;
        mpv_get_property(mpv, "playlist-count", MPV_FORMAT_INT64, &count);
        for (int64_t i = 0; i < count; ++i) {
            const std::string entry = "playlist/" + std::to_string(i);
            int64_t id = -1;
            mpv_get_property(mpv, (entry + "/id").c_str(), MPV_FORMAT_INT64, &id);
            mpv_node file;
            if (mpv_get_property(mpv, (entry + "/filename").c_str(), MPV_FORMAT_NODE, &file) < 0) continue;
            if (file.format == MPV_FORMAT_STRING) files[id] = file.u.string;
            mpv_free_node_contents(&file);
        }
        const auto deadline = std::chrono::steady_clock::now() + std::chrono::seconds(30);
        bool begun = false;
        while (std::chrono::steady_clock::now() < deadline) {
            const mpv_event* e = mpv_wait_event(mpv, 1.0);
            if (e->event_id == MPV_EVENT_START_FILE) {
                begun = true;
            } else if (e->event_id == MPV_EVENT_END_FILE) {
                const auto* end = static_cast<const mpv_event_end_file*>(e->data);
                if (end->reason == MPV_END_FILE_REASON_EOF) played.push_back(files[end->playlist_entry_id]);
            } else if (e->event_id == MPV_EVENT_IDLE && begun) {
                break;
            }
        }
    }
    mpv_terminate_destroy(mpv);
    return played;
}

TEST_F(PlaylistFiles, AWrittenListPlaysEveryEntryInLibmpv) {
    static const testing::MediaFolder media([](testing::MediaFolder& f) {
        for (const char* name : {"one.mp3", "δύο & τρία.mp3", "four #4.mp3"})
            f.Ffmpeg("-f lavfi -i sine=frequency=440:duration=0.3 " + f.Q(name));
    });
    ASSERT_EQ(media.error, "");
    const Strings files{media.Path("one.mp3"), media.Path("δύο & τρία.mp3"), media.Path("four #4.mp3")};
    std::vector<testing::TrackRow> rows;
    for (const std::string& file : files) rows.push_back({file, 1, 3});
    testing::Fill_Tracks(ctx, rows);
    ASSERT_TRUE(Write_Playlist_File(folder + "out.m3u8", "out", Playlist_Entries(ctx)));
    EXPECT_EQ(Played_By_Mpv(folder + "out.m3u8"), files);
}

}  // namespace
}  // namespace velmora

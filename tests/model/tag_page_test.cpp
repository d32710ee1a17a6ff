#include "desktop/tag_page.h"

#include <gtest/gtest.h>

#include <cmath>
#include <filesystem>
#include <tuple>

#include "metadata/album_art.h"
#include "metadata/search_links.h"
#include "playback_fixture.h"

namespace velmora {
namespace {

using namespace testing;

// A program playing the first of two Tracks 30 seconds in, its file's title "Old".
struct Tagging : Player {
    Tagging() : Player(2, 100.0) {
        for (int i = 0; i < 2; ++i) {
            reader.SetDuration(Path(i), 100);
            reader.SetAttribute(Path(i), "Title", "Old");
        }
        PressThenRun(30'000);
        file = ctx.playback.Current_File;
    }
    // The player's library holds these lists under the Collection's name.
    void Lists(std::vector<std::vector<std::string>> lists) {
        ctx.metadata.Playlists_Named = [lists](const std::string&) { return lists; };
    }
    void Type(int box, const std::string& text) {
        ctx.core.Suppress_Events = true;
        ctx.form1.Text1[box].SetText(text);
        ctx.core.Suppress_Events = false;
    }
    std::string InFile(const char* name) { return reader.newMedia(file)->getItemInfo(name); }
    int Position() { return static_cast<int>(std::lround(player.currentPosition().value_or(-1))); }
    std::string file;
};

constexpr const char* kSaved = " Επιτυχημένη Αποθήκευση - Saving succeded\n";

TEST(TagPage, SavesThroughTheListNamedAfterTheCollectionAsksAfterAnEditFindsTheArtAndKeepsLinks) {
    Tagging app;
    ASSERT_FALSE(app.file.empty());
    ASSERT_EQ(app.ctx.form1.Text1[0].Text(), "Old");
    app.Type(0, "Νέος");
    app.Type(3, "2001");
    for (auto lists : {std::vector<std::vector<std::string>>{}, {{app.file}, {app.file}}, {{app.Path(1)}}}) {
        app.Lists(lists);
        app.ctx.form1.Command14.Click.emit();
        app.loop.RunPosted();
        EXPECT_EQ(app.InFile("Title"), "Old") << lists.size() << " lists";
    }
    EXPECT_EQ(testing::Count(app.Log(), kSaved), 3u);

    const int before = app.Position();
    app.Lists({{app.Path(1), app.file}});
    app.ctx.form1.Command14.Click.emit();
    app.loop.RunPosted();
    // The year is written under its other name.
    EXPECT_EQ(std::tuple(app.InFile("Title"), app.InFile("Year"), app.InFile("WM/Year")),
              std::tuple("Νέος", "2001", ""));
    const int row = app.ctx.table.Current_Track;
    EXPECT_EQ(std::tuple(app.ctx.table.Title[row], app.ctx.table.Year[row], app.ctx.table.Saved[row]),
              std::tuple("Νέος", "2001", false));
    EXPECT_EQ(std::tuple(app.player.URL(), app.Position(), app.player.playState()),
              std::tuple(app.file, before, PS_Playing))
        << "the playing file was let go and taken up again at the same second";

    // A finished edit asks, and either way the boxes show the file again.
    app.Lists({{app.file}});
    app.dialogs.ExpectMsgBox(MsgAnswer::No);
    app.ctx.form1.Text1[1].SetText("Σωκράτης");
    ASSERT_FALSE(app.dialogs.Messages().empty());
    EXPECT_EQ(app.dialogs.Messages().back().text,
              "Θα αποθηκεύσετε ό,τι γράψατε; - Are you willing to store what you typed?\nΑρχείο - File :" + app.file +
                  "\nΤίτλος - Title:     Νέος\nΚαλλιτέχνης - Artist:     Σωκράτης\nΆλμπουμ - Album:     \n"
                  "Έτος - Year:     2001\nΣχόλιο - Comment:     \nΕίδος - Genre");
    EXPECT_EQ(std::tuple(app.ctx.form1.Text1[1].Text(), app.InFile("Artist"), app.ctx.metadata.Tag_Dirty),
              std::tuple("", "", false));

    app.dialogs.ExpectMsgBox(MsgAnswer::Yes);
    app.ctx.form1.Text1[1].SetText("Σωκράτης");
    app.loop.RunPosted();
    EXPECT_EQ(std::tuple(app.ctx.form1.Text1[1].Text(), app.InFile("Artist")), std::tuple("Σωκράτης", "Σωκράτης"));

    // The small picture wins, then the folder one, then the file's own.
    namespace fs = std::filesystem;
    const fs::path folder = fs::path(app.file).parent_path();
    testing::Put(folder / "AlbumArtSmall.jpg", "small");
    testing::Put(folder / "folder.JPG", "big");
    app.reader.SetAttribute(app.file, "WM/Picture", "inside");
    Show_Album_Art(app.ctx);
    EXPECT_EQ(std::tuple(app.ctx.form1.Picture1.Picture(), app.ctx.form4.Picture1.Picture()),
              std::tuple((folder / "AlbumArtSmall.jpg").string(), (folder / "AlbumArtSmall.jpg").string()));
    fs::remove(folder / "AlbumArtSmall.jpg");
    EXPECT_EQ(Album_Art_Of(app.ctx, app.file), (folder / "folder.JPG").string()) << "found in any case";
    fs::remove(folder / "folder.JPG");
    EXPECT_EQ(Album_Art_Of(app.ctx, app.file), std::string(kEmbeddedPicture) + "inside");
    EXPECT_EQ(Album_Art_Of(app.ctx, app.Path(1)), "");

    Form1& f = app.ctx.form1;
    EXPECT_EQ(std::tuple(f.Combo3.ListIndex(), f.Check1.Value(), f.Option2[0].Value()), std::tuple(0, 1, -1));
    const size_t asked = app.dialogs.Messages().size();
    app.dialogs.ExpectMsgBox(MsgAnswer::OK);
    app.dialogs.ExpectMsgBox(MsgAnswer::OK);
    f.Command13.Click.emit();  // nothing typed: the example, then the want of "www"
    EXPECT_EQ(app.dialogs.Messages().size(), asked + 2);
    EXPECT_TRUE(Holds(app.dialogs.Messages()[asked].text, std::string(f.Combo3.List(0))));
    f.Text2[3].SetText("https://www.example.org/find?q=");
    f.Command13.Click.emit();
    EXPECT_EQ(std::tuple(f.Combo3.ListCount(), f.Combo3.ListIndex()), std::tuple(4, 3));
    EXPECT_EQ(app.ctx.settings.Search_Links.back(), "https://www.example.org/find?q=");

    f.Option2[0].SetValue(0);
    f.Option2[1].SetValue(-1);
    for (int row : {0, 2}) {
        f.Combo3.SetListIndex(row);
        app.dialogs.ExpectMsgBox(MsgAnswer::OK);
        f.Command13.Click.emit();
    }
    EXPECT_EQ(f.Combo3.ListCount(), 4) << "the built-in rows stay";

    // The search goes to row 0 whatever row is on show.
    f.Combo3.SetListIndex(3);
    app.Type(0, "Ωδή Α");
    app.Type(1, "Pink");
    f.Command6[1].Click.emit();
    EXPECT_EQ(app.shell.clipboard, "Ωδή Α - Pink");
    ASSERT_FALSE(app.shell.opened.empty());
    EXPECT_EQ(app.shell.opened.back(), std::string(f.Combo3.List(0)) + "%CE%A9%CE%B4%CE%AE%20%CE%91%20-%20Pink");

    app.dialogs.ExpectMsgBox(MsgAnswer::Yes);
    f.Command13.Click.emit();
    EXPECT_EQ(std::tuple(f.Combo3.ListCount(), app.ctx.settings.Search_Links), std::tuple(3, std::vector<std::string>{""}));

    // With the search off only the clipboard changes; empty boxes give the file's name.
    const size_t opened = app.shell.opened.size();
    f.Check1.SetValue(0);
    app.Type(0, "");
    app.Type(1, "");
    f.List2.SetListIndex(1);
    f.Command6[1].Click.emit();
    EXPECT_EQ(std::tuple(app.shell.clipboard, app.shell.opened.size()),
              std::tuple(std::filesystem::path(app.Path(1)).filename().string(), opened));
}

}  // namespace
}  // namespace velmora

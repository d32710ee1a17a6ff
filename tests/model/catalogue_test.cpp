// The catalogue: the nine boxes, the fixed-width rows, the query and the
// two searches, on a small Collection with long, empty and Greek fields.

#include <gtest/gtest.h>

#include "app/handlers.h"
#include "base/char_span.h"
#include "catalogue/catalogue_search.h"
#include "catalogue/filter_building.h"
#include "catalogue/filter_fields.h"
#include "catalogue/filter_query.h"
#include "collection/collection_file.h"
#include "ratings/rating_marks.h"
#include "support/test_app.h"
#include "support/track_rows.h"

namespace velmora {
namespace {

using testing::TestApp;
using Strings = std::vector<std::string>;

std::string B(int n) { return std::string(static_cast<size_t>(n), ' '); }

struct Catalogue : ::testing::Test {
    TestApp app;
    Form1& f = app.ctx.form1;
    TrackTable& t = app.ctx.table;

    // Three Tracks: a full Greek one, one with a title past its width and a
    // genre in other case, one without any tag.
    Catalogue() {
        testing::Fill_Tracks(app.ctx, {{"/μουσική/Χατζιδάκις/Ο κύκλος.mp3", 221, 5, 8.45, 320},
                                       {"/m/long.flac", 2 * 3600 + 3 * 60 + 9, 4, 1024, 0},
                                       {"/m/x/bare.mp3", 65, 0, 0.5, 128}});
        Tag(0, "Ο κύκλος", "Λαϊκό", "Χατζιδάκις", "", "1965");
        Tag(1, std::string(50, 'T'), "ΛΑΪΚΌ", "Theodorakis", "Zorba the Greek", "1964");
        EXPECT_TRUE(Wire_Handlers(app.ctx).empty());
    }
    void Tag(int i, std::string title, std::string genre, std::string artist, std::string album, std::string year) {
        t.Title[i] = std::move(title), t.Genre[i] = std::move(genre), t.Artist[i] = std::move(artist);
        t.Album[i] = std::move(album), t.Year[i] = std::move(year);
    }
    void Build() { Remake_Filters(app.ctx); }
    void Choose(int box, const std::string& text) {
        f.Combo4_0[box].SetText(text);
        f.Combo4_0[box].Change_.emit();
    }
    // The Track numbers a result list holds, behind its two head rows.
    static std::vector<int> Tracks(const ListBox& list) {
        std::vector<int> out;
        for (int r = 2; r < list.ListCount(); ++r) out.push_back(Row_Track_Number(list.List(r)));
        return out;
    }
};

// The rows are kept with their runs of blanks counted: every row reads back
// as it was stored, whatever its blanks and bytes.
TEST(FilterRows, EveryRowReadsBackAsStored) {
    const Strings rows = {"", " ", "a  b", "a   b", B(255), B(256) + "|", B(600), "x\x01" + B(3) + "\x01", "Ω" + B(44) + "|",
                           // the longest packed form: every byte doubled
                           std::string(600, '\x01')};
    FilterRows packed;
    packed.assign(rows.size());
    for (size_t i = 0; i < rows.size(); ++i) packed.Set(i, rows[i]);
    EXPECT_TRUE(packed == rows);
    packed.Set(1, rows[6]);  // a row replaced keeps its neighbours
    EXPECT_EQ(std::tuple(packed[0], packed[1], packed[2]), std::tuple(rows[0], rows[6], rows[2]));
}

TEST_F(Catalogue, RowsHaveTheirFixedWidthsCarryTheTrackNumberAndFollowChanges) {
    Build();
    const std::string greek = "Ο κύκλος" + B(37) + "|Κλάση Υ΄ - Class S" + B(2) + "|00:03:41 |08.45Mb" + B(3) +
                              "|320Kbps|Λαϊκό" + B(10) + "|Χατζιδάκις" + B(10) + "|" + B(50) + "|1965|Ο κύκλος.mp3" +
                              B(48) + "|/μουσική/Χατζιδάκις/" + B(236) + "|";
    const std::string cut = std::string(45, 'T') + "|Κλάση Α΄ - Class A" + B(2) + "|02:03:09 |01.00Gb" + B(3) +
                            "|Kbps   |ΛΑΪΚΌ" + B(10) + "|Theodorakis" + B(9) + "|Zorba the Greek" + B(35) +
                            "|1964|long.flac" + B(51) + "|/m/" + B(253) + "|";
    const std::string bare = B(45) + "|Ασημείωτα - Unmarked|00:01:05 |00.50Mb" + B(3) + "|128Kbps|" + B(15) + "|" +
                             B(20) + "|" + B(50) + "|" + B(4) + "|bare.mp3" + B(52) + "|/m/x/" + B(251) + "|";
    const CatalogueState& c = app.ctx.catalogue;
    EXPECT_TRUE(c.Filter_Text == (Strings{greek, cut, bare}));
    ASSERT_EQ(f.List5.ListCount(), 5);
    EXPECT_EQ(f.List5.List(2), "000001|000001|" + greek);
    EXPECT_EQ(f.List5.List(0).rfind("FILTER| TOTAL|          ΤΙΤΛΟΣ - TITLE" + B(21) + "|ΠΡΟΤΙΜΗΣΗ - FAVORITE|", 0), 0u);
    EXPECT_EQ(f.List5.List(1), "~~~~~~|~~~~~~|" + std::string(45, '~') + "|" + std::string(20, '~') + "|" +
                                   std::string(9, '~') + "|" + std::string(10, '~') + "|" + std::string(7, '~') + "|" +
                                   std::string(15, '~') + "|" + std::string(20, '~') + "|" + std::string(50, '~') +
                                   "|" + std::string(4, '~') + "|" + std::string(60, '~') + "|" +
                                   std::string(256, '~') + "|");
    EXPECT_EQ(Tracks(f.List5), (std::vector<int>{1, 2, 3}));
    EXPECT_TRUE(f.List5.Visible() && !f.List4.Visible() && f.Frame12.Enabled() && !c.Filtering);

    // A change of class patches the class field of the cached row and its list row.
    t.Current_Track = 2;
    Command8_Click(app.ctx);
    EXPECT_EQ(Char_Mid(c.Filter_Text[2], 46, 22), "|Κλάση X - Class X" + B(3) + "|");
    EXPECT_EQ(f.List5.List(4), "000003|000003|" + c.Filter_Text[2]);

    // A removal makes the next query rebuild the rows, and the side file must follow.
    app.ctx.settings.Delete_From_Disk = 0;
    f.List2.SetSelected(0, true);
    Compact_TrackTable(t, 0, f.List2.ListCount());
    f.List2.RemoveItem(0);
    for (ListBox& mirror : f.List3_0) mirror.RemoveItem(0);
    t.Track_Count = 2;
    t.Filters_Changed = 0;
    Choose(6, "theo");
    EXPECT_EQ(c.Filter_Text.size(), 2u);
    EXPECT_EQ(Tracks(f.List5), (std::vector<int>{1, 2})) << "rebuilt instead of queried";
    EXPECT_EQ(t.Filters_Changed, -1);
}

TEST_F(Catalogue, BoxesListEachValueOnceInTheirOrder) {
    Build();
    EXPECT_EQ(f.Combo4_0[1].Items(), (Strings{"00:01", "00:03"})) << "2 h 3 min lists as 00:03";
    EXPECT_EQ(f.Combo4_0[2].Items(), (Strings{"0.50Mb", "1.00Gb", "8.45Mb"}));
    EXPECT_EQ(f.Combo4_0[3].Items(), (Strings{"0Kbps", "128Kbps", "320Kbps"}));
    EXPECT_EQ(f.Combo4_0[4].Items(), (Strings{"Λαϊκό"})) << "the first spelling, once";
    EXPECT_EQ(f.Combo4_0[6].Items(), (Strings{"Theodorakis", "Χατζιδάκις"}));
    EXPECT_EQ(f.Combo4_0[5].Items(), (Strings{"Zorba the Greek"})) << "an empty tag is not listed";

    Choose(6, "Theo");
    f.Combo4_0[1].SetListIndex(1);
    Reboot_Filters(app.ctx);
    for (const ComboBox& box : f.Combo4_0) EXPECT_EQ(std::tuple(box.Text(), box.ListIndex()), std::tuple("", -1));
    EXPECT_EQ(app.ctx.catalogue.Any_Filter, 0);
    Clear_Filters(app.ctx);
    EXPECT_EQ(f.Combo4_0[0].ListCount(), 6);
    for (int k = 1; k < 9; ++k) EXPECT_EQ(f.Combo4_0[k].ListCount(), 0) << k;
    EXPECT_EQ(f.List4.ListCount() + f.List5.ListCount(), 0);
}

TEST_F(Catalogue, ChoicesCombineAcrossBoxesAndMatchInsideOne) {
    Build();
    Choose(4, "λαϊ");  // a part of the genre, in other case: Tracks 1 and 2
    EXPECT_EQ(Tracks(f.List4), (std::vector<int>{1, 2}));
    EXPECT_TRUE(f.List4.Visible() && !f.List5.Visible());
    EXPECT_EQ(f.List4.List(3).substr(0, 14), "000002|000002|") << "the running count, then the Track";
    f.Combo4_0[7].SetListIndex(0);  // and the year 1964
    EXPECT_EQ(Tracks(f.List4), (std::vector<int>{2}));
    EXPECT_EQ(f.List4.List(2).substr(0, 14), "000001|000002|");

    // The class box alone is a filter like any other.
    Reboot_Filters(app.ctx);
    f.Combo4_0[0].SetListIndex(0);
    EXPECT_EQ(Tracks(f.List4), (std::vector<int>{3}));

    // A click on a result goes to its Track; on a head row, nowhere.
    f.List4.SetListIndex(2);
    f.List4.MouseDown.emit();
    EXPECT_EQ(std::tuple(f.List2.ListIndex(), f.List3_0[4].ListIndex()), std::tuple(2, 2));
    f.List2.SetListIndex(0);
    f.List4.SetListIndex(1);
    f.List4.MouseDown.emit();
    EXPECT_EQ(f.List2.ListIndex(), 0);

    // "All" shows every row again.
    f.Command16[1].Click.emit();
    EXPECT_TRUE(f.List5.Visible() && !f.List4.Visible());
    EXPECT_EQ(f.Combo4_0[0].Text(), "");
}

TEST_F(Catalogue, SearchesSelectTheRowsHoldingTheTextNeverAHeadRow) {
    Build();
    f.Text2[4].SetText("");
    app.dialogs.ExpectMsgBox(MsgAnswer::OK);
    f.Command17.Click.emit();
    EXPECT_EQ(app.dialogs.Messages().back().text, "Πληκτρολογήστε κείμενο για αναζήτηση - Type text to search");

    f.Text2[4].SetText("  ΚΎΚΛΟΣ ");  // trimmed, without regard to case
    f.List5.SetSelected(3, true);
    f.Command17.Click.emit();
    EXPECT_EQ(std::tuple(f.List5.Selected(2), f.List5.Selected(3), f.List5.ListIndex()), std::tuple(true, false, 2));
    f.Text2[4].SetText("|");  // every row holds it, the heads too
    f.Command17.Click.emit();
    EXPECT_EQ(std::tuple(f.List5.Selected(0), f.List5.Selected(1), f.List5.SelCount()), std::tuple(false, false, 3));

    // The catalogue search empties the boxes and looks through List4, as
    // the last query left it, from its first row.
    Choose(6, "a");
    f.Text2[3].SetText("zorba");
    f.Command6[0].Click.emit();
    EXPECT_EQ(std::tuple(f.Combo4_0[6].Text(), f.MultiPage1.Value()), std::tuple("", 1));
    EXPECT_EQ(f.List4.ListIndex(), 2) << "Theodorakis's row, the one the last query left";
    EXPECT_TRUE(f.List5.Visible());
}

TEST_F(Catalogue, TheSideFileGivesBackTheSameLists) {
    app.ctx.collection.Collection_Path = app.folder.Str() + "velmora_sylloges/c.qel";
    std::filesystem::create_directories(app.folder.Str() + "velmora_sylloges");
    Build();
    Save_Collection(app.ctx, false, true);
    std::array<Strings, 9> boxes;
    for (int k = 0; k < 9; ++k) boxes[k] = Strings(f.Combo4_0[k].Items().begin(), f.Combo4_0[k].Items().end());
    const Strings rows(f.List5.Items().begin(), f.List5.Items().end());
    const std::string cached0 = app.ctx.catalogue.Filter_Text[0];

    TestApp next;
    next.ctx.core.App_Path = app.ctx.core.App_Path;
    next.ctx.collection.Collection_Path = app.ctx.collection.Collection_Path;
    next.ctx.settings.Filters_Load = -1;
    ASSERT_TRUE(Load_Collection(next.ctx));
    for (int k = 0; k < 9; ++k) EXPECT_EQ(next.ctx.form1.Combo4_0[k].Items(), boxes[k]) << k;
    EXPECT_EQ(next.ctx.form1.List5.Items(), rows);
    // The reader keeps each row at its list index, two past its Track.
    EXPECT_EQ(next.ctx.catalogue.Filter_Text[2], cached0);
}

}  // namespace
}  // namespace velmora

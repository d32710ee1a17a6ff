#include "catalogue/track_list_totals.h"

#include <gtest/gtest.h>

#include "base/collection_records.h"
#include "base/record_file.h"
#include "collection/collection_file.h"
#include "playback_fixture.h"

namespace velmora {
namespace {

using testing::Player;

const std::string kTen(10, ' ');

TEST(TrackListTotals, CountsPercentPathClassesTheSecondWindowAndTheSave) {
    Player app(3, 10.0);
    TrackTable& t = app.ctx.table;
    app.ctx.collection.Collection_Path = "/c/Συλλογή.qel";
    app.ctx.form1.List2.Clear();
    Etiketes_Synol_Songs(app.ctx);
    EXPECT_EQ(app.ctx.form1.Text6.Text(), "") << "an empty list";
    EXPECT_EQ(app.ctx.form1.Caption(), "VELMORA II ---> /c/Συλλογή.qel [00.00%]");
    for (int i = 0; i < 3; ++i) app.ctx.form1.List2.AddItem(app.Path(i));

    t.Played_Number = {1, 2, 0, 0};
    t.Played_Count = t.Played_High = 2;
    t.Current_Track = 1;
    app.ctx.settings.Random_Order = 0;
    Etiketes_Synol_Songs(app.ctx);

    const Form1& f = app.ctx.form1;
    EXPECT_EQ(f.Caption(), "VELMORA II ---> /c/Συλλογή.qel [66.67%]");
    EXPECT_EQ(f.Label6.Caption(), "Σειριακή Αναπαραγωγή - Serial Play");
    EXPECT_EQ(f.Label3[0].Caption(),
              "Τρέχων - Current: 2" + kTen + "Όλα - Total: 3" + kTen + "Εναπομείναντα - Remaining: 1");
    EXPECT_EQ(std::tuple(f.Text6.Text(), f.Text6.SelStart(), f.Text6.SelLength()),
              std::tuple(app.Path(1), static_cast<int>(app.Path(1).size()) - 13, 13));
    Settle_Played_Duration(app.ctx);
    EXPECT_EQ(app.ctx.playback.Played_Duration, Currency(10)) << "the Tracks before the current one";
    EXPECT_EQ(app.ctx.form4.Label4.Caption(), f.Label3[0].Caption());
    // The first 38 characters of the caption and the last 56 of the counts.
    EXPECT_EQ(app.ctx.form4.Caption(), "VELMORA II ---> /c/Συλλογή.qel [66.67% ...... " + std::string(4, ' ') +
                                           "Όλα - Total: 3" + kTen + "Εναπομείναντα - Remaining: 1");

    t.Played_Count = 1;
    Etiketes_Synol_Songs(app.ctx);
    EXPECT_EQ(f.Label6.Caption(), "Σειριακή Αναπαραγωγή [σε οπισθοδρόμηση] -> [-1] <- Serial Play [in backtracking]");

    // Playing only S: the class counts stand in brackets, all 0 while the class total is.
    t.Played_Count = 2;
    t.Any_Class_Play = -1;
    t.Class_Play = {0, 0, 0, 0, 0, -1};
    t.Rating_Class = {5, 2, 5, 0};
    Etiketes_Synol_Songs(app.ctx);
    EXPECT_EQ(f.Label3[0].Caption(),
              "Τρέχων - Current: 2 [0]" + kTen + "Όλα - Total: 3 [0]" + kTen + "Εναπομείναντα - Remaining: 1 [0]");
    app.ctx.ratings.Class_Total_Count = 3;
    Etiketes_Synol_Songs(app.ctx);
    EXPECT_EQ(f.Label3[0].Caption(),
              "Τρέχων - Current: 2 [1]" + kTen + "Όλα - Total: 3 [3]" + kTen + "Εναπομείναντα - Remaining: 1 [2]");
    EXPECT_EQ(f.Caption(), "VELMORA II ---> /c/Συλλογή.qel [33.33%]  [66.67%]");

    // The walk leaves the duration played to be counted when it is read; the
    // save reads it, and must write the count of the rows as they stand.
    t.Any_Class_Play = 0;
    t.Played_Number = {1, 2, 3, 0};
    t.Played_Count = t.Played_High = 3;
    t.Current_Track = 2;
    Etiketes_Synol_Songs(app.ctx);
    app.ctx.collection.Collection_Path = app.folder.Str() + "velmora_sylloges/velmora.qel";
    ASSERT_TRUE(Save_Collection(app.ctx, false, true)) << app.ctx.collection.Save_Fault;
    RecordFile main;
    ASSERT_TRUE(main.Open(app.ctx.collection.Collection_Path, kMainRecordLength, RecordFile::Mode::ReadOnly));
    Currency stored;
    ASSERT_TRUE(main.GetCurrency(main_record::kPlayedDuration, stored));
    EXPECT_EQ(stored, Currency(20)) << "the two Tracks before the current one";
}

TEST(TrackListTotals, ALongCollectionPathIsShortenedFrom110Characters) {
    for (int length : {109, 110}) {
        Player app(1);
        // Greek letters count as one character each, though they take two bytes.
        std::string path = "/";
        for (int i = 1; i < length; ++i) path += i % 2 ? "α" : "b";
        app.ctx.collection.Collection_Path = path;
        Etiketes_Synol_Songs(app.ctx);
        const std::string& caption = app.ctx.form1.Caption();
        if (length == 109) {
            EXPECT_EQ(caption, "VELMORA II ---> " + path + " [100.00%]");
        } else {
            std::string head = "/", tail;
            for (int i = 1; i < 40; ++i) head += i % 2 ? "α" : "b";
            for (int i = length - 65; i < length; ++i) tail += i % 2 ? "α" : "b";
            EXPECT_EQ(caption, "VELMORA II ---> " + head + "....." + tail + " [100.00%] ");
        }
    }
}

}  // namespace
}  // namespace velmora

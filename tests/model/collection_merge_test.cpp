#include <gtest/gtest.h>

#include "collection/collection_file.h"
#include "core/app_context.h"
#include "desktop/collection_merge.h"
#include "support/holds.h"
#include "support/test_app.h"
#include "support/track_rows.h"

namespace velmora {
namespace {

using testing::Holds;
using testing::TestApp;
using testing::TrackRow;

struct CollectionMerge : ::testing::Test {
    TestApp app;
    AppContext& ctx = app.ctx;
    std::string folder = app.folder.Str();
    std::string collections = folder + "velmora_sylloges/";

    CollectionMerge() { ctx.program_folder = ctx.core.App_Path = folder; }

    // The open Collection: these rows, saved as `name`.
    void Open(const std::vector<TrackRow>& rows, const std::vector<int32_t>& played = {}) {
        testing::Fill_Tracks(ctx, rows);
        for (size_t i = 0; i < played.size(); ++i) ctx.table.Played_Number[i] = played[i];
        ctx.collection.Collection_Path = collections + "here.qel";
        ctx.table.Collection_Saved = -1;
    }
    // The menu command choosing `other`, with the answer to the played question.
    void Merge(const std::string& other, MsgAnswer played = MsgAnswer::Yes) {
        app.dialogs.ExpectMsgBox(MsgAnswer::Yes);
        app.dialogs.ExpectFile(other);
        app.dialogs.ExpectMsgBox(played);
        MnuFileMerge_Click(ctx);
    }
    std::vector<int32_t> Played() const {
        return {ctx.table.Played_Number.begin(), ctx.table.Played_Number.begin() + ctx.table.Track_Count};
    }
};

TEST_F(CollectionMerge, RowsComeWithEveryStoredColumnAndPlayedNumbersShiftOrClear) {
    // The imported played order goes behind the present one. The shift takes
    // the last rows by the other's count, its double included, plus one: two
    // rows that stood before the merge shift with them.
    const std::string other = testing::Write_Collection(
        folder, "other", {{folder + "o/d.mp3", 61, 5, 2.5, 192}, {folder + "o/e.mp3", 5}, {folder + "m/track_000.mp3"},
                          {folder + "o/f.mp3", 7, 2}},
        {1, 0, 9, 2});
    Open(testing::Numbered_Rows(folder + "m", 3, 10), {1, 3, 2});
    Merge(other);
    const PackedTexts& paths = ctx.form1.List2.Items();
    ASSERT_EQ(ctx.table.Track_Count, 6);
    EXPECT_EQ(std::vector<std::string>(paths.begin(), paths.end()),
              (std::vector<std::string>{folder + "m/track_000.mp3", folder + "m/track_001.mp3",
                                        folder + "m/track_002.mp3", folder + "o/d.mp3", folder + "o/e.mp3",
                                        folder + "o/f.mp3"}));
    EXPECT_EQ(Played(), (std::vector<int32_t>{1, 3 + 3, 2 + 3, 1 + 3, 0, 2 + 3}));
    const TrackTable& t = ctx.table;
    EXPECT_EQ(std::tuple(t.Rating_Class[3], t.Duration[3], t.Bitrate[3], t.Rating_Class[5]),
              std::tuple(int16_t{5}, Currency(61), int16_t{192}, int16_t{2}));
    EXPECT_EQ(ctx.form1.List3_0[1].List(3), "S");
    EXPECT_EQ(ctx.form1.List3_0[3].List(3), Size_Text(Currency::FromDouble(2.5)));
    EXPECT_FALSE(t.Saved[3]);
    EXPECT_EQ(t.Class_Count[5], Currency(1));

    // No to the played question clears the same tail instead.
    ctx.collection.Collection_Path = collections + "here.qel";
    Merge(testing::Write_Collection(folder, "more", {{folder + "o/g.mp3", 6}}, {4}), MsgAnswer::No);
    EXPECT_EQ(Played(), (std::vector<int32_t>{1, 6, 5, 4, 0, 0, 0}));
}

TEST_F(CollectionMerge, TheLimitCountsEveryRowOfTheOtherAndRefusesLeavingTheRowsAlone) {
    auto rows = testing::Numbered_Rows(folder + "m", kMaxTracks - 2, 0);
    Open(rows);
    // One of the other's rows is a double: it is counted against the limit all the same.
    const std::string two = testing::Write_Collection(folder, "two", {rows[0], {folder + "o/new.mp3"}});
    const std::string three =
        testing::Write_Collection(folder, "three", {rows[0], {folder + "o/a.mp3"}, {folder + "o/b.mp3"}});

    app.dialogs.ExpectMsgBox(MsgAnswer::Yes);
    app.dialogs.ExpectFile(three);
    app.dialogs.ExpectMsgBox(MsgAnswer::OK);
    MnuFileMerge_Click(ctx);
    EXPECT_EQ(app.dialogs.Messages().back().text,
              "Η παρούσα συλλογή μαζί με την νέα ξεπερνούν το όριο κομματιών -->  32766 <-- New Collection plus the "
              "old exceeds this limit!");
    EXPECT_EQ(app.dialogs.Messages().back().icon, MsgIcon::Critical);
    EXPECT_EQ(ctx.form1.List2.ListCount(), kMaxTracks - 2);
    EXPECT_EQ(ctx.table.Track_Count, kMaxTracks - 2);

    ctx.collection.Collection_Path = collections + "here.qel";
    Merge(two);
    EXPECT_EQ(ctx.table.Track_Count, kMaxTracks - 1);
    EXPECT_EQ(ctx.form1.List2.List(kMaxTracks - 2), folder + "o/new.mp3");
}

TEST_F(CollectionMerge, ItselfAddsNothingAndWrongEndingTheSameCollectionAndAnotherVersionAreRefused) {
    const auto rows = testing::Numbered_Rows(folder + "m", 2, 10);
    Open(rows, {1, 2});
    Merge(testing::Write_Collection(folder, "copy", rows));
    EXPECT_EQ(std::tuple(ctx.form1.List2.ListCount(), ctx.table.Track_Count), std::tuple(2, 2));
    EXPECT_TRUE(Holds(app.Log(), "--> Νέα πολυμέσα προς ένωση -->0 από -->2\nNew media to merge -->0 out of -->2"));
    const std::string here = ctx.collection.Collection_Path;
    EXPECT_EQ(here, collections + "here_Merged_copy.qel");

    for (const std::string& chosen : {collections + "x.QEL", here}) {
        app.dialogs.ExpectMsgBox(MsgAnswer::Yes);
        app.dialogs.ExpectFile(chosen);
        app.dialogs.ExpectMsgBox(MsgAnswer::OK);
        MnuFileMerge_Click(ctx);
        EXPECT_EQ(app.dialogs.Messages().back().icon, MsgIcon::Exclamation);
        EXPECT_EQ(ctx.collection.Collection_Path, here);
    }
    const std::string old = testing::Write_Collection(folder, "old", {{folder + "o/a.mp3"}});
    testing::Put(old, testing::Bytes(old).replace(2, 3, "4.0"));
    app.dialogs.ExpectMsgBox(MsgAnswer::Yes);
    app.dialogs.ExpectFile(old);
    app.dialogs.ExpectMsgBox(MsgAnswer::OK);
    MnuFileMerge_Click(ctx);
    EXPECT_EQ(app.dialogs.Messages().back().text,
              "Συλλογή δημιουργημένη με διαφορετική έκδοση - Collection Created with different version");
    EXPECT_EQ(ctx.table.Track_Count, 2);
    EXPECT_EQ(ctx.collection.Collection_Path, collections + "here_Merged_copy_Merged_old.qel") << "the new name stands";
}

}  // namespace
}  // namespace velmora

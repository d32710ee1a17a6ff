#include "ratings/ratings_in_files.h"

#include <gtest/gtest.h>

#include <array>
#include <string>
#include <tuple>
#include <vector>

#include "app/startup.h"
#include "core/app_context.h"
#include "support/holds.h"
#include "support/test_app.h"
#include "support/track_rows.h"

namespace velmora {
namespace {


std::string Path(int i) { return "/music/rated_" + std::to_string(i) + ".mp3"; }

// A started program whose rows hold the given classes; each file is known to
// the reader, with the given UserRating when it is not null.
struct Rated : testing::Running {
    explicit Rated(const std::vector<int>& classes, const std::vector<const char*>& in_files) {
        std::vector<testing::TrackRow> rows;
        for (size_t i = 0; i < classes.size(); ++i) rows.push_back({Path(int(i)), 60, classes[i]});
        testing::Fill_Tracks(ctx, rows);
        for (size_t i = 0; i < in_files.size(); ++i) {
            reader.SetDuration(Path(int(i)), 60);
            if (in_files[i] != nullptr) reader.SetAttribute(Path(int(i)), "UserRating", in_files[i]);
        }
    }
    std::string InFile(int i) { return reader.newMedia(Path(i))->getItemInfo("UserRating"); }
};

TEST(RatingsInFiles, TheThreeTablesDifferWhereTheyMust) {
    // The first value read as each class and the last, then one beyond the scale.
    for (const auto& e : {std::array{0, 0, 0}, {1, 12, 1}, {13, 37, 2}, {38, 62, 3}, {63, 86, 4}, {87, 99, 5},
                          {100, 255, -1}})
        EXPECT_EQ(std::pair(Class_Read_From_File(e[0]), Class_Read_From_File(e[1])), std::pair(e[2], e[2])) << e[0];
    // Each class's written value reads back as that class and compares as it;
    // at the top of each class the compare column is a class higher.
    for (int k = 0; k < 6; ++k) {
        const int v = std::stoi(Written_Rating(k));
        EXPECT_EQ(std::tuple(Class_Read_From_File(v), Class_Compared_After_Write(v)), std::tuple(k, k));
    }
    for (const auto& e : {std::array{12, 2}, {37, 3}, {62, 4}, {86, 5}, {100, -1}})
        EXPECT_EQ(Class_Compared_After_Write(e[0]), e[1]) << e[0];
}

TEST(RatingsInFiles, WritingEveryRowCountsWhatDifferedAndLeavesUnwritableFilesLogged) {
    // Row 2 is C over a file holding 12: it reads as X, yet compares as C.
    // Row 6's file cannot be opened; row 7's file holds no rating yet.
    Rated app({0, 1, 2, 3, 4, 5, 5, 3}, {"0", "99", "12", "50", "63", "99", nullptr, nullptr});
    app.reader.SetFailing(Path(6));
    app.ctx.table.Collection_Saved = -1;
    app.dialogs.ExpectMsgBox(MsgAnswer::Yes);
    app.ctx.form1.Menus("MnuMoreSaveFavorWithinFiles").Click.emit();

    const std::vector<std::string> written = {"0", "1", "25", "50", "75", "99"};
    for (int i = 0; i < 6; ++i) EXPECT_EQ(app.InFile(i), written[i]) << i;
    EXPECT_EQ(app.InFile(7), "50");
    // Row 1 (99 over X), row 4 (63 compares as A: same) and row 7 (no rating
    // over B) are the changes.
    EXPECT_TRUE(testing::Holds(app.Log(), "--> Αλλαγές - Changes :2\n"));
    EXPECT_TRUE(testing::Holds(app.Log(), Path(6)));
    EXPECT_EQ(app.ctx.table.Collection_Saved, 0);
    EXPECT_EQ(app.ctx.table.Rating_Class[1], 1) << "writing never changes the table";
}

TEST(RatingsInFiles, ReadingTakesTheFilesClassesAndEscStopsIt) {
    Rated app({4, 4, 4, 4, 4}, {"0", "12", "25", "abc", "100"});
    for (int i = 0; i < 5; ++i) app.ctx.table.Saved[i] = true;
    app.dialogs.ExpectMsgBox(MsgAnswer::Yes);
    app.dialogs.ExpectMsgBox(MsgAnswer::No);  // the remake of the filters that follows
    app.ctx.form1.Menus("MnuMoreReadFavorFromFiles").Click.emit();

    const TrackTable& t = app.ctx.table;
    EXPECT_EQ(std::vector<int16_t>(t.Rating_Class.begin(), t.Rating_Class.begin() + 5),
              (std::vector<int16_t>{0, 1, 2, 4, 4}))
        << "0 reads as Unmarked; text and values above 99 change nothing";
    EXPECT_EQ(app.ctx.form1.List3_0[1].List(1), "X");
    EXPECT_EQ(std::tuple(t.Saved[0], t.Saved[3]), std::tuple(false, true));
    EXPECT_EQ(t.Class_Count[4], Currency(2)) << "the totals are counted again";
    EXPECT_TRUE(testing::Holds(app.Log(), "--> Αλλαγές - Changes :3\n"));

    // Esc after the first row: the rest stay as they were.
    Rated stopped({4, 4, 4}, {"1", "1", "1"});
    stopped.loop.Post([&] { stopped.ctx.core.Esc_Key = 27; });
    const ExchangeOutcome out = Exchange_Ratings(stopped.ctx, 0, kExchangeReadAll);
    EXPECT_EQ(std::tuple(out.canceled, out.changes, stopped.ctx.table.Rating_Class[1]), std::tuple(true, 1, 4));
    EXPECT_TRUE(testing::Holds(stopped.Log(), "Ακυρώθηκε - Canceled\n"));

    // One row, and a mode that runs none.
    Exchange_Ratings(stopped.ctx, 2, kExchangeOneRow);
    EXPECT_EQ(std::tuple(stopped.InFile(1), stopped.InFile(2)), std::tuple("1", "75"));
    Exchange_Ratings(stopped.ctx, 0, 7);
    EXPECT_EQ(stopped.InFile(0), "1");
}

}  // namespace
}  // namespace velmora

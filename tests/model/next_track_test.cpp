#include "playback/next_track.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <climits>
#include <filesystem>
#include <fstream>
#include <numeric>
#include <tuple>

#include "playback_fixture.h"

namespace velmora {
namespace {

using namespace testing;

TEST(Walk, OnePressPlaysEveryTrackOnceNumberedInTheOrderPlayed) {
    std::vector<int> all(300), numbers(300), shuffled;
    std::iota(all.begin(), all.end(), 0);
    std::iota(numbers.begin(), numbers.end(), 1);
    for (int16_t order : {int16_t{0}, int16_t{-1}, int16_t{-1}}) {
        SCOPED_TRACE(order == 0 ? "serial" : "shuffled");
        Player app(300);
        app.ctx.settings.Random_Order = order;
        app.Press();
        ASSERT_TRUE(app.RunToCycleEnd(3'000'000));

        const std::vector<int> rows = app.Rows();
        std::vector<int> numbered;
        for (const auto& s : app.started) numbered.push_back(s.number);
        EXPECT_EQ(numbered, numbers);
        EXPECT_TRUE(std::is_permutation(rows.begin(), rows.end(), all.begin(), all.end())) << "every Track once";
        EXPECT_EQ(rows == all, order == 0) << "serial plays in row order, shuffled does not";
        if (order != 0 && !shuffled.empty()) { EXPECT_EQ(rows, shuffled) << "the same shuffle at every start"; }
        if (order != 0) shuffled = rows;

        // Replay_Mode 0: the engine is stopped and let go, and stays so.
        const TrackTable& t = app.ctx.table;
        EXPECT_EQ(Count(app.Log(), Player::kCycleEnd), 1u);
        EXPECT_EQ(t.Played_Count + t.Played_High, 0);
        EXPECT_EQ(t.Played_Number, std::vector<int32_t>(301, 0));
        app.loop.Advance(60'000);
        EXPECT_EQ(std::tuple(app.started.size(), app.player.URL()), std::tuple(300u, ""));
        EXPECT_EQ(std::tuple(app.ctx.form1.Command11.Picture(), app.ctx.playback.Window_Icon), std::tuple("stop", 102));
    }
}

TEST(Walk, ReplayModes) {
    {
        SCOPED_TRACE("2: the next cycle begins at once, with the row after the last one played");
        Player app(5);
        app.ctx.settings.Random_Order = 0;
        app.ctx.settings.Replay_Mode = 2;
        app.Press();
        ASSERT_TRUE(app.RunToCycleEnd(60'000));
        app.loop.Advance(1000);
        ASSERT_GE(app.started.size(), 6u);
        EXPECT_EQ(std::tuple(app.started[5].row, app.started[5].number), std::tuple(0, 1));
        EXPECT_NE(app.player.URL(), "");
    }
    {
        SCOPED_TRACE("1: one Track for ever, no number moves");
        Player app(5);
        app.ctx.settings.Replay_Mode = 1;
        app.PressThenRun(30'000);
        ASSERT_GE(app.started.size(), 8u);
        EXPECT_EQ(app.Rows(), std::vector<int>(app.started.size(), 0));
        EXPECT_EQ(app.ctx.table.Played_Count, 1);
        EXPECT_EQ(Count(app.Log(), Player::kCycleEnd), 0u);
    }
}

TEST(Walk, BacktrackingRetracesTheShuffledHistoryBeforeNewDraws) {
    Player app(30);
    TrackTable& t = app.ctx.table;
    const Form1& f = app.ctx.form1;
    app.ctx.settings.Random_Order = -1;
    std::vector<int> row_of(11, -1);
    for (int n = 1; n <= 10; ++n) {
        app.Press();
        ASSERT_EQ(t.Played_Number[t.Current_Track], n);
        row_of[n] = t.Current_Track;
    }
    const std::string shuffle = "Τυχαία Αναπαραγωγή - Suffle Play";
    EXPECT_EQ(f.Label6.Caption(), shuffle);

    Command15_Click(app.ctx, 1);  // back by the step count, 3
    EXPECT_EQ(std::tie(t.Current_Track, t.Played_Count, f.Text3.Text(), f.Label6.Caption()),
              std::tuple(row_of[7], 7, "3",
                         "Τυχαία Αναπαραγωγή [σε οπισθοδρόμηση] -> [-3] <- Suffle Play [in backtracking]"));
    for (int n = 8; n <= 9; ++n) {
        app.Press();
        EXPECT_EQ(std::tuple(t.Current_Track, t.Played_Count), std::tuple(row_of[n], n)) << "forward retraces " << n;
    }
    // A missing file met while stepping forward through the history: the walk
    // moves on to the next entry and numbers nothing anew.
    Command3_Click(app.ctx, 1);
    ASSERT_EQ(t.Current_Track, row_of[8]);
    std::filesystem::remove(app.Path(row_of[9]));
    app.Press();
    app.loop.RunPosted();
    EXPECT_EQ(std::tuple(t.Current_Track, t.Played_Count), std::tuple(row_of[10], 10));
    EXPECT_EQ(std::count(t.Played_Number.begin(), t.Played_Number.end(), 10), 1);
    EXPECT_EQ(f.Label6.Caption(), shuffle);
    app.Press();
    EXPECT_EQ(t.Played_Number[t.Current_Track], 11) << "past the top the walk draws anew";
    EXPECT_EQ(std::count(row_of.begin(), row_of.end(), t.Current_Track), 0);
    EXPECT_EQ(f.Text3.Text(), "3") << "the step count survives the presses";
}

TEST(Walk, TheClassTestLetsEverythingThroughWhileUnmarkedIsNotChosen) {
    // Each case: its name, the classes chosen, the row's class, whether it was played, whether it passes.
    const std::tuple<const char*, std::array<int16_t, 6>, int16_t, bool, bool> cases[] = {
        {"no restriction", {0, 0, 0, 0, 0, 0}, 2, false, true},
        {"only S: Unmarked's flag is the switch", {0, 0, 0, 0, 0, -1}, 2, false, true},
        {"S and Unmarked: S passes", {-1, 0, 0, 0, 0, -1}, 5, false, true},
        {"S and Unmarked: Unmarked passes", {-1, 0, 0, 0, 0, -1}, 0, false, true},
        {"S and Unmarked: C is refused", {-1, 0, 0, 0, 0, -1}, 2, false, false},
        {"a class outside 0 to 5 never passes a restriction", {-1, -1, -1, -1, -1, -1}, 7, false, false},
        {"played rows never pass", {0, 0, 0, 0, 0, 0}, 0, true, false},
    };
    for (const auto& [name, class_play, rating, played, acceptable] : cases) {
        TrackTable t;
        t.Class_Play = class_play;
        t.Rating_Class[0] = rating;
        t.Played_Number[0] = played ? 4 : 0;
        EXPECT_EQ(Acceptable_Row(t, 0), acceptable) << name;
    }
}

TEST(Walk, ClassRestrictionsInTheWalk) {
    {
        SCOPED_TRACE("a refused unplayed current row: the walk goes on from the next one, wrapping");
        Player app(6);
        TrackTable& t = app.ctx.table;
        app.ctx.settings.Random_Order = 0;
        t.Resume_Pending = t.Played_Number[0] = t.Played_Count = 0;
        t.Class_Play = {-1, 0, 0, 0, 0, 0};
        t.Rating_Class = {2, 0, 2, 2, 2, 2, 0};
        t.Current_Track = 4;
        ASSERT_TRUE(Bres_Kommati(app.ctx).ok());
        EXPECT_EQ(std::tuple(app.ctx.playback.Walk_Mark, t.Current_Track, t.Played_Number[1]), std::tuple(-1, 1, 1));
    }
    {
        SCOPED_TRACE("nothing of a chosen class left: the cycle ends at once, clearing every number");
        Player app(4);
        TrackTable& t = app.ctx.table;
        t.Resume_Pending = 0;
        t.Class_Play = {-1, 0, 0, 0, 0, -1};
        t.Rating_Class = {3, 3, 3, 3, 0};
        t.Played_Number = {1, 0, 0, 0, 0};
        ASSERT_TRUE(Bres_Kommati(app.ctx).ok());
        EXPECT_EQ(Count(app.Log(), Player::kCycleEnd), 1u);
        EXPECT_EQ(t.Played_Number, std::vector<int32_t>(5, 0));
    }
}

TEST(Walk, EdgesOfTheListAndFaults) {
    {
        SCOPED_TRACE("an empty list: nothing moves, a pending resume ends at once");
        Player app(0);
        app.ctx.table.Resume_Pending = -1;
        EXPECT_TRUE(Step_Forward(app.ctx).ok() && Step_Backward(app.ctx).ok() && Bres_Kommati(app.ctx).ok());
        EXPECT_EQ(std::tuple(app.ctx.table.Resume_Pending, app.player.URL()), std::tuple(0, ""));
    }
    {
        SCOPED_TRACE("a single row played: the next walk ends the cycle, stops, wraps to row 0");
        Player app(1);
        app.PressThenRun(500);
        ASSERT_NE(app.player.URL(), "");
        app.Press();
        EXPECT_EQ(std::tuple(Count(app.Log(), Player::kCycleEnd), app.ctx.table.Current_Track,
                             app.player.URL()),
                  std::tuple(1u, 0, ""));
        std::filesystem::remove(app.Path(0));
        app.Press();
        app.loop.RunPosted();
        EXPECT_EQ(std::tuple(app.ctx.table.Rating_Class[0], app.ctx.table.Current_Track, app.player.URL()),
                  std::tuple(1, 0, "")) << "a missing file with one row: marked X, and nothing moves";
    }
    {
        SCOPED_TRACE("rows removed under Current_Track, and Played_Count past the list");
        Player app(5);
        TrackTable& t = app.ctx.table;
        app.ctx.settings.Random_Order = 0;
        t.Resume_Pending = 0, t.Current_Track = 9, t.Played_Count = 7;
        ASSERT_TRUE(Step_Forward(app.ctx).ok());
        EXPECT_EQ(std::tuple(t.Current_Track, t.Played_Count, t.Played_Number[1]), std::tuple(1, 1, 1))
            << "repaired to row 0, whose number makes the walk move on";
    }
    {
        SCOPED_TRACE("overflow is a fault of the procedure, not a wrap");
        Player app(5);
        TrackTable& t = app.ctx.table;
        t.Resume_Pending = 0, t.Played_Count = INT32_MAX;
        EXPECT_FALSE(Bres_Kommati(app.ctx).ok());
        EXPECT_EQ(std::count(t.Played_Number.begin(), t.Played_Number.end(), 0), 5) << "nothing was numbered";
        t.Played_Count = 1, t.Current_Track = 0, t.Played_Number[0] = INT32_MAX;
        EXPECT_FALSE(Step_Forward(app.ctx).ok());
    }
}

TEST(Walk, AMissingOrEmptyFileIsMarkedXAndTheWalkGoesOnTheSameWay) {
    Player app(6);
    TrackTable& t = app.ctx.table;
    app.ctx.settings.Random_Order = 0;
    std::filesystem::remove(app.Path(2));
    std::ofstream(app.Path(3), std::ios::trunc).close();
    app.Press();
    app.Press();  // row 1
    app.Press();  // rows 2 and 3 are passed over, row 4 plays
    EXPECT_EQ(t.Current_Track, 2) << "the walk moves on from the loop, not inside the press";
    app.loop.RunPosted();
    EXPECT_EQ(t.Current_Track, 4);
    // Marked X, and still counted as played.
    EXPECT_EQ(std::tuple(t.Rating_Class[2], t.Rating_Class[3], t.Played_Number[2], t.Played_Number[3]),
              std::tuple(1, 1, 3, 4));
    EXPECT_EQ(Count(app.Log(), "dosn't not longer exists or has zero lenght"), 2u);
    EXPECT_TRUE(Holds(app.Log(), "-> Το αρχείο ( 3)" + app.Path(2) + "\n δεν υφίσταται πλέον ή έχει μηδενικό μήκος."));
    ASSERT_GE(app.shell.beeps.size(), 2u);
    EXPECT_EQ(app.shell.beeps.back().frequency, 2500);

    Command3_Click(app.ctx, 1);  // back: rows 3 and 2 again, then row 1
    app.loop.RunPosted();
    EXPECT_EQ(t.Current_Track, 1);
}

}  // namespace
}  // namespace velmora

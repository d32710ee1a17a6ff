#include "playback/playback_clock.h"

#include <gtest/gtest.h>

#include <array>
#include <tuple>

#include "playback_fixture.h"

namespace velmora {
namespace {

using namespace testing;

constexpr const char* kSaved = " -> Σώθηκε 10' - Saved 10'";

TEST(Clock, SavesEveryTenMinutesAndNotBefore) {
    Player app(1, 5000.0);
    const int64_t loaded = app.loop.TickCount();
    app.Press();
    // Just before and just after each ten minutes since the load.
    auto saves_after = [&](int64_t ms) {
        app.loop.Advance(ms);
        return Count(app.Log(), kSaved);
    };
    EXPECT_EQ(saves_after(599'000 - (app.loop.TickCount() - loaded)), 0u);
    EXPECT_EQ(saves_after(3'000), 1u);
    EXPECT_NEAR(app.ctx.table.Current_Position, 600, 2) << "the save took the engine's position";
    EXPECT_EQ(saves_after(597'000), 1u);
    EXPECT_EQ(saves_after(5'000), 2u);
    app.ctx.settings.Save_Auto = 0;
    EXPECT_EQ(saves_after(1'300'000), 2u) << "no saving while it is turned off";
}

TEST(Clock, ListeningTimeCarriesUpInItsChain) {
    using Chain = std::array<int32_t, 6>;  // years, months, days, hours, minutes, seconds
    const std::tuple<const char*, Chain, int, Chain> cases[] = {
        {"a second", {0, 0, 0, 0, 0, 7}, 1000, {0, 0, 0, 0, 0, 8}},
        {"the short tick rounds away", {0, 0, 0, 0, 0, 7}, 300, {0, 0, 0, 0, 0, 7}},
        {"into a minute", {0, 0, 0, 0, 4, 59}, 1000, {0, 0, 0, 0, 5, 0}},
        {"a hidden window's 6 seconds drop what passes 60", {0, 0, 0, 0, 0, 58}, 6000, {0, 0, 0, 0, 1, 0}},
        {"into an hour", {0, 0, 0, 2, 59, 59}, 1000, {0, 0, 0, 3, 0, 0}},
        {"into a day", {0, 0, 3, 23, 59, 59}, 1000, {0, 0, 4, 0, 0, 0}},
        {"a month is 30 days", {0, 2, 29, 23, 59, 59}, 1000, {0, 3, 0, 0, 0, 0}},
        {"a year is 13 months", {1, 12, 29, 23, 59, 59}, 1000, {2, 0, 0, 0, 0, 0}},
        {"month 12 is still the year's", {0, 11, 29, 23, 59, 59}, 1000, {0, 12, 0, 0, 0, 0}},
    };
    for (const auto& [name, before, interval, after] : cases) {
        CollectionState s;
        auto chain = std::tie(s.Stat_Years, s.Stat_Months, s.Stat_Days, s.Stat_Hours, s.Stat_Minutes, s.Stat_Seconds);
        chain = std::tuple_cat(before);
        Count_Listening_Time(s, interval);
        EXPECT_EQ(chain, std::tuple_cat(after)) << name;
    }
}

TEST(Clock, TheDisplaysTheTrayTipAndTheCountsFollowPlaying) {
    Player app(2, 30.0);
    CollectionState& c = app.ctx.collection;
    app.ctx.table.Rating_Class[0] = 3, app.ctx.table.File_Size[0] = Currency::FromDouble(1536.5);
    app.ctx.table.Bitrate[0] = 96;
    app.loop.Advance(1'000);
    EXPECT_EQ(app.ctx.form1.Text5[1].Text(), "00:00:00") << "nothing loaded: the blank display";

    app.PressThenRun(5'400);
    Form1& f = app.ctx.form1;
    EXPECT_EQ(std::tuple(f.Text5[1].Text(), f.Text5[2].Text(), f.Text5[3].Text(), f.Text5[4].Text()),
              std::tuple("00:00:05", "00:00:25", "001.50Gb", "096"));
    EXPECT_TRUE(app.shell.tray_tip.starts_with("No(0) -> 00:00:05< *** >00:00:25\n - ")) << app.shell.tray_tip;
    EXPECT_EQ(f.Label2[0].Caption(),
              "Τώρα - Now:  000:00:00:05   Σύνολο - Sum:   000:00:01:00   Ακόμη - Left:    000:00:00:55");
    EXPECT_EQ(std::tuple(c.Stat_Seconds, c.Stat_Files), std::tuple(5, 0)) << "row 0 was the row seen before";

    (void)app.player.pause();
    app.loop.Advance(10'000);
    EXPECT_EQ(c.Stat_Seconds, 5) << "no listening time while paused";
    EXPECT_EQ(std::tuple(f.Command11.Picture(), app.ctx.playback.Window_Icon, f.Tray("mnusystemtraypause").Checked()),
              std::tuple("pause", 101, true));

    (void)app.player.play();
    app.loop.Advance(30'000);
    EXPECT_EQ(std::tuple(app.ctx.table.Current_Track, c.Stat_Files, f.Tray("mnusystemtraypause").Checked()),
              std::tuple(1, 1, false));
    EXPECT_EQ(app.ctx.playback.Played_Duration, Currency(30)) << "the Track played before counts whole";
    EXPECT_TRUE(app.shell.tray_tip.ends_with("< - >00:00:26\n - track_001.mp3")) << app.shell.tray_tip;
}

}  // namespace
}  // namespace velmora

#include "playback/transport.h"

#include <gtest/gtest.h>

#include <tuple>

#include "playback/play_modes.h"
#include "playback_fixture.h"

namespace velmora {
namespace {

using testing::Holds;
using testing::Player;

TEST(Transport, APressWhileNothingPlaysRepeatsTheLastMoveAndADoubleClickDoesNotNumber) {
    Player app(6, 100.0);
    TrackTable& t = app.ctx.table;
    app.ctx.settings.Random_Order = 0;
    int64_t t0 = app.loop.TickCount();
    app.Press();
    EXPECT_GE(app.loop.TickCount() - t0, 500) << "the first start of a run that began by itself waits";
    t0 = app.loop.TickCount();
    app.Press();
    app.Press();
    EXPECT_LT(app.loop.TickCount() - t0, 500) << "no later start waits";
    Command3_Click(app.ctx, 1);
    ASSERT_EQ(t.Current_Track, 1);
    (void)app.player.stop();
    app.loop.RunPosted();
    Command11_Click(app.ctx);
    EXPECT_EQ(std::tuple(t.Current_Track, app.ctx.form1.Command11.Picture()), std::tuple(0, "stop"))
        << "back, as the last move was";

    app.Press();  // forward: in serial order always the walk, never the history
    app.loop.Advance(2'000);
    Command11_Click(app.ctx);
    EXPECT_EQ(app.player.playState(), PS_Paused);
    Command11_Click(app.ctx);
    EXPECT_EQ(app.player.playState(), PS_Playing);

    const int count = t.Played_Count;
    app.ctx.form1.List2.SetListIndex(5);
    list2_dblclick(app.ctx);
    EXPECT_EQ(std::tuple(t.Current_Track, t.Played_Number[5], t.Played_Count), std::tuple(5, 0, count));
    EXPECT_EQ(app.ctx.playback.Selected_File, app.Path(5));
}

TEST(Transport, TheNextButtonKeepsTheExitPointAndTheStepCountTheFolderButtonOpensAndTheTrayPauses) {
    Player app(3, 100.0);
    Command10_Click(app.ctx, 0);
    EXPECT_TRUE(Holds(app.Log(), "-> Δεν υπάρχει κανένα αρχείο για προβολή - No file to display"));
    EXPECT_TRUE(app.shell.opened.empty());
    app.ctx.form1.List2.SetListIndex(1);
    Command10_Click(app.ctx, 0);
    EXPECT_EQ(app.shell.opened, std::vector<std::string>{(app.folder.Path() / "media").string() + "/"});

    app.ctx.form1.Text3.SetText("5");
    app.PressThenRun(12'000);
    app.Press();
    EXPECT_NEAR(app.ctx.table.Stop_Position[0].ToDouble(), 12, 1);
    EXPECT_FALSE(app.ctx.table.Saved[0]);
    const TextBox& steps = app.ctx.form1.Text3;
    EXPECT_EQ(std::tie(steps.Text(), app.ctx.settings.Backtrack_Steps), std::tuple("5", 5));
    app.ctx.form1.Text3.SetText("abc");
    EXPECT_EQ(std::tie(steps.Text(), app.ctx.settings.Backtrack_Steps), std::tuple("3", 3));
    // A count past 16 bits is a fault: the count stays, and the log says so in both languages.
    app.ctx.form1.Text3.SetText("40000");
    EXPECT_EQ(app.ctx.settings.Backtrack_Steps, 3);
    EXPECT_TRUE(Holds(app.Log(), "-> Υπερχείλιση - Overflow in Text3_Change\n"));

    // The tray's pause resumes through the start of a Track: with start point
    // mode 0, back at the beginning.
    app.ctx.settings.Autostart_Index = 0;
    app.loop.Advance(20'000);
    mnusystemtraypause_Click(app.ctx);
    app.loop.RunPosted();
    EXPECT_EQ(std::tuple(app.player.playState(), app.ctx.playback.Is_Paused,
                         app.ctx.form1.Tray("mnusystemtraypause").Checked()),
              std::tuple(PS_Paused, -1, true));
    mnusystemtraypause_Click(app.ctx);
    app.loop.Advance(400);
    EXPECT_EQ(app.player.playState(), PS_Playing);
    EXPECT_LT(app.player.currentPosition().value_or(-1), 1);
}

TEST(Modes, TheInputDialogsAndTheirLoops) {
    struct Case {
        const char* name;
        bool pause_dialog;
        std::vector<std::optional<std::string>> inputs;
        std::vector<MsgAnswer> questions;
        int expected;
        bool logged;
    } const cases[] = {
        {"preview 10 is taken", false, {"10"}, {}, 10, false},
        {"preview 1 and 10.5 repeat without a word", false, {"1", "10.5", "4"}, {}, 4, false},
        {"preview not numeric, no repeat", false, {"abc"}, {MsgAnswer::No}, 7, false},
        {"preview cancelled, repeat", false, {std::nullopt, "3"}, {MsgAnswer::Yes}, 3, false},
        {"pause 0 closes without change", true, {"0"}, {}, 7, false},
        {"pause 9 repeats, then 5", true, {"9", "5"}, {}, 5, true},
    };
    for (const auto& c : cases) {
        Player app(0);
        app.ctx.settings.Preview_Seconds = 7;
        app.ctx.settings.Pause_Seconds = 7;
        for (const auto& in : c.inputs) app.dialogs.ExpectInput(in);
        for (auto a : c.questions) app.dialogs.ExpectMsgBox(a);
        if (c.pause_dialog) MnuMorePauseDur_Click(app.ctx);
        else MnuMoreDuration_Click(app.ctx);
        EXPECT_EQ(c.pause_dialog ? app.ctx.settings.Pause_Seconds : app.ctx.settings.Preview_Seconds, c.expected)
            << c.name;
        const std::string line = "-> Η διάρκεια δευτερολέπτων της παύσης ορίστηκε σε 5 Is the number of pause seconds ";
        EXPECT_EQ(app.Log().find(line) != std::string::npos, c.logged) << c.name;
    }
}

TEST(Modes, TheMenusKeepTheirQuirks) {
    Player app(0);
    Form1& f = app.ctx.form1;
    Settings& s = app.ctx.settings;
    f.Menus("mnumorereplayn", 0).SetChecked(true);
    f.Menus("mnumorereplayn", 1).Click.emit();
    EXPECT_EQ(s.Replay_Mode, 1);
    EXPECT_FALSE(f.Menus("mnumorereplayn", 0).Checked() || f.Menus("mnumorereplayn", 1).Checked())
        << "the chosen entry is not checked by the handler";
    EXPECT_TRUE(f.Tray("mnusystrayrepeat").Checked());
    f.Tray("mnusystrayrepeat").Click.emit();
    EXPECT_EQ(s.Replay_Mode, 0);

    s.Preview_Points = {20};
    f.Menus("MnuMoreMultiPreview").Click.emit();
    EXPECT_EQ(s.Preview_Points, (std::vector<int16_t>{20, 0, 0, 0}));

    // Each enabled state toggles by itself and can drift from the check.
    f.Menus("MnuMoreDuration").SetEnabled(true);
    f.Menus("MnuMoreMultiPreview").SetEnabled(false);
    f.Menus("MnuMorePreview_Active").Click.emit();
    EXPECT_EQ(s.Preview_Active, -1);
    EXPECT_TRUE(!f.Menus("MnuMoreDuration").Enabled() && f.Menus("MnuMoreMultiPreview").Enabled());
}

}  // namespace
}  // namespace velmora

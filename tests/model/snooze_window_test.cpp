// The snooze window on virtual time: the countdown's figures, the boxes'
// checks, the mode boxes, the alarm list of the first opening, what Ok keeps
// across a restart, and the moment's test that nothing calls.

#include <gtest/gtest.h>

#include <string>

#include "app/startup.h"
#include "core/settings_store.h"
#include "support/test_app.h"
#include "support/track_rows.h"
#include "timed/countdown.h"
#include "timed/snooze_window.h"

namespace velmora {
namespace {

using testing::TestApp;

TEST(Countdown, WholeDifferencesAcrossBoundariesAndIntoThePast) {
    const struct {
        LocalTime now;
        const char* date;
        const char* time;
        const char* shown;
    } cases[] = {
        {{2024, 3, 15, 12, 0, 0}, "15/03/2024", "13:30:45", "00:00:00:01:30:45"},
        // Fifteen seconds across midnight cross a day, an hour and a minute.
        {{2024, 3, 15, 23, 59, 50}, "16/03/2024", "00:00:05", "00:00:01:01:01:15"},
        {{2024, 1, 31, 12, 0, 0}, "01/02/2024", "12:00:00", "00:01:01:00:00:00"},
        {{2024, 12, 31, 23, 59, 30}, "01/01/2025", "00:00:10", "01:01:01:01:01:40"},
        {{2024, 3, 15, 12, 0, 0}, "20/05/2026", "12:00:00", "02:02:21:00:00:00"},
        // Passed: the hours go negative, minutes and seconds wrap.
        {{2024, 3, 15, 12, 0, 0}, "15/03/2024", "10:59:30", "00:00:00:-02:59:30"},
    };
    for (const auto& c : cases) {
        const auto target = Parse_Moment(c.date, c.time);
        ASSERT_TRUE(target) << c.date;
        EXPECT_EQ(Countdown_Text(c.now, *target), c.shown) << c.date << " " << c.time;
    }
    for (const char* date : {"29/02/2023", "24/12/2025 Χριστούγεννα", "", "1/13/2024"})
        EXPECT_FALSE(Parse_Moment(date, "00:00:00")) << date;
    EXPECT_FALSE(Parse_Moment("01/01/2024", "24:00:00"));
}

struct SnoozeApp : TestApp {
    SnoozeApp() {
        Form_Load(ctx);
        loop.SetNow({2024, 12, 31, 23, 59, 30});
    }
    Form5& w = ctx.form5;
};

TEST(SnoozeWindow, OpensByModeKeepsOneModeOnAndTicksWhileOpen) {
    SnoozeApp app;
    app.ctx.settings.Trigger_Mode = 0;
    mnutimesnooze_Click(app.ctx);
    EXPECT_EQ(app.w.Label2.Caption(), "Ανενεργό - Off");
    EXPECT_EQ(app.w.Check1.Value() + app.w.Check2.Value(), 0);

    app.w.Check1.SetValue(1);
    EXPECT_EQ(std::tuple(app.w.Check2.Value(), app.ctx.settings.Trigger_Mode), std::tuple(0, 1));
    app.w.Check1.SetValue(0);
    EXPECT_EQ(std::tuple(app.w.Check2.Value(), app.ctx.settings.Trigger_Mode), std::tuple(1, 2));
    app.w.Check2.SetValue(0);
    EXPECT_EQ(std::tuple(app.w.Check1.Value(), app.ctx.settings.Trigger_Mode), std::tuple(1, 1));
    app.w.Check4.SetValue(1);
    EXPECT_EQ(app.ctx.settings.Shutdown_Armed, -1);

    // Ten seconds past midnight into the new year, counted on the clock.
    app.ctx.settings.Trigger_Date = "01/01/2025";
    app.ctx.settings.Trigger_Time = {0, 0, 10};
    app.loop.Advance(1000);
    EXPECT_EQ(app.w.Label1.Caption(), "01:01:01:01:01:39");
    form5::Form_QueryUnload(app.ctx);
    app.loop.Advance(5000);
    EXPECT_EQ(app.w.Label1.Caption(), "01:01:01:01:01:39") << "a closed window does not count";
    EXPECT_FALSE(app.w.Visible());
}

TEST(SnoozeWindow, BoxesTurnToZeroOnBadTextAndOnlyTheCountdownHoursHaveARange) {
    SnoozeApp app;
    Show_Form5(app.ctx);
    const struct {
        int box;
        const char* typed;
        const char* left;
    } cases[] = {{0, "123", "00"}, {0, "ab", "00"}, {2, "", "00"}, {3, "25", "00"}, {3, "24", "24"},
                 {0, "99", "99"},  {1, "75", "75"}, {4, "75", "75"}, {5, "7", "7"}};
    for (const auto& c : cases) {
        app.w.Text1[c.box].SetText(c.typed);
        EXPECT_EQ(app.w.Text1[c.box].Text(), c.left) << c.box << " " << c.typed;
    }
    app.w.VScroll1[4].SetValue(42);
    EXPECT_EQ(app.w.Text1[4].Text(), "42");
}

TEST(SnoozeWindow, TheAlarmListIsTheFirstOpeningsAndOkSurvivesARestart) {
    SnoozeApp app;
    testing::Fill_Tracks(app.ctx, {{"/m/one.mp3"}, {"/m/two.mp3"}});
    app.ctx.collection.Alarm_File = "/m/two.mp3";
    mnutimeshut_Click(app.ctx);
    EXPECT_EQ(app.w.Combo1.ListCount(), 2);
    EXPECT_EQ(app.w.Combo1.Text(), "/m/two.mp3");
    app.ctx.form1.List2.AddItem("/m/three.mp3");
    app.w.Command1[0].Click.emit();
    Show_Form5(app.ctx);
    EXPECT_EQ(app.w.Combo1.ListCount(), 2) << "never refilled";

    app.w.Check2.SetValue(1);
    const char* typed[] = {"7", "5", "0", "1", "30", "15"};
    for (int i = 0; i < 6; ++i) app.w.Text1[i].SetText(typed[i]);
    app.w.Calendar1.SetText("02/01/2025");
    app.w.Combo1.SetListIndex(0);
    app.ctx.timed.Alarm_Time_Reached = -1;
    app.w.Command1[1].Click.emit();
    EXPECT_EQ(app.w.Label2.Caption(), "Ενεργό - On");
    EXPECT_EQ(app.ctx.timed.Alarm_Time_Reached, 0);
    Form_QueryUnload(app.ctx);

    TestApp again(app.folder.Str());
    Form_Load(again.ctx);
    const Settings& s = again.ctx.settings;
    EXPECT_EQ(std::tie(s.Trigger_Mode, s.Trigger_Date), std::tuple(2, "02/01/2025"));
    EXPECT_EQ(s.Trigger_Time, (std::array<int32_t, 3>{7, 5, 0}));
    EXPECT_EQ(s.Trigger_Countdown, (std::array<int32_t, 3>{1, 30, 15}));
    Show_Form5(again.ctx);
    EXPECT_EQ(again.ctx.form5.Text1[4].Text(), "30");
    EXPECT_EQ(again.ctx.form5.Check2.Value(), 1);

    // With the calendar box checked Ok leaves the date; Cancel disarms.
    again.ctx.form5.Check3.SetValue(1);
    again.ctx.form5.Calendar1.SetText("09/09/2029");
    again.ctx.form5.Command1[1].Click.emit();
    EXPECT_EQ(s.Trigger_Date, "02/01/2025");
    again.ctx.form5.Command1[2].Click.emit();
    EXPECT_EQ(s.Trigger_Mode, 0);
}

TEST(SnoozeWindow, TheMomentPassesUnheededAndTheTestWouldPauseAndSoundTheAlarm) {
    SnoozeApp app;
    StubEngine alarm(app.loop);
    alarm.SetDuration("/m/wake.mp3", 30);
    ASSERT_TRUE(alarm.setVolume(0).ok());
    app.ctx.timed.Alarm_Engine = &alarm;
    app.ctx.collection.Alarm_File = "/m/wake.mp3";
    app.ctx.settings.Trigger_Mode = 1;
    app.ctx.settings.Trigger_Date = "31/12/2024";
    app.ctx.settings.Trigger_Time = {23, 59, 32};
    mnutimesnooze_Click(app.ctx);
    app.loop.Advance(10'000);
    EXPECT_EQ(app.ctx.timed.Alarm_Time_Reached, 0);
    EXPECT_EQ(alarm.URL(), "");

    app.loop.SetNow({2024, 12, 31, 23, 59, 32});
    form5::test(app.ctx);
    EXPECT_EQ(app.ctx.timed.Alarm_Time_Reached, -1);
    EXPECT_EQ(app.ctx.playback.Is_Paused, -1);
    EXPECT_TRUE(app.ctx.form1.Tray("mnusystemtraypause").Checked());
    app.loop.Advance(1000);
    EXPECT_EQ(alarm.URL(), "/m/wake.mp3");
    EXPECT_EQ(alarm.volume(), 50);
    EXPECT_EQ(alarm.playState(), PS_Playing);
    app.ctx.timed.Alarm_Engine = nullptr;
}

TEST(SleepMenu, EachEntryDoesNothing) {
    SnoozeApp app;
    const Settings before = app.ctx.settings;
    const std::string log = app.ctx.form1.Text2[0].Text();
    for (const char* row : {"mnurepeatsleepstart", "mnurepeatsleepvolume", "mnurepeatalarm", "mnurepeatoff",
                            "mnurepeatexit", "mnurepeatsleeprestore"}) {
        MenuItem& item = app.ctx.form1.Menus(row);
        EXPECT_TRUE(item.Enabled() && item.Visible()) << row;
        item.Click.emit();
    }
    app.loop.Advance(2000);
    EXPECT_TRUE(app.ctx.settings == before);
    EXPECT_EQ(app.ctx.form1.Text2[0].Text(), log);
    EXPECT_FALSE(app.ctx.form5.Visible() || app.ctx.core.Ended);
    EXPECT_TRUE(app.dialogs.Messages().empty());
}

}  // namespace
}  // namespace velmora

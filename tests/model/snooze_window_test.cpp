#include <gtest/gtest.h>

#include "playback_fixture.h"
#include "timed/countdown.h"
#include "timed/sleep_timer.h"
#include "timed/snooze_window.h"

namespace velmora {
namespace {

TEST(Countdown, WholeDifferencesAcrossBoundariesAndIntoThePast) {
    const std::tuple<LocalTime, const char*, const char*, const char*> cases[] = {
        {{2024, 3, 15, 12, 0, 0}, "15/03/2024", "13:30:45", "00:00:00:01:30:45"},
        // Fifteen seconds across midnight cross a day, an hour and a minute.
        {{2024, 3, 15, 23, 59, 50}, "16/03/2024", "00:00:05", "00:00:01:01:01:15"},
        {{2024, 1, 31, 12, 0, 0}, "01/02/2024", "12:00:00", "00:01:01:00:00:00"},
        {{2024, 12, 31, 23, 59, 30}, "01/01/2025", "00:00:10", "01:01:01:01:01:40"},
        {{2024, 3, 15, 12, 0, 0}, "20/05/2026", "12:00:00", "02:02:21:00:00:00"},
        // Passed: the hours go negative, minutes and seconds wrap.
        {{2024, 3, 15, 12, 0, 0}, "15/03/2024", "10:59:30", "00:00:00:-02:59:30"},
    };
    for (const auto& [now, date, time, shown] : cases) {
        const auto target = Parse_Moment(date, time);
        ASSERT_TRUE(target) << date;
        EXPECT_EQ(Countdown_Text(now, *target), shown) << date << " " << time;
    }
    for (const char* date : {"29/02/2023", "24/12/2025 Χριστούγεννα", "", "1/13/2024"})
        EXPECT_FALSE(Parse_Moment(date, "00:00:00")) << date;
    EXPECT_FALSE(Parse_Moment("01/01/2024", "24:00:00"));
}

struct SnoozeApp : testing::Running {
    SnoozeApp() { loop.SetNow({2024, 12, 31, 23, 59, 30}); }
    Form5& w = ctx.form5;
    Settings& s = ctx.settings;
};

TEST(SnoozeWindow, OpensByModeKeepsOneModeOnAndTicksWhileOpen) {
    SnoozeApp app;
    mnutimesnooze_Click(app.ctx);
    EXPECT_EQ(app.w.Label2.Caption(), "Ανενεργό - Off");
    EXPECT_EQ(app.w.Check1.Value() + app.w.Check2.Value(), 0);
    for (auto [box, value, other, mode] : {std::tuple{&app.w.Check1, 1, &app.w.Check2, 1},
                                           {&app.w.Check1, 0, &app.w.Check2, 2}, {&app.w.Check2, 0, &app.w.Check1, 1}}) {
        box->SetValue(value);
        EXPECT_EQ(std::tuple(other->Value(), app.s.Trigger_Mode), std::tuple(1 - value, mode));
    }
    app.w.Check4.SetValue(1);
    EXPECT_EQ(app.s.Shutdown_Armed, -1);

    // Ten seconds past midnight into the new year, counted on the clock.
    app.s.Trigger_Date = "01/01/2025";
    app.s.Trigger_Time = {0, 0, 10};
    app.loop.Advance(1000);
    EXPECT_EQ(app.w.Label1.Caption(), "01:01:01:01:01:39");
    form5::Form_QueryUnload(app.ctx);
    app.loop.Advance(5000);
    EXPECT_EQ(app.w.Label1.Caption(), "01:01:01:01:01:39") << "a closed window does not count";

    // The boxes turn to zero on bad text; only the countdown's hours have a range.
    Show_Form5(app.ctx);
    const std::tuple<int, const char*, const char*> cases[] = {
        {0, "123", "00"}, {0, "ab", "00"}, {2, "", "00"}, {3, "25", "00"}, {3, "24", "24"},
        {0, "99", "99"},  {1, "75", "75"}, {4, "75", "75"}, {5, "7", "7"}};
    for (const auto& [box, typed, left] : cases) {
        app.w.Text1[box].SetText(typed);
        EXPECT_EQ(app.w.Text1[box].Text(), left) << box << " " << typed;
    }
    app.w.VScroll1[4].SetValue(42);
    EXPECT_EQ(app.w.Text1[4].Text(), "42");
}

TEST(SnoozeWindow, TheAlarmListIsTheFirstOpeningsAndOkSurvivesARestart) {
    SnoozeApp app;
    testing::Fill_Tracks(app.ctx, {{"/m/one.mp3"}, {"/m/two.mp3"}});
    app.ctx.collection.Alarm_File = "/m/two.mp3";
    mnutimeshut_Click(app.ctx);
    EXPECT_EQ(app.w.Combo1.Text(), "/m/two.mp3");
    app.ctx.form1.List2.AddItem("/m/three.mp3");
    app.w.Command1[0].Click.emit();
    Show_Form5(app.ctx);
    EXPECT_EQ(app.w.Combo1.ListCount(), 2) << "never refilled";

    app.w.Check2.SetValue(1);
    for (int i = 0; i < 6; ++i) app.w.Text1[i].SetText(std::to_string(10 + i));
    app.w.Calendar1.SetText("02/01/2025");
    app.ctx.timed.Alarm_Time_Reached = -1;
    app.w.Command1[1].Click.emit();
    EXPECT_EQ(std::tuple(app.w.Label2.Caption(), app.ctx.timed.Alarm_Time_Reached), std::tuple("Ενεργό - On", 0));
    Form_QueryUnload(app.ctx);

    testing::Running again(app.folder.Str());
    const Settings& s = again.ctx.settings;
    EXPECT_EQ(std::tie(s.Trigger_Mode, s.Trigger_Date), std::tuple(2, "02/01/2025"));
    EXPECT_EQ(std::tie(s.Trigger_Time, s.Trigger_Countdown),
              std::tuple(std::array<int32_t, 3>{10, 11, 12}, std::array<int32_t, 3>{13, 14, 15}));
    Show_Form5(again.ctx);
    EXPECT_EQ(std::tuple(again.ctx.form5.Text1[4].Text(), again.ctx.form5.Check2.Value()), std::tuple("14", 1));
    // With the calendar box checked Ok leaves the date; Cancel disarms.
    again.ctx.form5.Check3.SetValue(1);
    again.ctx.form5.Calendar1.SetText("09/09/2029");
    again.ctx.form5.Command1[1].Click.emit();
    again.ctx.form5.Command1[2].Click.emit();
    EXPECT_EQ(std::tie(s.Trigger_Date, s.Trigger_Mode), std::tuple("02/01/2025", 0));
}

TEST(SnoozeWindow, TheMomentPassesUnheededAndTheTestWouldPauseAndSoundTheAlarm) {
    SnoozeApp app;
    StubEngine alarm(app.loop);
    alarm.SetDuration("/m/wake.mp3", 30);
    ASSERT_TRUE(alarm.setVolume(0).ok());
    app.ctx.timed.Alarm_Engine = &alarm;
    app.ctx.collection.Alarm_File = "/m/wake.mp3";
    app.s.Trigger_Mode = 1;
    app.s.Trigger_Date = "31/12/2024";
    app.s.Trigger_Time = {23, 59, 32};
    mnutimesnooze_Click(app.ctx);
    app.loop.Advance(10'000);
    EXPECT_EQ(std::tuple(app.ctx.timed.Alarm_Time_Reached, alarm.URL()), std::tuple(0, ""));

    app.loop.SetNow({2024, 12, 31, 23, 59, 32});
    form5::test(app.ctx);
    EXPECT_EQ(std::tuple(app.ctx.timed.Alarm_Time_Reached, app.ctx.playback.Is_Paused), std::tuple(-1, -1));
    EXPECT_TRUE(app.ctx.form1.Tray("mnusystemtraypause").Checked());
    app.loop.Advance(1000);
    EXPECT_EQ(std::tuple(alarm.URL(), alarm.volume(), alarm.playState()), std::tuple("/m/wake.mp3", 50, PS_Playing));
    app.ctx.timed.Alarm_Engine = nullptr;
}

TEST(SleepTimer, DurationsAreHoursMinutesSecondsInOrder) {
    for (auto [text, seconds] : {std::pair{"30m", 1800}, {"1h15m", 4500}, {"2h5s", 7205}, {"3s", 3}})
        EXPECT_EQ(Parse_Sleep_Duration(text), seconds) << text;
    for (const char* bad : {"", "30", "m", "15m1h", "1m1m", "0s", "-5m", "1.5h", "5 m", "10x"})
        EXPECT_EQ(Parse_Sleep_Duration(bad), std::nullopt) << bad;
}

TEST(SleepTimer, FadesOverTheLastMinuteThenPausesAndGivesTheVolumeBack) {
    testing::Player app(1, 3600.0);
    app.PressThenRun(1'000);
    ASSERT_TRUE(app.player.setVolume(80).ok());
    ASSERT_EQ(app.player.playState(), PS_Playing);

    int done = 0;
    SleepTimer sleep(app.ctx, 90, [&] { ++done; });
    app.loop.Advance(29'000);
    EXPECT_EQ(app.player.volume(), 80);
    app.loop.Advance(31'000);  // 30 s left
    EXPECT_EQ(app.player.volume(), 40);
    app.loop.Advance(29'750);  // a quarter second left
    EXPECT_EQ(app.player.volume(), 1);
    EXPECT_EQ(done, 0);
    app.loop.Advance(5'000);
    EXPECT_EQ(done, 1);
    EXPECT_EQ(app.player.playState(), PS_Paused);
    EXPECT_EQ(app.player.volume(), 80);
}

}  // namespace
}  // namespace velmora

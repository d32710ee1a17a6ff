#include "timed/snooze_window.h"

#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <string>
#include <string_view>

#include "base/text_format.h"
#include "core/app_context.h"
#include "core/port_faults.h"
#include "timed/countdown.h"

namespace velmora {

namespace {

constexpr const char* kOn = "Ενεργό - On";
constexpr const char* kOff = "Ανενεργό - Off";

// A number as a user may type one: spaces around, a sign, digits with at
// most one decimal point.
bool Is_Numeric(std::string_view text) {
    while (!text.empty() && text.front() == ' ') text.remove_prefix(1);
    while (!text.empty() && text.back() == ' ') text.remove_suffix(1);
    if (!text.empty() && (text.front() == '+' || text.front() == '-')) text.remove_prefix(1);
    bool digit = false, point = false;
    for (char c : text) {
        if (c >= '0' && c <= '9') digit = true;
        else if (c == '.' && !point) point = true;
        else return false;
    }
    return digit;
}

// The number a box begins with, 0 when none, to the nearest whole (a half
// to the even neighbour).
int32_t Value_Of(const std::string& text) {
    const double v = std::strtod(text.c_str(), nullptr);
    if (!std::isfinite(v) || std::fabs(v) > 2e9) return 0;
    return static_cast<int32_t>(std::nearbyint(v));
}

void Read_Boxes(AppContext& ctx) {
    Settings& s = ctx.settings;
    const Form5& w = ctx.form5;
    for (int i = 0; i < 3; ++i) {
        s.Trigger_Time[i] = Value_Of(w.Text1[i].Text());
        s.Trigger_Countdown[i] = Value_Of(w.Text1[3 + i].Text());
    }
}

std::string Two(int32_t v) {
    char text[16];
    std::snprintf(text, sizeof text, "%02d", v);
    return text;
}

// The time of day that the mode aims at: each value on two digits and a
// colon, of which the first eight characters count.
std::string Target_Time(const Settings& s) {
    const auto& values = s.Trigger_Mode == 1 ? s.Trigger_Time : s.Trigger_Countdown;
    std::string text;
    for (int32_t v : values) text += Two(v) + ":";
    return text.substr(0, 8);
}

// The moment has come: what plays pauses, the window comes up, the alarm waits for the clock.
void Alarm(AppContext& ctx, int16_t& reached) {
    Log_Failure(ctx, ctx.ports.player, "pause", ctx.ports.player.pause());
    ctx.form1.Tray("mnusystemtraypause").SetChecked(true);
    ctx.playback.Is_Paused = -1;
    Show_Form5(ctx);
    reached = -1;
}

}  // namespace

namespace form5 {

void Form_Load(AppContext& ctx) {
    Form5& w = ctx.form5;
    const Settings& s = ctx.settings;
    // The list of the first load stays, whatever the Collection becomes.
    if (w.Combo1.ListCount() == 0) w.Combo1.Assign(ctx.form1.List2.Items());
    for (int i = 0; i < 3; ++i) {
        w.Text1[i].SetText(std::to_string(s.Trigger_Time[i]));
        w.Text1[3 + i].SetText(std::to_string(s.Trigger_Countdown[i]));
    }
    if (Parse_Moment(s.Trigger_Date, "00:00:00")) w.Calendar1.SetText(s.Trigger_Date);
    else w.Calendar1.SetText(DateText(ctx.ports.loop.Now()));
    const std::string& alarm = ctx.collection.Alarm_File;
    if (!alarm.empty()) {
        const int row = w.Combo1.FindExact(alarm);
        if (row >= 0) w.Combo1.SetListIndex(row);
    }
    if (s.Trigger_Mode == 1) w.Check1.SetValue(1);
    else if (s.Trigger_Mode == 2) w.Check2.SetValue(1);
    else Command1_Click(ctx, 2);
}

void Form_Activate(AppContext& ctx) { ctx.form5.Timer1.SetEnabled(true); }

void Form_QueryUnload(AppContext& ctx) {
    ctx.form5.Timer1.SetEnabled(false);
    ctx.form5.Hide();
}

void Check1_Click(AppContext& ctx) {
    Form5& w = ctx.form5;
    if (w.Check1.Value() == 1) {
        w.Check2.SetValue(0);
        ctx.settings.Trigger_Mode = 1;
    } else {
        w.Check2.SetValue(1);
        ctx.settings.Trigger_Mode = 2;
    }
}

void Check2_Click(AppContext& ctx) {
    Form5& w = ctx.form5;
    if (w.Check2.Value() == 1) {
        w.Check1.SetValue(0);
        ctx.settings.Trigger_Mode = 2;
    } else {
        w.Check1.SetValue(1);
        ctx.settings.Trigger_Mode = 1;
    }
}

void Check4_Click(AppContext& ctx) { ctx.settings.Shutdown_Armed = ctx.form5.Check4.Value() == 1 ? -1 : 0; }

void Command1_Click(AppContext& ctx, int index) {
    Form5& w = ctx.form5;
    switch (index) {
        case 0: w.Hide(); return;
        case 1:
            Read_Boxes(ctx);
            w.Label2.SetCaption(kOn);
            if (w.Check3.Value() == 0) ctx.settings.Trigger_Date = w.Calendar1.Text();
            ctx.collection.Alarm_File = w.Combo1.Text();
            break;
        case 2:
            w.Label2.SetCaption(kOff);
            ctx.settings.Trigger_Mode = 0;
            break;
        default: return;
    }
    ctx.timed.Alarm_Time_Reached = 0;
    ctx.timed.Alarm_Countdown_Reached = 0;
}

void Text1_Change(AppContext& ctx, int index) {
    TextBox& box = ctx.form5.Text1[index];
    const std::string& text = box.Text();
    if (!Is_Numeric(text) || text.size() > 2) {
        box.SetText("00");
        return;
    }
    // Only the countdown's hours are held to a range. The minutes' test asks
    // for a box the window does not have, so it never bites.
    const double value = std::strtod(text.c_str(), nullptr);
    if (index == 3 && value > 24) box.SetText("00");
    if (index == 7 && value > 59) box.SetText("00");
}

void VScroll1_Change(AppContext& ctx, int index) {
    Form5& w = ctx.form5;
    w.Text1[index].SetText(std::to_string(w.VScroll1[index].Value()));
}

void Timer1_Timer(AppContext& ctx) {
    const Settings& s = ctx.settings;
    // A date or time the settings file brought in that names no moment
    // leaves the last figures standing.
    if (const auto target = Parse_Moment(s.Trigger_Date, Target_Time(s)))
        ctx.form5.Label1.SetCaption(Countdown_Text(ctx.ports.loop.Now(), *target));

    const TimedState& t = ctx.timed;
    MediaEngine* engine = t.Alarm_Engine;
    if (engine == nullptr || (t.Alarm_Time_Reached != -1 && t.Alarm_Countdown_Reached != -1)) return;
    Log_Failure(ctx, "alarm.setURL", engine->setURL(ctx.collection.Alarm_File));
    // A silent engine would sound no alarm.
    if (engine->volume() == 0) Log_Failure(ctx, "alarm.setVolume", engine->setVolume(0 + t.Alarm_Volume));
    Log_Failure(ctx, "alarm.play", engine->play());
}

void test(AppContext& ctx) {
    Settings& s = ctx.settings;
    if (s.Shutdown_Armed == -1 || s.Trigger_Mode != 0) {
        // On another day than the trigger's the clock reads as midnight.
        int hours = 0, minutes = 0, seconds = 0;
        const LocalTime now = ctx.ports.loop.Now();
        if (DateText(now) == s.Trigger_Date) hours = now.hour, minutes = now.minute, seconds = now.second;
        if (s.Shutdown_Armed == -1) {
            if (hours == s.Trigger_Time[0] && minutes == s.Trigger_Time[1]) {
                // How far the seconds stand from the minute's end; nothing is shut down.
                [[maybe_unused]] const int now_left = std::abs(seconds - 59);
                [[maybe_unused]] const int trigger_left = std::abs(s.Trigger_Time[2] - 59);
            }
        } else if (s.Trigger_Mode == 1) {
            if (hours == s.Trigger_Time[0] && minutes == s.Trigger_Time[1] && seconds == s.Trigger_Time[2])
                Alarm(ctx, ctx.timed.Alarm_Time_Reached);
        } else if (s.Trigger_Mode == 2) {
            // The countdown's seconds are those of the time of day.
            if (hours == s.Trigger_Countdown[0] && minutes == s.Trigger_Countdown[1] &&
                seconds == s.Trigger_Time[2])
                Alarm(ctx, ctx.timed.Alarm_Countdown_Reached);
        }
    }
    Read_Boxes(ctx);
}

}  // namespace form5

void Show_Form5(AppContext& ctx) {
    if (!ctx.timed.Form5_Loaded) {
        ctx.timed.Form5_Loaded = true;
        form5::Form_Load(ctx);
    }
    ctx.form5.Show();
    form5::Form_Activate(ctx);
}

void mnutimeshut_Click(AppContext& ctx) {
    Show_Form5(ctx);
    ctx.form5.Check1.SetValue(0);
}

void mnutimesnooze_Click(AppContext& ctx) {
    Show_Form5(ctx);
    ctx.form5.Check2.SetValue(0);
}

void Wire_Form5(AppContext& ctx) {
    Form5& w = ctx.form5;
    auto& links = ctx.handlers;
    // A box's value changed by a hand or by the logic raises its click.
    auto on_value = [&](Control& control, auto handler) {
        links.push_back(control.Changed.connect([&ctx, handler](Change kind) {
            if (kind == Change::Contents) handler(ctx);
        }));
    };
    on_value(w.Check1, form5::Check1_Click);
    on_value(w.Check2, form5::Check2_Click);
    on_value(w.Check4, form5::Check4_Click);
    for (int i = 0; i < 6; ++i) {
        on_value(w.Text1[i], [i](AppContext& c) { form5::Text1_Change(c, i); });
        on_value(w.VScroll1[i], [i](AppContext& c) { form5::VScroll1_Change(c, i); });
    }
    for (int i = 0; i < 3; ++i)
        links.push_back(w.Command1[i].Click.connect([&ctx, i] { form5::Command1_Click(ctx, i); }));
    links.push_back(w.Timer1.Tick.connect([&ctx] { form5::Timer1_Timer(ctx); }));
    MenuSet& m = ctx.form1.Menus;
    links.push_back(m("mnutimeshut").Click.connect([&ctx] { mnutimeshut_Click(ctx); }));
    links.push_back(m("mnutimesnooze").Click.connect([&ctx] { mnutimesnooze_Click(ctx); }));
}

}  // namespace velmora

#include "playback/play_modes.h"

#include <optional>
#include <string>

#include "base/text_format.h"
#include "catalogue/track_list_totals.h"
#include "core/app_context.h"
#include "core/port_faults.h"
#include "core/running_report.h"
#include "core/suppress_events.h"

namespace velmora {

namespace {

int16_t Flag(bool on) { return on ? -1 : 0; }

void Toggle(MenuItem& item) { item.SetChecked(!item.Checked()); }

// A cancelled box answers empty text, which is not a number.
std::string Ask(AppContext& ctx, const std::string& prompt, const std::string& title, const std::string& value) {
    return ctx.ports.dialogs.InputBox(prompt, title, value).value_or(std::string());
}

bool Repeat_After_Invalid(AppContext& ctx) {
    return ctx.ports.dialogs.MsgBox("Άκυρη είσοδος. Επανάληψη; - Invalid input. Repeat?", MsgButtons::YesNo,
                                    MsgIcon::Question, "") == MsgAnswer::Yes;
}

}  // namespace

void MnuMoreRandom_Click(AppContext& ctx) {
    MenuItem& item = ctx.form1.Menus("MnuMoreRandom");
    Toggle(item);
    ctx.form1.Tray("mnusystemtraysuffle").SetChecked(item.Checked());
    ctx.settings.Random_Order = Flag(item.Checked());
    Etiketes_Synol_Songs(ctx);
}

void MnuMorePreview_Active_Click(AppContext& ctx) {
    MenuSet& m = ctx.form1.Menus;
    ctx.settings.Preview_Active = static_cast<int16_t>(~ctx.settings.Preview_Active);
    Toggle(m("MnuMorePreview_Active"));
    // Each toggled by itself, so they follow the check only if they started with it.
    m("MnuMoreDuration").SetEnabled(!m("MnuMoreDuration").Enabled());
    m("MnuMoreMultiPreview").SetEnabled(!m("MnuMoreMultiPreview").Enabled());
}

void MnuMoreDuration_Click(AppContext& ctx) {
    Settings& s = ctx.settings;
    for (;;) {
        const std::string answer = Ask(ctx, "Όρισε διάρκεια προεπισκόπησης 2-10 δευτερόλεπτα: Declare duration of preview 2-10 secs",
                                       "Ορισμός - Declaring", std::to_string(s.Preview_Seconds));
        if (!IsNumeric(answer)) {
            if (!Repeat_After_Invalid(ctx)) return;
            continue;
        }
        const double value = Val(answer);
        if (value < 2 || value > 10) continue;  // the box again, without a word
        s.Preview_Seconds = static_cast<int16_t>(RoundHalfEven(value));
        return;
    }
}

void MnuMoreMultiPreview_Click(AppContext& ctx) {
    Settings& s = ctx.settings;
    MenuItem& item = ctx.form1.Menus("MnuMoreMultiPreview");
    // The points are resized keeping what they hold.
    if (s.Preview_Points.size() > 1) {
        item.SetChecked(false);
        s.Preview_Points.resize(1);
    } else {
        item.SetChecked(true);
        s.Preview_Points.resize(4, 0);
    }
    s.Multi_Preview = Flag(item.Checked());
}

void MnuMorePauseActive_Click(AppContext& ctx) {
    MenuSet& m = ctx.form1.Menus;
    Toggle(m("MnuMorePauseActive"));
    m("MnuMorePauseDur").SetEnabled(!m("MnuMorePauseDur").Enabled());
    ctx.settings.Pause_Active = Flag(m("MnuMorePauseActive").Checked());
}

void MnuMorePauseDur_Click(AppContext& ctx) {
    Settings& s = ctx.settings;
    for (;;) {
        const std::string answer =
            Ask(ctx, "Θέσε διάρκεια παύσης (2-8) δευτ. - Input pause duration (2-8) sec", "", "2");
        if (!IsNumeric(answer)) {
            if (!Repeat_After_Invalid(ctx)) return;
            continue;
        }
        const double value = Val(answer);
        if (value == 0) return;
        if (value < 2 || value > 8) continue;
        int16_t seconds = 0;
        if (!CInt(value, seconds)) return;
        s.Pause_Seconds = seconds;
        Log_Line(ctx, "-> Η διάρκεια δευτερολέπτων της παύσης ορίστηκε σε " + std::to_string(seconds) +
                          " Is the number of pause seconds ");
        return;
    }
}

void MnuMoreSound_Click(AppContext& ctx) {
    ctx.settings.Sound_On = static_cast<int16_t>(~ctx.settings.Sound_On);
    Toggle(ctx.form1.Menus("MnuMoreSound"));
}

void mnumorereplayn_Click(AppContext& ctx, int index) {
    MenuSet& m = ctx.form1.Menus;
    ctx.settings.Replay_Mode = static_cast<int16_t>(index);
    // The chosen entry's own mark is left as it is.
    for (int i = 0; i < 3; ++i)
        if (i != index) m("mnumorereplayn", i).SetChecked(false);
    ctx.form1.Tray("mnusystrayrepeat").SetChecked(index == 1);
}

void mnusystrayrepeat_Click(AppContext& ctx) {
    mnumorereplayn_Click(ctx, ctx.form1.Tray("mnusystrayrepeat").Checked() ? 0 : 1);
}

void MnuPlayAutoStartP_Click(AppContext& ctx, int index) {
    MenuSet& m = ctx.form1.Menus;
    ctx.settings.Autostart_Index = static_cast<uint8_t>(index);
    for (int i = 0; i < 3; ++i) m("MnuPlayAutoStartP", i).SetChecked(i == index);
}

void MnuMoreAutoStart_Click(AppContext& ctx) {
    MenuItem& item = ctx.form1.Menus("MnuMoreAutoStart");
    Toggle(item);
    ctx.settings.Auto_Start = Flag(item.Checked());
}

void Pause_Between_Files(AppContext& ctx, int window) {
    Settings& s = ctx.settings;
    EventLoop& loop = ctx.ports.loop;
    SuppressEvents quiet(ctx.core);
    if (window == 1) Log_Failure(ctx, ctx.ports.player, "pause", ctx.ports.player.pause());
    else if (window == 2) Log_Failure(ctx, ctx.ports.video, "pause", ctx.ports.video.pause());
    loop.DoEvents();
    if (s.Sound_On == -1) {
        for (int frequency = 600; frequency <= 650; frequency += 50) ctx.ports.shell.Beep(frequency, 100);
    }
    // Kept as it stands: the test is against -1, which the dialog never
    // gives, so the configured seconds do not lengthen the pause; the pause
    // is the tones and the short tick that follows.
    if (s.Pause_Seconds == -1) {
        const int until = loop.Now().SecondsSinceMidnight() + s.Pause_Seconds;
        do {
            loop.WaitForEvents(100);
        } while (loop.Now().SecondsSinceMidnight() < until);
    }
}

}  // namespace velmora

#include "playback/second_player.h"

#include "base/text_format.h"
#include "core/app_context.h"
#include "core/port_faults.h"
#include "playback/transport.h"
#include "ratings/rating_marks.h"

namespace velmora {

namespace {

// The engine that takes over gets the file at the position of the one that
// is left, plays at the program's loudness; the one left is emptied and
// disabled, so that nothing sounds from two engines.
void Hand_Over(AppContext& ctx, MediaEngine& from, MediaEngine& to) {
    const std::string& file = ctx.playback.Current_File;
    const double position = from.URL().empty() ? 0.0 : from.currentPosition().value_or(0.0);
    // An empty Current_File loads nothing, which the engine answers as no
    // such file: nothing plays, and that is no fault.
    if (file.empty()) {
        (void)to.setURL(file);
    } else {
        Log_Failure(ctx, to, "setURL", to.setURL(file));
        Log_Failure(ctx, to, "setCurrentPosition", to.setCurrentPosition(position));
        Log_Failure(ctx, to, "play", to.play());
    }
    Log_Failure(ctx, to, "setVolume", to.setVolume(ctx.settings.Volume_Step));
    (void)from.setURL("");
    from.setEnabled(false);
}

}  // namespace

void Passage(AppContext& ctx, int direction) {
    Form1& f = ctx.form1;
    Form4& g = ctx.form4;
    const bool hide_the_other = ctx.playback.Second_Player_Flag == -1;
    if (direction == -1) {
        g.Slider1.SetValue(f.Slider1.Value());
        g.Kept_Interval = f.Timer1.Interval() > 0 ? f.Timer1.Interval() : 1000;
        ctx.settings.Second_Player = -1;
        if (hide_the_other) {
            g.Show();
            f.Hide();
        }
        Form4_Form_Load(ctx);
        Hand_Over(ctx, ctx.ports.player, ctx.ports.second);
    } else if (direction == 0) {
        g.Hide();
        f.Slider1.SetValue(g.Slider1.Value());
        f.HScroll1.SetValue(g.HScroll1.Value());
        f.Timer1.SetInterval(g.Kept_Interval);
        f.Timer1.SetEnabled(true);
        ctx.settings.Second_Player = 0;
        if (hide_the_other) f.Show();
        g.Timer1.SetEnabled(false);
        Hand_Over(ctx, ctx.ports.second, ctx.ports.player);
    }
}

void Form4_Form_Load(AppContext& ctx) { ctx.form4.Timer1.SetEnabled(true); }

void Form4_Timer1_Timer(AppContext& ctx) {
    MediaEngine& engine = ctx.ports.second;
    if (engine.URL().empty()) return;
    if (auto position = engine.currentPosition(); position.ok())
        ctx.form4.Slider1.SetValue(static_cast<int>(RoundHalfEven(position.value())));
}

void Form4_Command1_Click(AppContext& ctx) { Passage(ctx, ctx.settings.Second_Player == -1 ? 0 : -1); }

void Form4_Command3_Click(AppContext& ctx, int index) { Command3_Click(ctx, index); }

void Form4_Command11_Click(AppContext& ctx) { Command11_Click(ctx); }

void Form4_Command15_Click(AppContext& ctx, int index) { Command15_Click(ctx, index); }

void Form4_Command8_Click(AppContext& ctx) { Command8_Click(ctx); }

void Form4_Text3_Change(AppContext& ctx) {
    ctx.form1.Text3.SetText(ctx.form4.Text3.Text());
    Text3_Change(ctx);
}

void Form4_HScroll1_Change(AppContext& ctx) {
    ctx.form1.HScroll1.SetValue(ctx.form4.HScroll1.Value());
    HScroll1_Change(ctx);
}

void Form4_HScroll1_Scroll(AppContext& ctx) {
    ctx.form1.HScroll1.SetValue(ctx.form4.HScroll1.Value());
    HScroll1_Scroll(ctx);
}

void Form4_Slider1_Change(AppContext& ctx) {
    ctx.form1.Slider1.SetValue(ctx.form4.Slider1.Value());
    Slider1_Change(ctx);
}

}  // namespace velmora

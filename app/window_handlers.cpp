#include "app/window_handlers.h"

#include "core/app_context.h"
#include "desktop/tray.h"
#include "playback/second_player.h"
#include "playback/video_window.h"

namespace velmora {

void Wire_Window_Handlers(AppContext& ctx, std::vector<Subscription>& links) {
    auto on = [&](Signal<>& signal, void (*handler)(AppContext&)) {
        links.push_back(signal.connect([&ctx, handler] { handler(ctx); }));
    };
    auto on_index = [&](Signal<>& signal, void (*handler)(AppContext&, int), int index) {
        links.push_back(signal.connect([&ctx, handler, index] { handler(ctx, index); }));
    };
    auto on_contents = [&](Control& control, void (*handler)(AppContext&)) {
        links.push_back(control.Changed.connect([&ctx, handler](Change kind) {
            if (kind == Change::Contents) handler(ctx);
        }));
    };

    for (int i = 0; i < 3; ++i) on_index(ctx.form1.Menus("mnuvideoshow", i).Click, mnuvideoshow_Click, i);

    // The start with the session, "Always on top" from both menus, minimising.
    on(ctx.form1.Menus("MnuMoreWindows").Click, MnuMoreWindows_Click);
    on(ctx.form1.Menus("MnuMoreOnTop").Click, Toggle_Always_On_Top);
    on(ctx.form1.Tray("MnuSystemTrayTop").Click, Toggle_Always_On_Top);
    on(ctx.form1.Menus("MnuMoreMinimize").Click, MnuMoreMinimize_Click);

    Form2& w = ctx.form2;
    on(w.Resize, Form2_Form_Resize);
    on(w.QueryUnload, Form2_Form_QueryUnload);

    Form4& g = ctx.form4;
    on(g.Timer1.Tick, Form4_Timer1_Timer);
    on(g.Command1.Click, Form4_Command1_Click);
    on(g.Command11.Click, Form4_Command11_Click);
    on(g.Command8.Click, Form4_Command8_Click);
    for (int i = 0; i < 2; ++i) on_index(g.Command3[i].Click, Form4_Command3_Click, i);
    for (int i = 0; i < 4; ++i) on_index(g.Command15[i].Click, Form4_Command15_Click, i);
    on_contents(g.Text3, Form4_Text3_Change);
    on_contents(g.HScroll1, Form4_HScroll1_Change);
    on(g.HScroll1.Scroll, Form4_HScroll1_Scroll);
    on(g.Slider1.Scroll, Form4_Slider1_Change);
    // Closing the small window takes playing back to the main one, so that
    // a window always shows what plays.
    links.push_back(g.QueryUnload.connect([&ctx] { Passage(ctx, 0); }));
}

}  // namespace velmora

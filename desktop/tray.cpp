#include "desktop/tray.h"

#include "core/app_context.h"
#include "playback/second_player.h"

namespace velmora {

namespace {

FormState& Playing_Window(AppContext& ctx) {
    if (ctx.settings.Second_Player == -1) return ctx.form4;
    return ctx.form1;
}

}  // namespace

void Form_MouseMove(AppContext& ctx, int message) {
    if (message != kTrayLeftDown) return;
    Settings& s = ctx.settings;
    FormState& window = Playing_Window(ctx);
    s.Window_Visible = s.Window_Visible == -1 ? 0 : -1;
    // Hidden in the tray nobody watches the time boxes: a tick every six
    // seconds keeps the walk going at a fraction of the cost.
    const int interval = s.Window_Visible == -1 ? 1000 : 6000;
    if (s.Window_Visible == -1) {
        window.Show();
        window.SetWindowState(0);
    } else {
        window.Hide();
        window.SetWindowState(1);
    }
    ctx.form1.Timer1.SetInterval(interval);
    ctx.form4.Timer1.SetInterval(interval);
}

bool Run_Key_Exists(AppContext& ctx, const std::string& name) { return ctx.ports.shell.AutostartExists(name); }

void Run_Key_Write(AppContext& ctx, bool enable, const std::string& name) {
    const auto fault = ctx.ports.shell.AutostartWrite(enable, name);
    if (!fault) return;
    ctx.ports.dialogs.MsgBox("Error " + std::to_string(fault->number) + (fault->opening ? " opening key" : " setting key") +
                                 "\n" + fault->description,
                             MsgButtons::OK, MsgIcon::Critical, "Velmora II");
}

void MnuMoreWindows_Click(AppContext& ctx) {
    MenuItem& row = ctx.form1.Menus("MnuMoreWindows");
    // The mark follows the click even when the entry could not be written.
    row.SetChecked(!row.Checked());
    Run_Key_Write(ctx, row.Checked(), ctx.core.Executable_Name);
}

void Toggle_Always_On_Top(AppContext& ctx) {
    Form1& f = ctx.form1;
    const bool on = !f.Tray("MnuSystemTrayTop").Checked();
    f.Tray("MnuSystemTrayTop").SetChecked(on);
    f.Menus("MnuMoreOnTop").SetChecked(on);
    ctx.settings.Always_On_Top = on ? -1 : 0;
    Shell& shell = ctx.ports.shell;
    if (ctx.settings.Second_Player == -1 || ctx.table.Video_Mode == -1) {
        shell.SetAlwaysOnTop(ctx.form2.Name(), on);
        shell.SetAlwaysOnTop(ctx.form4.Name(), on);
    } else {
        shell.SetAlwaysOnTop(f.Name(), on);
    }
}

void MnuMoreMinimize_Click(AppContext& ctx) { Passage(ctx, -1); }

}  // namespace velmora

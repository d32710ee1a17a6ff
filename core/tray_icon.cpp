#include "core/tray_icon.h"

#include "core/app_context.h"
#include "core/running_report.h"

namespace velmora {

void AddIconToTray(AppContext& ctx) {
    if (ctx.ports.shell.AddTrayIcon("Velmora II")) return;
    // The icon is put up again at every change of the play state; the log
    // says once that there is nowhere to put it.
    if (!ctx.playback.No_Tray_Told)
        Log_Line(ctx, "Δεν υπάρχει περιοχή ειδοποιήσεων: το πρόγραμμα μένει στο παράθυρό του - "
                      "No system tray: the program stays in its window");
    ctx.playback.No_Tray_Told = true;
    // Without a tray there is no click to bring a hidden window back.
    Settings& s = ctx.settings;
    if (s.Window_Visible == -1) return;
    s.Window_Visible = -1;
    FormState& playing = s.Second_Player == -1 ? static_cast<FormState&>(ctx.form4) : ctx.form1;
    playing.Show();
    playing.SetWindowState(0);
    ctx.form1.Timer1.SetInterval(1000);
    ctx.form4.Timer1.SetInterval(1000);
}
void DeleteIconFromTray(AppContext& ctx) { ctx.ports.shell.RemoveTrayIcon(); }

}  // namespace velmora

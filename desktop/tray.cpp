#include "desktop/tray.h"

#include "core/app_context.h"

namespace velmora {

void AddIconToTray(AppContext& ctx) { ctx.ports.shell.AddTrayIcon("Velmora II"); }
void DeleteIconFromTray(AppContext& ctx) { ctx.ports.shell.RemoveTrayIcon(); }
bool Run_Key_Exists(AppContext& ctx, const std::string& name) { return ctx.ports.shell.AutostartExists(name); }

}  // namespace velmora

#include "core/tray_icon.h"

#include "core/app_context.h"

namespace velmora {

void AddIconToTray(AppContext& ctx) { ctx.ports.shell.AddTrayIcon("Velmora II"); }
void DeleteIconFromTray(AppContext& ctx) { ctx.ports.shell.RemoveTrayIcon(); }

}  // namespace velmora

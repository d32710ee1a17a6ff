#include "desktop/tray.h"

#include "core/app_context.h"

namespace velmora {

bool Run_Key_Exists(AppContext& ctx, const std::string& name) { return ctx.ports.shell.AutostartExists(name); }

}  // namespace velmora

#pragma once
// The tray icon and the start with the desktop session.

#include <string>

namespace velmora {

struct AppContext;

void AddIconToTray(AppContext& ctx);
void DeleteIconFromTray(AppContext& ctx);
bool Run_Key_Exists(AppContext& ctx, const std::string& name);

}  // namespace velmora

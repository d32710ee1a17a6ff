#pragma once
// The tray icon, put up and taken down through the shell. The play state
// redraws it whenever the window's picture changes.

namespace velmora {

struct AppContext;

void AddIconToTray(AppContext& ctx);
void DeleteIconFromTray(AppContext& ctx);

}  // namespace velmora

#pragma once
// The tray icon's clicks, the start with the desktop session, "Always on
// top" and the minimising command.

#include <string>

namespace velmora {

struct AppContext;

// The tray's click codes, as the icon's callback delivers them.
constexpr int kTrayLeftDown = 513;
constexpr int kTrayRightDown = 516;

// A left click hides the window that plays (the main window, or the second
// player's while it is in use) into the tray and slows the clocks to six
// seconds, or brings it back at one second. The right click's menu is the
// desktop's to show; every other code does nothing.
void Form_MouseMove(AppContext& ctx, int message);

bool Run_Key_Exists(AppContext& ctx, const std::string& name);
// Writes (enable) or removes the entry; a failure is shown with its number
// and the system's description.
void Run_Key_Write(AppContext& ctx, bool enable, const std::string& name);

void MnuMoreWindows_Click(AppContext& ctx);
// Both "Always on top" rows, in the More menu and in the tray, run this.
void Toggle_Always_On_Top(AppContext& ctx);
void MnuMoreMinimize_Click(AppContext& ctx);

}  // namespace velmora

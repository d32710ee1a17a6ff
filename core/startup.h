#pragma once
// The order in which the program comes up and goes down.

#include <string>

namespace velmora {

struct AppContext;

// Works out App_Path from the program's folder: the executable's folder when
// it is writable, else the per-user data folder. Always ends in '/'.
std::string Resolve_App_Path(const std::string& executable_folder, const std::string& data_home);

void Form_Load(AppContext& ctx);
// Saves and ends; there is no question and no cancel.
void Form_QueryUnload(AppContext& ctx);

// index 0 reports, 1 collections, 2 preferences, 3 filters.
void Make_Folder(AppContext& ctx, int index);
std::string Folder_Path(const AppContext& ctx, int index);
void Apply_Class_Play(AppContext& ctx);
// The initialisation that Form_Load runs as its second step.
void Initialise(AppContext& ctx);
void Set_Defaults(AppContext& ctx);
void Main();

}  // namespace velmora

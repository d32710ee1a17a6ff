#pragma once
// The program's folder and the four data folders below it.

#include <string>

namespace velmora {

struct AppContext;

// Works out App_Path from the program's folder: the executable's folder when
// it is writable, else the per-user data folder. Always ends in '/'.
std::string Resolve_App_Path(const std::string& executable_folder, const std::string& data_home);

// The folder with one trailing slash, as App_Path is always kept.
std::string WithSlash(std::string path);

// index 0 reports, 1 collections, 2 preferences, 3 filters.
void Make_Folder(AppContext& ctx, int index);
std::string Folder_Path(const AppContext& ctx, int index);

}  // namespace velmora

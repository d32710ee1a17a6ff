#pragma once
// Files dropped on the main window from the desktop's file manager.

#include <string>
#include <vector>

namespace velmora {

struct AppContext;

// True when the last four characters of the name stand, exactly and with
// their case, somewhere inside one of the media extensions. So "midi" and
// "mpeg" pass while ".au", ".wm" and any name ending in capitals do not.
bool Is_Droppable_Name(const AppContext& ctx, const std::string& name);

// One drop: logs each name, adds the valid ones the Collection lacks at the
// end of the Track list with their number and class mirrors, and logs the
// counts. Track_Count stays until the next adding from the search page.
void Accept_Dropped_Files(AppContext& ctx, const std::vector<std::string>& names);

}  // namespace velmora

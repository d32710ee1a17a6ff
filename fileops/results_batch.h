#pragma once
// The managing frame of the catalogue: the batch over the result list, the
// choice of what it does, and the destination folder.

namespace velmora {

struct AppContext;

// Command16(0): copies, moves or deletes (Option3) the Tracks the chosen
// boxes found, or the selected rows when no box is chosen, after one question.
void Command16_Execute(AppContext& ctx);
// Option3(index) chosen: keeping the folder tree (Check4) is offered for
// copy and move only.
void Option3_Click(AppContext& ctx, int index);
// Check3: deleted files go to the trash.
void Check3_Click(AppContext& ctx);
// The folder picker; a cancelled pick says so and clears the destination.
void Ask_Destination_Directory(AppContext& ctx);

}  // namespace velmora

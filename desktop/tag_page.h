#pragma once
// The tag page: the boxes of the current Track's tags, the question when
// they were changed, and the save that lets the player go of the file while
// it is written.

namespace velmora {

struct AppContext;

// A finished edit of a box (index 0 to 4) or a choice in the genre list.
void Text1_N_Change(AppContext& ctx, int index);
void Combo1_Click(AppContext& ctx);
// Asks whether to store what was typed; either way the boxes show the file again.
void Ask_Save_Tags(AppContext& ctx);
// Saves the boxes into Tag_File and says so in the log.
void Command14_Click(AppContext& ctx);

}  // namespace velmora

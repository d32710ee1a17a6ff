#pragma once
// The Files menu's rows of play lists (mnuFileCreateWPL 0 to 3).

namespace velmora {

struct AppContext;

// 0 gives the Collection to the library of play lists under its own name,
// 1 writes that list anew without asking, 2 opens a play list as a new
// Collection, 3 adds one to the open Collection.
void mnuFileCreateWPL_Click(AppContext& ctx, int index);

}  // namespace velmora

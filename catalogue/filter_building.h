#pragma once
// The catalogue's nine boxes: their value lists, the choice in them, and the
// cached rows a change of class patches.

namespace velmora {

struct AppContext;

// Boxes 1 to 8 filled with the distinct values of the table, each once
// without regard to case, the first spelling kept, in the boxes' order.
void Add_Filters(AppContext& ctx);
// Boxes 1 to 8 and both result lists emptied; box 0 keeps its captions.
void Clear_Filters(AppContext& ctx);
// Nothing chosen in any box.
void Reboot_Filters(AppContext& ctx);
// The boxes' texts taken as the choice, and the query run.
void Apply_Filters(AppContext& ctx);
void Combo4_0_Click(AppContext& ctx, int index);
void Combo4_0_Change(AppContext& ctx, int index);
// Builds the value lists and the rows anew from the table.
void Remake_Filters(AppContext& ctx);
// Asks first, on the catalogue page; No leaves the page as it was.
void MnuMoreFiltersRemake_Click(AppContext& ctx);
// After a change of the Track's class (column 0): its cached row and its
// row of List5 show the new class. Other columns leave the row as it was.
void Update_Filter_Row(AppContext& ctx, int track, int column);

}  // namespace velmora

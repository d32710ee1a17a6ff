#pragma once
// The catalogue's value lists and rows.

namespace velmora {

struct AppContext;

void Add_Filters(AppContext& ctx);
void Reboot_Filters(AppContext& ctx);
void Filtered_Songs_List(AppContext& ctx, int mode);
// Builds the value lists and the rows anew from the table.
void Remake_Filters(AppContext& ctx);
// Asks first, on the catalogue page; No leaves the page as it was.
void MnuMoreFiltersRemake_Click(AppContext& ctx);

}  // namespace velmora
